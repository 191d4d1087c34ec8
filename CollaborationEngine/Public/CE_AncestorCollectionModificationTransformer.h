#pragma once

#include "CE_HierarchicalOperation.h"
#include "CE_Shadows.h"

#include <boost/optional.hpp>

namespace Zem::CollaborationEngine
{

/// What a change of a collection means to an address that leads into it.
struct AddressChange
{
    enum class Kind
    {
        /// The address, renumbered where needed, still leads to the same place.
        Follows,
        /// The element was marked or removed: `_deadPlace` says how. It may come back.
        Dies,
        /// What `_deadPlace` names is there again.
        ComesBack,
        /// The element went, and won't be the same if it ever comes back.
        IsGone
    };

    Kind _kind = Kind::Follows;
    boost::optional<DeadPlace> _deadPlace = boost::none;
};

/// Transforms addresses below a collection against operations on that collection. One serves all nodes of a type.
class ZEM_EXPORT AncestorCollectionModificationTransformer
{
public:
    virtual ~AncestorCollectionModificationTransformer();

    /// Renumbers the chunk of `address` that points into the node of `modification`, and tells what became of the
    /// element. Requires: the address of `modification` is a proper prefix of `address`.
    virtual AddressChange include(OperationNodeAddress& address, const HierarchicalOperation& modification) const = 0;
};

} // namespace Zem::CollaborationEngine
