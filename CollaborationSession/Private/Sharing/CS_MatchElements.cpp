#include "Sharing/CS_MatchElements.h"

#include "Sharing/CS_TextPlaces.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>
#include <cstdint>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;
using DOMCollaboration::PlaceKind;

namespace
{

using ListInsert = ListModificationOperation<InsertTag>;
using MultirangeInsert = ListMultirangeOperationImpl<ListInsert>;
using Elements = std::vector<SharedConstPtr<DataValue>>;

Elements listElements(const MultirangeInsert& insertion)
{
    Elements elements;
    const auto& nestedOperations = insertion.getNestedOperations();
    for (auto nested = nestedOperations.rbegin(); nested != nestedOperations.rend(); ++nested)
    {
        const ItemsCollection& data = derefPtr(nested->getData());
        for (unsigned long index = 0; index < data.getSize(); ++index)
        {
            elements.push_back(data.getItem(index));
        }
    }
    return elements;
}

/// Two tags of one kind are one, though a text gives them the look of what they go on from.
bool areSame(const SharedConstPtr<DataValue>& left, const SharedConstPtr<DataValue>& right)
{
    using TextElement = SimpleDataValue<DOMCollaboration::TextWithTombstonesElement>;
    const auto* leftElement = cast<TextElement>(left.get());
    const auto* rightElement = cast<TextElement>(right.get());
    if (!leftElement || !rightElement)
    {
        return *left == *right;
    }
    const PlaceKind kind = getKind(leftElement->getValue());
    const bool isTag = kind == PlaceKind::ParaTag || kind == PlaceKind::TextRunTag;
    return isTag ? getKind(rightElement->getValue()) == kind : *left == *right;
}

/// The stretches of two sequences between the first and the last difference, compared pair by pair.
class Middle
{
public:
    Middle(const Elements& first, const Elements& second, std::size_t begin, std::size_t firstEnd,
           std::size_t secondEnd)
        : _begin(begin)
        , _rows(firstEnd - begin)
        , _columns(secondEnd - begin)
        , _lengths((_rows + 1) * (_columns + 1))
        , _areSame(_rows * _columns)
    {
        for (std::size_t row = _rows; row-- > 0;)
        {
            for (std::size_t column = _columns; column-- > 0;)
            {
                const bool isSame = areSame(first[begin + row], second[begin + column]);
                _areSame[row * _columns + column] = isSame;
                lengthAt(row, column) = isSame ? lengthAt(row + 1, column + 1) + 1
                                               : std::max(lengthAt(row + 1, column), lengthAt(row, column + 1));
            }
        }
    }

    void match(std::vector<std::size_t>& matches)
    {
        std::size_t row = 0;
        std::size_t column = 0;
        while (row < _rows && column < _columns)
        {
            if (_areSame[row * _columns + column])
            {
                matches[_begin + row++] = _begin + column++;
            }
            else if (lengthAt(row + 1, column) >= lengthAt(row, column + 1))
            {
                ++row;
            }
            else
            {
                ++column;
            }
        }
    }

private:
    std::uint32_t& lengthAt(std::size_t row, std::size_t column)
    {
        return _lengths[row * (_columns + 1) + column];
    }

    std::size_t _begin;
    std::size_t _rows;
    std::size_t _columns;
    /// The length of a longest common subsequence from a pair of places on.
    std::vector<std::uint32_t> _lengths;
    std::vector<bool> _areSame;
};

} // namespace

std::vector<std::size_t> matchElements(const MultirangeInsert& first, const MultirangeInsert& second)
{
    constexpr std::size_t greatestTable = 1000000;
    const Elements firstElements = listElements(first);
    const Elements secondElements = listElements(second);
    const auto firstCount = static_cast<std::ptrdiff_t>(firstElements.size());
    const auto secondCount = static_cast<std::ptrdiff_t>(secondElements.size());
    std::vector<std::size_t> matches(firstElements.size(), noMatch);
    const auto begin =
        std::mismatch(firstElements.begin(), firstElements.end(), secondElements.begin(), secondElements.end(), areSame)
            .first -
        firstElements.begin();
    const auto tail = std::mismatch(firstElements.rbegin(), firstElements.rend() - begin, secondElements.rbegin(),
                                    secondElements.rend() - begin, areSame)
                          .first -
                      firstElements.rbegin();
    for (std::ptrdiff_t index = 0; index < begin; ++index)
    {
        matches[static_cast<std::size_t>(index)] = static_cast<std::size_t>(index);
    }
    for (std::ptrdiff_t index = 1; index <= tail; ++index)
    {
        matches[static_cast<std::size_t>(firstCount - index)] = static_cast<std::size_t>(secondCount - index);
    }
    const auto rows = static_cast<std::size_t>(firstCount - begin - tail);
    const auto columns = static_cast<std::size_t>(secondCount - begin - tail);
    if (rows > 0 && columns > 0 && rows <= greatestTable / columns)
    {
        Middle(firstElements, secondElements, static_cast<std::size_t>(begin),
               static_cast<std::size_t>(firstCount - tail), static_cast<std::size_t>(secondCount - tail))
            .match(matches);
    }
    return matches;
}

} // namespace Zem::CollaborationSession
