#pragma once

#include "Sharing/CS_Bridge.h"
#include "Sharing/CS_Client.h"

#include <string>
#include <vector>

namespace Zem::CollaborationSession
{

/// What a client does while others' operations come in: the pending ones are taken back, what happened is executed, and
/// the pending ones are brought past that and executed again.
class Client::Rebase
{
public:
    /// Takes the pending operations back.
    explicit Rebase(Client& client);

    void takeIn(const HistoryEntryPtr& entry);
    void takeIn(const OperationRejected& rejection);

    /// Executes the pending operations again. Must be called in the end.
    void finish();

private:
    /// An operation past the bridge; or null, and why there is no place for it.
    struct Placement
    {
        CollaborationEngine::OperationUPtr _planned;
        std::string _whyNot;
    };

    CollaborationEngine::OperationUPtr takeOldest();
    Placement place(const CollaborationEngine::Operation& operation);
    CollaborationEngine::OperationUPtr doAgain(const CollaborationEngine::Operation& operation);
    CollaborationEngine::OperationUPtr executeAgain(const CollaborationEngine::Operation& original,
                                                    CollaborationEngine::OperationUPtr planned);
    void leaveOut(const CollaborationEngine::Operation& original);

    Client& _client;
    Bridge _bridge;
    /// False once an operation couldn't be brought past the bridge: nothing that was made behind it can be placed.
    bool _isBridgeWhole = true;
    /// The pending operations that run again.
    std::vector<CollaborationEngine::OperationUPtr> _again;
};

} // namespace Zem::CollaborationSession
