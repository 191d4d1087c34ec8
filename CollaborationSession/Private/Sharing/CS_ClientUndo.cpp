// The own actions of a client as its user knows them: what can be undone, and what can be done again.

#include "Editing/CS_Stretch.h"
#include "Sharing/CS_ActionRunner.h"
#include "Sharing/CS_ChangedNodes.h"
#include "Sharing/CS_Checkpoint.h"
#include "Sharing/CS_Client.h"
#include "Sharing/CS_ComposedTyping.h"
#include "Sharing/CS_MoveSelections.h"
#include "Sharing/CS_UndoLog.h"

#include "CE_AfterDocumentActionSignal.h"

#include "Util_Cast.h"

#include <algorithm>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

/// The user's own actions run on what is there, pending ones included.
class Client::RunnerHost final : public ActionRunner::Host
{
public:
    explicit RunnerHost(Client& client)
        : _client(client)
    {
    }

    /// The client hears of the action as a whole.
    void onCarriedOut(const Operation&, const Operation&) override
    {
    }

    void onTakenBack(const Operation&) override
    {
    }

    void restore(std::span<const ActionRunner::OperationPtr> done) override
    {
        _client.restoreDocument(done);
    }

    void forEachBefore(CallableRef<bool(const Operation&)> pass) const override
    {
        for (auto pending = _client._pending.rbegin(); pending != _client._pending.rend(); ++pending)
        {
            if (!pass(*pending->_operation))
            {
                return;
            }
        }
        _client._undoLog->forEachEntry(pass);
    }

private:
    Client& _client;
};

bool Client::undo()
{
    for (auto action = _ownActions.rbegin(); action != _ownActions.rend(); ++action)
    {
        if (action->_undoes == 0)
        {
            OwnAction& last = getLastOfChain(*action);
            // An undo stands where its action does in the order of what can be undone.
            if (isEffective(last) && undo(last))
            {
                return true;
            }
        }
    }
    return false;
}

bool Client::undo(ActionID action)
{
    OwnAction* found = findOwnAction(action);
    return found && found->_undoneBy == 0 && undo(*found);
}

bool Client::redo()
{
    if (_ownActions.empty() || _ownActions.back()._undoes == 0)
    {
        return false;
    }
    for (auto action = _ownActions.rbegin(); action != _ownActions.rend() && action->_undoes != 0; ++action)
    {
        if (action->_undoneBy == 0 && !isEffective(*action))
        {
            return undo(*action);
        }
    }
    return false;
}

/// Of a chain of undos of undos, whether `action` leaves done what stands at its beginning.
bool Client::isEffective(const OwnAction& action)
{
    const OwnAction* undone = action._undoes == 0 ? nullptr : findOwnAction(action._undoes);
    return !undone || !isEffective(*undone);
}

Client::OwnAction& Client::getLastOfChain(OwnAction& action)
{
    OwnAction* next = action._undoneBy == 0 ? nullptr : findOwnAction(action._undoneBy);
    return next ? getLastOfChain(*next) : action;
}

bool Client::undo(OwnAction& undone)
{
    const ActionID id = undone._lastID;
    const boost::optional<Action> undo = makeUndo(id);
    if (!undo)
    {
        return false;
    }
    OperationUPtr operation = cloneOperation(*undo->_operation);
    operation->setIDIfNeeded(_nextOperationID);
    Bridge nothingMet(_replica.getTransformer());
    RunnerHost host(*this);
    ActionRunner runner(_replica, nothingMet, _statistics, host);
    runner.fitAlways();
    ActionRunner::Outcome outcome = runner.run({std::move(operation), undo->_meaning});
    if (cast<EmptyOperation>(outcome._happened._operation.get()))
    {
        return false;
    }
    try
    {
        _replica.getExecutor().getAfterDocumentActionSignal()();
    }
    catch (...)
    {
        restoreDocument();
        throw;
    }
    OperationUPtr happened = cloneOperation(*outcome._happened._operation);
    happened->setIDIfNeeded(_nextOperationID);
    addPending(std::move(happened), outcome._happened._meaning, id);
    if (OwnAction* found = findOwnAction(id))
    {
        found->_undoneBy = _lastAction;
    }
    if (outcome._refusal)
    {
        refuse(_pending.back(), *outcome._refusal);
    }
    return true;
}

/// What undoes an own action, in the state of the document.
boost::optional<Action> Client::makeUndo(ActionID action) const
{
    const auto pending = std::find_if(_pending.begin(), _pending.end(),
                                      [action](const Pending& candidate) { return candidate._lastID == action; });
    if (pending == _pending.end())
    {
        return _undoLog->makeUndo(action, getPendingFrom(0));
    }
    const Undoable undoable{cloneOperation(*pending->_operation), pending->_meaning, pending->_formerLooks};
    return _undoLog->makeUndo(undoable, getPendingFrom(static_cast<std::size_t>(pending - _pending.begin()) + 1));
}

