#pragma once

#include "Sharing/CS_Looks.h"
#include "Sharing/CS_Messages.h"

#include "CE_BaseOperationTransformer.h"

#include "Util_CallableRef.h"

#include <boost/optional.hpp>

#include <deque>
#include <memory>
#include <span>
#include <vector>

namespace Zem::CollaborationSession
{

/// What undoes an own action: its operation undone, or the former looks of what it gave another.
struct Undoable
{
    std::shared_ptr<const CollaborationEngine::Operation> _operation;
    std::shared_ptr<const Meaning> _meaning;
    std::vector<LookSetting> _formerLooks;
};

/// The own actions that are in the history, for their undo. The history itself is kept for it only so far: what undoes
/// an action that is older is brought past what came later, and so an action can be undone however much others did
/// since.
class UndoLog
{
public:
    /// `laterCount` is how many entries are kept.
    UndoLog(const CollaborationEngine::BaseOperationTransformer& transformer, std::size_t laterCount);

    /// An own action is in the history, behind all entries. `key` is greater than any before.
    void add(unsigned long key, Undoable undoable);

    /// The history has grown. An own action is passed first, and then added.
    /// Cost: none, until more entries came than are kept; then a transformation for each action that is as old.
    void pass(const HistoryEntryPtr& entry);

    /// An action won't be undone any more.
    void forget(unsigned long key);

    /// Passes the entries that are kept, from the newest to the oldest, until `pass` is false.
    void forEachEntry(CallableRef<bool(const CollaborationEngine::Operation&)> pass) const;

    /// What undoes an action, behind all entries and `pending`. Empty if it isn't known. What others changed since is
    /// left out of it. Cost: a transformation for each later operation, keystrokes in a row counting as two.
    boost::optional<Action> makeUndo(unsigned long key, std::span<const Action> pending) const;

    /// The same of an action that isn't in the history yet, behind `later`.
    Action makeUndo(const Undoable& undoable, std::span<const Action> later) const;

private:
    struct Item
    {
        unsigned long _key;
        Undoable _undoable;
        /// What undoes it in the state behind `_passedCount` entries; null as long as it isn't made.
        std::shared_ptr<const CollaborationEngine::Operation> _undo;
        unsigned long _passedCount;
    };

    void bringForward(Item& item, unsigned long passedCount) const;
    std::vector<Action> getLater(unsigned long from, unsigned long to) const;

    const CollaborationEngine::BaseOperationTransformer& _transformer;
    std::size_t _laterCount;
    std::deque<Item> _items;
    std::deque<HistoryEntryPtr> _later;
    /// How many entries came in front of `_later`.
    unsigned long _droppedCount = 0;
};

} // namespace Zem::CollaborationSession
