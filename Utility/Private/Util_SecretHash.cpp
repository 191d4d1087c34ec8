#include "Util_SecretHash.h"

#include <random>

namespace Zem
{

namespace
{

std::uint64_t drawSecret()
{
    std::random_device device;
    const std::uint64_t high = device();
    return (high << 32) | device();
}

/// Spreads each bit of `value` over all bits; no two values become the same.
std::uint64_t mix(std::uint64_t value)
{
    value += 0x9E3779B97F4A7C15U;
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9U;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EBU;
    return value ^ (value >> 31);
}

} // namespace

std::uint64_t secretHash(std::uint64_t value)
{
    static const std::uint64_t firstSecret = drawSecret();
    static const std::uint64_t secondSecret = drawSecret();
    return mix(mix(value ^ firstSecret) ^ secondSecret);
}

} // namespace Zem