std::vector<Action> Client::getPendingFrom(std::size_t index) const
{
    std::vector<Action> actions;
    for (; index < _pending.size(); ++index)
    {
        actions.push_back({cloneOperation(*_pending[index]._operation), _pending[index]._meaning});
    }
    return actions;
}

namespace
{

/// The place of the own action of an id, which may be one of several that went out as one. The end if it is forgotten.
template<class OwnActions>
auto findPlaceIn(OwnActions& actions, ActionID action)
{
    const auto found =
        std::lower_bound(actions.begin(), actions.end(), action,
                         [](const auto& candidate, ActionID wanted) { return candidate._lastID < wanted; });
    return found != actions.end() && found->_firstID <= action ? found : actions.end();
}

} // namespace

Client::OwnActions::iterator Client::findPlace(ActionID action)
{
    return findPlaceIn(_ownActions, action);
}

Client::OwnActions::const_iterator Client::findPlace(ActionID action) const
{
    return findPlaceIn(_ownActions, action);
}

Client::OwnAction* Client::findOwnAction(ActionID action)
{
    const auto found = findPlace(action);
    return found == _ownActions.end() ? nullptr : &*found;
}

const Client::OwnAction* Client::findOwnAction(ActionID action) const
{
    const auto found = findPlace(action);
    return found == _ownActions.end() ? nullptr : &*found;
}

ActionID Client::getUndone(ActionID action) const
{
    const OwnAction* found = findOwnAction(action);
    return found ? found->_undoes : 0;
}

/// Nothing of an action happened: what it was to undo can be undone again.
void Client::forgetAction(ActionID action)
{
    const auto forgotten = findPlace(action);
    if (forgotten == _ownActions.end())
    {
        return;
    }
    if (OwnAction* undone = findOwnAction(forgotten->_undoes))
    {
        undone->_undoneBy = 0;
    }
    _ownActions.erase(findPlace(action));
}

void Client::forgetOldActions()
{
    while (_ownActions.size() > _settings._undoCount)
    {
        _undoLog->forget(_ownActions.front()._lastID);
        _ownActions.pop_front();
    }
}

/// What a burst of typing means with one keystroke more.
std::shared_ptr<const Meaning> Client::joinTypings(std::shared_ptr<const Meaning> burst, const Pending& next)
{
    const bool areTogether =
        (!burst || burst->_typedApart.empty()) && (!next._meaning || next._meaning->_typedApart.empty());
    if (areTogether)
    {
        return burst;
    }
    auto joined = burst ? std::make_shared<Meaning>(*burst) : std::make_shared<Meaning>(*next._meaning);
    if (burst)
    {
        std::erase_if(joined->_typedApart, [&](Stretch& stretch) { return !moveStretch(stretch, *next._operation); });
        const auto& added = next._meaning ? next._meaning->_typedApart : std::vector<Stretch>();
        joined->_typedApart.insert(joined->_typedApart.end(), added.begin(), added.end());
    }
    return joined;
}

/// Puts neighbouring keystrokes together. What is under way stays as the server gets it, and what was undone, or undoes
/// something, stays an action of its own.
void Client::composeTyping()
{
    if (!_composesTyping || _pending.size() < _underWayCount + 2)
    {
        return;
    }
    std::deque<Pending> composed;
    ComposedTyping typing;
    Pending burst;
    const auto closeBurst = [&]
    {
        if (!typing.isEmpty())
        {
            burst._operation = makeOperationFromParts(typing.makeOperations());
            composed.push_back(std::move(burst));
            typing = ComposedTyping();
        }
    };
    for (std::size_t index = 0; index < _pending.size(); ++index)
    {
        Pending& pending = _pending[index];
        const OwnAction* action = findOwnAction(pending._lastID);
        const bool mayJoin = index >= _underWayCount && action && action->_undoes == 0 && action->_undoneBy == 0;
        if (mayJoin && !typing.isEmpty() && typing.takeInAll(*pending._operation))
        {
            burst._lastID = pending._lastID;
            burst._meaning = joinTypings(burst._meaning, pending);
            continue;
        }
        closeBurst();
        if (mayJoin && typing.takeInAll(*pending._operation))
        {
            burst = std::move(pending);
            continue;
        }
        composed.push_back(std::move(pending));
    }
    closeBurst();
    _pending = std::move(composed);
    joinOwnActions();
}

/// The own actions that went into one are one.
void Client::joinOwnActions()
{
    for (const Pending& pending : _pending)
    {
        if (pending._firstID == pending._lastID)
        {
            continue;
        }
        const auto first = findPlace(pending._firstID);
        const auto last = findPlace(pending._lastID);
        if (first != last && first != _ownActions.end() && last != _ownActions.end())
        {
            last->_firstID = first->_firstID;
            _ownActions.erase(first, last);
        }
    }
}

} // namespace Zem::CollaborationSession
