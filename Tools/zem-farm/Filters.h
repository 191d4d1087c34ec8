#pragma once

#include <string>

namespace ZemFarm
{

/// What the farm leaves out though documents may have it or users may do it, and why, a line each.
std::string formatFilters();

} // namespace ZemFarm
