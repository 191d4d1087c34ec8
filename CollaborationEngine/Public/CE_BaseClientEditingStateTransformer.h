#pragma once

#include "CE_ClientEditingState.h"
#include "CE_Operation.h"

namespace Zem::CollaborationEngine
{

/// Moves editing states across operations. This class unpacks composite operations; empty and shadowed ones change
/// nothing.
class ZEM_EXPORT BaseClientEditingStateTransformer
{
public:
    virtual ~BaseClientEditingStateTransformer();

    /// Moves the state forward across an operation of any kind.
    void include(const Operation& operation, ClientEditingState& state);

    /// Moves the state back across an operation of any kind.
    void exclude(const Operation& operation, ClientEditingState& state);

    virtual void includeImpl(const AtomicOperation& operation, ClientEditingState& state) = 0;
    virtual void excludeImpl(const AtomicOperation& operation, ClientEditingState& state) = 0;
};

} // namespace Zem::CollaborationEngine
