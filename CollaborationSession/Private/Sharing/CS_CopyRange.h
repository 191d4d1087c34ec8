#pragma once

#include "CE_ListOperation.h"

#include <type_traits>

namespace Zem::CollaborationSession
{

/// A range of slots, and where its elements stand in those of a single-range operation.
struct CopiedRange
{
    unsigned long _begin;
    unsigned long _offset;
    unsigned long _count;
};

/// An operation like `model` on some of its elements, which stand at other slots.
template<class Nested>
Nested copyRange(const Nested& model, const CopiedRange& copied)
{
    using namespace CollaborationEngine;

    SharedConstPtr<ItemsCollection> data;
    if (model.getData())
    {
        data = SharedConstPtr<ItemsCollection>(
            model.getData()->copySubrange(IndexRange<unsigned long>::fromCount(copied._offset, copied._count)));
    }
    const auto range = IndexRange<unsigned long>::fromCount(copied._begin, copied._count);
    if constexpr (std::is_same_v<Nested, ListLeaveTombstonesOperation>)
    {
        return Nested(model.getNodeAddress(), model.getOperandType(), std::move(data), range, model.getHoldersCount());
    }
    else
    {
        return Nested(model.getNodeAddress(), model.getOperandType(), std::move(data), range);
    }
}

} // namespace Zem::CollaborationSession
