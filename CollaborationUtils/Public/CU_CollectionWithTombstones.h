#pragma once

#include "CU_Index.h"
#include "CU_TombstonesStorage.h"

#include "Util_Assert.h"
#include "Util_Cast.h"
#include "Util_DeepComparison.h"
#include "Util_DeepCopy.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace Zem::CollaborationUtils
{

/// A vector of live elements with the record of the tombstones among them. Copies and comparisons are deep: where the
/// elements are owning pointers, the pointees are copied and compared.
///
/// The two parts are open to those who keep them in step, which are the functions that execute operations on a
/// collection.
template<class V>
class CollectionWithTombstones
{
public:
    CollectionWithTombstones() = default;

    explicit CollectionWithTombstones(V elements, TombstonesStorage tombstones = {})
        : _elements(std::move(elements))
        , _tombstones(std::move(tombstones))
    {
    }

    CollectionWithTombstones(const CollectionWithTombstones& other)
        : _elements(deepCopy(other._elements))
        , _tombstones(other._tombstones)
    {
    }

    CollectionWithTombstones(CollectionWithTombstones&&) noexcept = default;

    CollectionWithTombstones& operator=(const CollectionWithTombstones& other)
    {
        return *this = CollectionWithTombstones(other);
    }

    CollectionWithTombstones& operator=(CollectionWithTombstones&&) noexcept = default;

    ~CollectionWithTombstones() = default;

    /// The live elements, in order.
    const V& getElements() const
    {
        return _elements;
    }

    V& getElements()
    {
        return _elements;
    }

    const TombstonesStorage& getTombstones() const
    {
        return _tombstones;
    }

    TombstonesStorage& getTombstones()
    {
        return _tombstones;
    }

    IndexExcludingTombstones getLiveElementsCount() const
    {
        return IndexExcludingTombstones{_elements.size()};
    }

    IndexIncludingTombstones getAllElementsCount() const
    {
        return IndexIncludingTombstones{_elements.size() + _tombstones.getTombstonesCount()};
    }

    /// Moves the place `oldPosition`, live or dead, by `diff` places. Returns the element's old and new live index, the
    /// new one counted without the element; empty for a tombstone.
    /// Fails: an assertion when the target lies outside the sequence; `BadNumCastError` for a position that no `long`
    /// holds; `std::out_of_range` when `oldPosition` lies behind the last element. Nothing is changed then.
    std::optional<TombstonesStorage::LiveMove> moveElement(IndexIncludingTombstones oldPosition,
                                                           SignedIndexIncludingTombstones diff)
    {
        ZEM_ASSERT_MESSAGE(isInside(numCast<SignedIndexIncludingTombstones>(oldPosition).get(), diff.get()),
                           "numCast<SignedIndexIncludingTombstones>(oldPosition) + diff >= "
                           "SignedIndexIncludingTombstones{0} && "
                           "numCast<SignedIndexIncludingTombstones>(oldPosition) + diff < "
                           "numCast<SignedIndexIncludingTombstones>(getAllElementsCount())");
        if (const auto liveIndex = _tombstones.convertIndex(oldPosition))
        {
            static_cast<void>(_elements.at(liveIndex->get()));
        }
        const auto move = _tombstones.moveElement(oldPosition, diff);
        if (move && move->first != move->second)
        {
            auto element = std::move(_elements[move->first.get()]);
            _elements.erase(_elements.begin() + static_cast<std::ptrdiff_t>(move->first.get()));
            _elements.insert(_elements.begin() + static_cast<std::ptrdiff_t>(move->second.get()), std::move(element));
        }
        return move;
    }

    friend bool operator==(const CollectionWithTombstones& left, const CollectionWithTombstones& right)
    {
        return left._tombstones == right._tombstones && areDeeplyEqual(left._elements, right._elements);
    }

    /// Defined in `CU_Json.h`.
    template<class Archive>
    void serialize(Archive& archive);

private:
    /// Whether `position` + `diff` names a place of the sequence; a sum that a `long` can't hold doesn't.
    bool isInside(long position, long diff) const
    {
        long target = 0;
        return !__builtin_add_overflow(position, diff, &target) && target >= 0 &&
               target < numCast<SignedIndexIncludingTombstones>(getAllElementsCount()).get();
    }

    V _elements;
    TombstonesStorage _tombstones;
};

} // namespace Zem::CollaborationUtils
