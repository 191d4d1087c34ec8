#pragma once

#include <cstdint>
#include <random>

namespace ZemFarm
{

/// Random numbers of one seed, the same on every machine that has the same standard library.
class Random
{
public:
    explicit Random(std::uint64_t seed)
        : _engine(seed)
    {
    }

    /// A number below `count`. Requires: `count` isn't 0.
    unsigned long pick(unsigned long count)
    {
        return std::uniform_int_distribution<unsigned long>(0, count - 1)(_engine);
    }

    /// True once in so many times.
    bool isOnceIn(unsigned long count)
    {
        return pick(count) == 0;
    }

    /// One of the elements of a vector or array that isn't empty.
    template<class Elements>
    decltype(auto) pickFrom(Elements& elements)
    {
        return elements[pick(std::size(elements))];
    }

    /// A seed for other random numbers, short enough to be typed.
    unsigned long makeSeed()
    {
        return pick(1000000000);
    }

private:
    std::mt19937_64 _engine;
};

/// The seed of one of many sequences of random numbers.
inline std::uint64_t mixSeeds(std::uint64_t seed, std::uint64_t number)
{
    std::uint64_t mixed = seed + (number + 1) * 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
    return mixed ^ (mixed >> 31U);
}

} // namespace ZemFarm
