#pragma once

/// A position that knows by itself whether it sticks to the element in front of it.

#include "CE_NodeAddressWithTransformationData.h"

namespace Zem::CollaborationEngine::Testing
{

class Position final : public NodeAddressWithTransformationData
{
public:
    Position(OperationNodeAddress address, bool sticks)
        : NodeAddressWithTransformationData(std::move(address))
        , _sticks(sticks)
    {
    }

    bool sticksToPrevious() const override
    {
        return _sticks;
    }

    /// Requires: the position leads into a list.
    unsigned long getIndex() const
    {
        return derefPtr(getAddress().getItemFromEndAs<NodeAddressing::AddressInList>(0)).getIndex();
    }

private:
    bool _sticks;
};

} // namespace Zem::CollaborationEngine::Testing
