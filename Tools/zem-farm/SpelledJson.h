#pragma once

#include <string>

namespace ZemFarm
{

/// The JSON of a document with everything spelled out that stands in it once and is referred to elsewhere. Equal
/// documents have equal JSON then, whichever elements share their styles and properties.
/// Fails: `std::runtime_error` on what isn't JSON, and on a reference to nothing.
std::string spellOut(const std::string& json);

} // namespace ZemFarm
