#pragma once

#include "Sharing/CS_ActionRunner.h"
#include "Sharing/CS_Bridge.h"
#include "Sharing/CS_Client.h"

#include <utility>
#include <vector>

namespace Zem::CollaborationSession
{

/// What a client does while others' actions come in: the pending ones are taken back, what happened is executed, and
/// the pending ones are brought past that and run again.
///
/// All that comes of it is built aside, but for the document, and `finish` puts it in place. If anything fails before,
/// the document is made again from what the client still has: nothing has happened then.
class Client::Rebase final : private ActionRunner::Host
{
public:
    /// Takes the pending actions back.
    explicit Rebase(Client& client);
    ~Rebase() override;

    Rebase(const Rebase&) = delete;
    Rebase& operator=(const Rebase&) = delete;

    void takeIn(const HistoryEntryPtr& entry);
    void takeIn(const SelectionMoved& moved);

    std::size_t getEntriesCount() const
    {
        return _entries.size();
    }

    /// Runs the pending actions again. Nothing is to be called behind it.
    void finish();

private:
    /// An entry of the history, and the own action that it acknowledges, or -1.
    struct Entry
    {
        HistoryEntryPtr _entry;
        std::ptrdiff_t _acknowledged;
        std::vector<LookSetting> _formerLooks;
    };

    void takeBackPending();
    std::vector<LookSetting> takeInOwn(const HistoryEntry& entry);
    void takeInOther(const HistoryEntry& entry);
    void executeInstead(const Action& own, const CollaborationEngine::Operation& predicted, Bridge::Mark before,
                        const CollaborationEngine::Operation& happened);
    Action getAction(std::size_t index) const;
    std::vector<LookSetting> findFormerLooks(const Pending& pending, const Action& happened,
                                             const std::vector<LookSetting>& looksOfOthers);
    void runAgain(std::size_t index);
    void commit();

    void onCarriedOut(const CollaborationEngine::Operation& planned,
                      const CollaborationEngine::Operation& happened) override;
    void onTakenBack(const CollaborationEngine::Operation& happened) override;
    void restore(std::span<const ActionRunner::OperationPtr> done) override;
    void forEachBefore(CallableRef<bool(const CollaborationEngine::Operation&)> pass) const override;

    Client& _client;
    Bridge _bridge;
    std::vector<Entry> _entries;
    /// How many of the pending actions were acknowledged.
    std::size_t _acknowledgedCount = 0;
    /// What became of the others.
    std::deque<Pending> _again;
    std::vector<std::pair<std::size_t, Refusal>> _refusals;
    Selections _selections;
    Selections _ownSelection;
    bool _isFinished = false;
};

} // namespace Zem::CollaborationSession
