#pragma once

/// How many cases the exhaustive tests have tried.

namespace Zem::CollaborationEngine::Testing
{

/// Adds to the number that is printed at the end of the run. A run of all tests fails if it tried fewer than a million.
void countCases(unsigned long count);

} // namespace Zem::CollaborationEngine::Testing
