#pragma once

#include "CE_Operation.h"
#include "CE_OperationNodeAddress.h"

#include <deque>

namespace Zem::CollaborationEngine
{

/// An insertion that was taken back while a position lay in it: what is needed to go back there when it is included
/// again.
struct RevertedInsertOperationInfo
{
    friend bool operator==(const RevertedInsertOperationInfo&, const RevertedInsertOperationInfo&) = default;

    template<class Archive>
    void serialize(Archive& archive);

    /// The list or table in which the insertion took place. It follows the changes of what lies above it.
    OperationNodeAddress _container;
    Operation::Id _operationID = 0;
    /// The chunk of the position's address that pointed into the inserted range.
    unsigned long _chunkIndex = 0;
    /// The offset in the inserted items; those of several ranges count as one sequence, from the lowest place up.
    unsigned long _indexOfItemInCollection = 0;
};

/// A position: an address whose last chunk names a slot or the end, and what a `PositionTransformer` needs to bring it
/// back. Chunks behind the lowest `_chunkIndex` of the reverted insertions mean nothing until that one is back.
class ZEM_EXPORT NodeAddressWithTransformationData
{
public:
    NodeAddressWithTransformationData() = default;

    explicit NodeAddressWithTransformationData(OperationNodeAddress address)
        : _address(std::move(address))
    {
    }

    NodeAddressWithTransformationData(const NodeAddressWithTransformationData&) = default;
    NodeAddressWithTransformationData(NodeAddressWithTransformationData&&) = default;
    NodeAddressWithTransformationData& operator=(const NodeAddressWithTransformationData&) = default;
    NodeAddressWithTransformationData& operator=(NodeAddressWithTransformationData&&) = default;
    virtual ~NodeAddressWithTransformationData();

    /// Whether an insertion exactly at the position leaves it behind the element in front of it.
    virtual bool sticksToPrevious() const;

    const OperationNodeAddress& getAddress() const
    {
        return _address;
    }

    OperationNodeAddress& getAddress()
    {
        return _address;
    }

    /// The latest stands at the back.
    const std::deque<RevertedInsertOperationInfo>& getRevertedInsertOperations() const
    {
        return _revertedInsertOperations;
    }

    std::deque<RevertedInsertOperationInfo>& getRevertedInsertOperations()
    {
        return _revertedInsertOperations;
    }

    /// Forgets the reverted insertions; the address stays.
    void cleanRevertedOperationsStack();

    template<class Archive>
    void serialize(Archive& archive);

private:
    OperationNodeAddress _address;
    std::deque<RevertedInsertOperationInfo> _revertedInsertOperations;
};

} // namespace Zem::CollaborationEngine
