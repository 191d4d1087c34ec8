#pragma once

#include "Sharing/CS_Messages.h"

#include <memory>
#include <utility>

namespace Zem::CollaborationSession
{

/// A message of the server that no server has to have sent.
inline OperationHappened makeEntry(ClientID author, unsigned long number,
                                   std::shared_ptr<const CollaborationEngine::Operation> operation)
{
    return {std::make_shared<HistoryEntry>(HistoryEntry{author, number, std::move(operation)})};
}

} // namespace Zem::CollaborationSession
