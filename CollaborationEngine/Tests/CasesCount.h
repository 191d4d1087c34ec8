#pragma once

/// How many cases the exhaustive tests have tried.

namespace Zem::CollaborationEngine::Testing
{

#if defined(__SANITIZE_ADDRESS__)
constexpr bool isSanitizedBuild = true;
#elif defined(__has_feature)
constexpr bool isSanitizedBuild = __has_feature(address_sanitizer);
#else
constexpr bool isSanitizedBuild = false;
#endif

/// Adds to the number that is printed at the end of the run. A run of all tests fails if it tried fewer than a million.
void countCases(unsigned long count);

} // namespace Zem::CollaborationEngine::Testing
