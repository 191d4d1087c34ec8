#pragma once

#include <type_traits>

namespace Zem
{

/// `T` as a read-only class may touch it: const if the class is read-only. Templates that are instantiated for both
/// forms of a thing name its parts with this.
template<bool isConst, class T>
using ConstIf = std::conditional_t<isConst, const T, T>;

} // namespace Zem
