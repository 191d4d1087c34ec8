#pragma once

#include "Options.h"

#include <string>

namespace ZemFarm
{

/// What the farm leaves out though documents may have it or users may do it, and why, a line each. Of a judged run also
/// what the judge doesn't hear of.
std::string formatFilters(const Options& options);

} // namespace ZemFarm
