#pragma once

#include "Sharing/CS_Messages.h"

#include <memory>
#include <string>
#include <utility>

namespace Zem::CollaborationSession
{

/// A message of the server that no server has to have sent.
inline ActionHappened makeEntry(Revision revision, ClientID author, unsigned long number,
                                std::shared_ptr<const CollaborationEngine::Operation> operation)
{
    return {revision,
            std::make_shared<HistoryEntry>(HistoryEntry{author, number, {std::move(operation), nullptr}, boost::none})};
}

/// One of which nothing happened.
inline ActionHappened makeRefusal(Revision revision, ClientID author, unsigned long number, std::string sentence)
{
    return {revision, std::make_shared<HistoryEntry>(
                          HistoryEntry{author,
                                       number,
                                       {std::make_shared<CollaborationEngine::EmptyOperation>(), nullptr},
                                       Refusal{RefusalReason::FitsNoDocument, std::move(sentence)}})};
}

} // namespace Zem::CollaborationSession
