#pragma once

/// Numbers that nobody outside of this process can foresee, for structures that are only fast while nobody chooses
/// what goes into them with their insides in mind.

#include "Util_Export.h"

#include <cstddef>
#include <cstdint>

namespace Zem
{

/// As good as random: it depends on a secret that is drawn once for each process. Different values have different
/// hashes. It must not be written anywhere, nor decide anything that others are to decide alike.
ZEM_EXPORT std::uint64_t secretHash(std::uint64_t value);

/// Hashes numbers that strangers choose, such as ids, for an unordered container.
struct SecretHasher
{
    std::size_t operator()(std::uint64_t value) const
    {
        return static_cast<std::size_t>(secretHash(value));
    }
};

} // namespace Zem
