#pragma once

/// Addresses and positions that lead into a list.

#include "CE_AncestorCollectionModificationTransformer.h"
#include "CE_NodeAddressWithTransformationData.h"
#include "CE_Slots.h"

#include <boost/optional.hpp>

namespace Zem::CollaborationEngine
{

/// What becomes of the element in `slot`: the new index, if there is one, and what it means to all below.
/// `deadPlace` is how the element is named.
AddressChange changeElement(unsigned long& slot, const SlotOperation& slots, const DeadPlace& deadPlace);

/// What becomes of an address whose chunk at `chunkIndex` leads into the list.
AddressChange includeInListAddress(OperationNodeAddress& address, unsigned long chunkIndex, const SlotOperation& slots);

/// The operation that takes `slots` back.
SlotOperation reverseSlots(const SlotOperation& slots);

/// The index of a position in a list (or on an axis of a table) after an operation on it, whose slots these are.
/// Keeps up the position's reverted insertions; the caller sets the index in the address, and then calls
/// `followInContainers`. Empty if the position doesn't lead into that list any more.
boost::optional<unsigned long> movePosition(unsigned long index, NodeAddressWithTransformationData& position,
                                            const HierarchicalOperation& operation, const SlotOperation& slots);

/// Brings a change of the chunk at `chunkIndex` into the containers of the reverted insertions.
void followInContainers(NodeAddressWithTransformationData& position, unsigned long chunkIndex);

/// Brings a position past an operation on a list, whose slots these are.
void includeInListPosition(NodeAddressWithTransformationData& position, const HierarchicalOperation& operation,
                           const SlotOperation& slots);

} // namespace Zem::CollaborationEngine
