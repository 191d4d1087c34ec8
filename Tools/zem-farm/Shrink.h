#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace ZemFarm
{

/// The elements without those of [begin, end).
template<class Element>
std::vector<Element> leaveOut(const std::vector<Element>& elements, std::size_t begin, std::size_t end)
{
    std::vector<Element> rest(elements.begin(), elements.begin() + static_cast<std::ptrdiff_t>(begin));
    rest.insert(rest.end(), elements.begin() + static_cast<std::ptrdiff_t>(end), elements.end());
    return rest;
}

/// A part of `elements`, in their order, for which `fails` still holds, and of which no single element can be left out.
/// It tries great pieces first, and smaller ones as soon as none of these can go.
/// Requires: `fails(elements)`. Cost: calls of `fails`, a square of the number of elements at worst, most often a few
/// times what is left multiplied with the logarithm of what there was.
template<class Element, class Fails>
std::vector<Element> shrink(std::vector<Element> elements, Fails fails)
{
    std::size_t pieceSize = std::max<std::size_t>(1, elements.size() / 2);
    for (bool isSmaller = true; isSmaller || pieceSize > 1;)
    {
        if (!isSmaller)
        {
            pieceSize /= 2;
        }
        isSmaller = false;
        // From the end, where what was made behind other things stands.
        for (std::size_t end = elements.size(); end > 0;)
        {
            const std::size_t begin = end > pieceSize ? end - pieceSize : 0;
            std::vector<Element> rest = leaveOut(elements, begin, end);
            if (fails(rest))
            {
                elements = std::move(rest);
                isSmaller = true;
            }
            end = begin;
        }
    }
    return elements;
}

} // namespace ZemFarm
