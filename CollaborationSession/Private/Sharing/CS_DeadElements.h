#pragma once

#include "Sharing/CS_FitIntoText.h"

#include "CE_Operation.h"
#include "CE_OperationNodeAddress.h"

#include <boost/optional.hpp>

namespace Zem::CollaborationSession
{

/// Looks for the element of a dead slot of a text among the operations that led to the text as it is: the one that
/// killed it has it. They are passed from the newest to the oldest, and the slot is followed back through them.
class DeadElementSearch
{
public:
    /// `reference` is a slot of what is to come back.
    DeadElementSearch(const CollaborationEngine::OperationNodeAddress& text, unsigned long slot,
                      unsigned long reference)
        : _text(text)
        , _slot(slot)
        , _reference(reference)
    {
    }

    /// False once there is nothing more to look for: the element is found, or it wasn't there yet.
    /// Cost: the nested operations, and none for an operation on another node.
    bool pass(const CollaborationEngine::Operation& operation);

    const boost::optional<DeadElement>& getElement() const
    {
        return _element;
    }

private:
    bool passAtomic(const CollaborationEngine::AtomicOperation& operation);

    const CollaborationEngine::OperationNodeAddress& _text;
    unsigned long _slot;
    /// Nothing once the operation that killed it was passed.
    boost::optional<unsigned long> _reference;
    boost::optional<DeadElement> _element;
};

} // namespace Zem::CollaborationSession
