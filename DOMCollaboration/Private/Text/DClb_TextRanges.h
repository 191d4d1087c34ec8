#pragma once

/// The ranges of an operation on a text, from the slots that its nested operations name to the plane.

#include "DClb_TextElement.h"
#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "CE_ListMultirangeOperation.h"
#include "CU_TombstonesStorage.h"

#include <boost/container/small_vector.hpp>

namespace Zem::DOMCollaboration
{

/// One run of adjacent live places of the plane that an operation puts in or takes out: one nested operation, or
/// several that meet there, with only tombstones between them.
class RangeInfo
{
public:
    /// Most ranges stand for one nested operation.
    using Operations = boost::container::small_vector<CollaborationEngine::ListOperation*, 1>;

    RangeInfo(IndexExcludingTombstones startIndex, unsigned long size, CollaborationEngine::ListOperation& operation)
        : _anchor(startIndex)
        , _size(size)
        , _operations(1, &operation)
    {
    }

    /// A plane index: that of the anchor.
    IndexExcludingTombstones getStartIndex() const
    {
        return _anchor.getIndex();
    }

    IndexExcludingTombstones getEndIndex() const
    {
        return getStartIndex() + _size;
    }

    /// The anchor of the start index, with which the range moves.
    PlaneAnchor& getAnchor()
    {
        return _anchor;
    }

    unsigned long getSize() const
    {
        return _size;
    }

    void setSize(unsigned long size)
    {
        _size = size;
    }

    /// The nested operations of this range, ascending by position.
    const Operations& getOperations() const
    {
        return _operations;
    }

    /// From now on one operation covers the whole range.
    void setCurrentOperation(CollaborationEngine::ListOperation& operation)
    {
        _operations.assign(1, &operation);
    }

    /// Joins with the range that lies next behind this one.
    void append(RangeInfo&& higher);

    /// The elements to put in, or those taken out.
    TextWithTombstonesElementVector _data;

private:
    PlaneAnchor _anchor;
    unsigned long _size;
    Operations _operations;
};

/// The ranges of one operation, from the highest to the lowest. So the elements in front of a range stay where they are
/// while those behind it are put in or taken out.
using RangeInfos = boost::container::small_vector<RangeInfo, 1>;

/// The ranges that an insertion or a restoring fills, each where the live element behind its slots stands.
/// Fails: "Index is outside range" when an operation has not as many elements as slots; "isDescending" when the nested
/// operations don't stand from high to low; "plainPtr" and `std::bad_cast` for missing or foreign data.
template<class Operation>
RangeInfos makeRangesToFill(CollaborationEngine::ListMultirangeOperationImpl<Operation>& operation,
                            const CollaborationUtils::TombstonesStorage& tombstones);

/// The ranges that a removal or a marking empties. All their slots must be live. Fails: "opt"; "isDescending".
template<class Operation>
RangeInfos makeRangesToEmpty(CollaborationEngine::ListMultirangeOperationImpl<Operation>& operation,
                             const CollaborationUtils::TombstonesStorage& tombstones);

/// Finds the places of all ranges in one walk over the text.
/// Fails: "Unexpected type in the source variant" for a range beyond its end.
void findPlaces(RangeInfos& ranges, const DOM::Blocks& blocks);

/// Brings the nested ranges of an insertion, each in the coordinates in which those after it aren't there yet, into the
/// coordinates in which all are there (`add`), or back. Fails: "isCountable" when an index would become too high to be
/// counted, and "newBegin >= nextRangesTotal" when one would become negative; the former before anything is changed.
void shiftNestedRanges(CollaborationEngine::ListMultirangeOperationImpl<
                           CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>>& operation,
                       bool add);

/// Requires that all slots of a restoring are dead. Fails: "isTombstone".
void requireTombstones(const RangeInfos& ranges, const CollaborationUtils::TombstonesStorage& tombstones);

enum class SlotsChange : unsigned char
{
    Insert,
    Restore,
    Remove,
    MarkAsRemoved
};

/// Carries out on the slots what happens to the elements of the range.
void changeSlots(CollaborationUtils::TombstonesStorage& tombstones, const RangeInfo& range, SlotsChange change);

/// Gives the elements that were taken out back to the operations that took them: each gets as many as it has slots.
/// Fails: "!_data.empty()", "textElements.empty()"; `std::bad_cast` for an operation of another tag.
template<class Tag>
void giveDataBack(RangeInfos ranges);

} // namespace Zem::DOMCollaboration
