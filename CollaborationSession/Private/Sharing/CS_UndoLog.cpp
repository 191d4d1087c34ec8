#include "Sharing/CS_UndoLog.h"

#include "Editing/CS_Stretch.h"
#include "Sharing/CS_Bridge.h"
#include "Sharing/CS_UndoSearch.h"

#include "CE_InverseOperation.h"
#include "CE_SetPropertyOperation.h"

#include "Util_Cast.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// How many entries are dropped at a time.
constexpr unsigned long droppedAtOnce = 64;

/// Moves looks past actions, and takes out of them what these set again.
std::vector<LookSetting> movePast(std::vector<LookSetting> looks, std::span<const Action> actions)
{
    for (const Action& action : actions)
    {
        std::erase_if(looks, [&](LookSetting& look) { return !moveStretch(look._stretch, *action._operation); });
        if (!action._meaning)
        {
            continue;
        }
        for (const LookSetting& later : action._meaning->_looks)
        {
            looks = withoutLater(std::move(looks), later);
        }
    }
    return looks;
}

/// `undo` past actions; an empty operation if it can't be brought past them.
std::shared_ptr<const Operation> movePast(const Operation& undo, std::span<const Action> actions,
                                          const BaseOperationTransformer& transformer)
{
    Bridge later(transformer);
    for (const Action& action : actions)
    {
        later.append(action._operation);
    }
    try
    {
        return later.cross(undo, Bridge::Values::Yields);
    }
    catch (const std::exception&)
    {
        return std::make_shared<EmptyOperation>();
    }
}

void listSettings(const Operation& operation, std::vector<OperationUPtr>& settings)
{
    if (const auto* composite = cast<CompositeOperation>(&operation))
    {
        for (const OperationUPtr& part : composite->getParts())
        {
            listSettings(*part, settings);
        }
    }
    else if (cast<ShadowedOperation>(&operation) || cast<SetPropertyOperation>(&operation))
    {
        settings.push_back(cloneOperation(operation));
    }
}

/// What of an operation waits for something that is dead.
std::shared_ptr<const Operation> takeShadowed(const Operation& operation)
{
    std::vector<OperationUPtr> settings;
    listSettings(operation, settings);
    std::erase_if(settings, [](const OperationUPtr& setting) { return !cast<ShadowedOperation>(setting.get()); });
    return makeOperationFromParts(std::move(settings));
}

/// What of an operation sets something, or waits for something that is dead.
std::shared_ptr<const Operation> takeSettings(const Operation& operation)
{
    std::vector<OperationUPtr> settings;
    listSettings(operation, settings);
    return makeOperationFromParts(std::move(settings));
}

} // namespace

UndoLog::UndoLog(const BaseOperationTransformer& transformer, std::size_t laterCount)
    : _transformer(transformer)
    , _laterCount(laterCount)
{
}

void UndoLog::add(unsigned long key, Undoable undoable)
{
    _items.push_back({key, std::move(undoable), nullptr, _droppedCount + _later.size()});
}

void UndoLog::pass(const HistoryEntryPtr& entry)
{
    if (_items.empty())
    {
        ++_droppedCount;
        return;
    }
    _later.push_back(entry);
    if (_later.size() < _laterCount + droppedAtOnce)
    {
        return;
    }
    const unsigned long passedCount = _droppedCount + droppedAtOnce;
    for (Item& item : _items)
    {
        if (item._passedCount < passedCount)
        {
            bringForward(item, passedCount);
        }
    }
    _later.erase(_later.begin(), _later.begin() + static_cast<std::ptrdiff_t>(droppedAtOnce));
    _droppedCount = passedCount;
}

void UndoLog::forget(unsigned long key)
{
    std::erase_if(_items, [key](const Item& item) { return item._key == key; });
    if (_items.empty())
    {
        _droppedCount += _later.size();
        _later.clear();
    }
}

void UndoLog::forEachEntry(CallableRef<bool(const Operation&)> pass) const
{
    for (auto entry = _later.rbegin(); entry != _later.rend(); ++entry)
    {
        if (!pass(*(*entry)->_action._operation))
        {
            return;
        }
    }
}

std::vector<Action> UndoLog::getLater(unsigned long from, unsigned long to) const
{
    std::vector<Action> actions;
    for (unsigned long index = from; index < to; ++index)
    {
        actions.push_back(_later[index - _droppedCount]->_action);
    }
    return actions;
}

void UndoLog::bringForward(Item& item, unsigned long passedCount) const
{
    const std::vector<Action> later = getLater(item._passedCount, passedCount);
    if (item._undo)
    {
        item._undo = movePast(*item._undo, later, _transformer);
        item._undoable._formerLooks = movePast(std::move(item._undoable._formerLooks), later);
    }
    else
    {
        const Action undo = makeUndo(item._undoable, later);
        item._undo = undo._operation;
        item._undoable._formerLooks = undo._meaning->_looks;
        item._undoable._operation.reset();
    }
    item._passedCount = passedCount;
}

boost::optional<Action> UndoLog::makeUndo(unsigned long key, std::span<const Action> pending) const
{
    const auto item =
        std::lower_bound(_items.begin(), _items.end(), key,
                         [](const Item& candidate, unsigned long wanted) { return candidate._key < wanted; });
    if (item == _items.end() || item->_key != key)
    {
        return boost::none;
    }
    std::vector<Action> later = getLater(item->_passedCount, _droppedCount + _later.size());
    later.insert(later.end(), pending.begin(), pending.end());
    if (!item->_undo)
    {
        return makeUndo(item->_undoable, later);
    }
    auto meaning = std::make_shared<Meaning>();
    meaning->_isUndo = true;
    meaning->_looks = movePast(item->_undoable._formerLooks, later);
    return Action{movePast(*item->_undo, later, _transformer), std::move(meaning)};
}

Action UndoLog::makeUndo(const Undoable& undoable, std::span<const Action> later) const
{
    auto meaning = std::make_shared<Meaning>();
    meaning->_isUndo = true;
    const bool isPainted = undoable._meaning && !undoable._meaning->_looks.empty();
    if (isPainted)
    {
        meaning->_looks = movePast(undoable._formerLooks, later);
    }
    // The tags that part runs stay: what looks alike on both sides of them looks as it did before. What is dead by
    // now has to come back as it was; what lives is painted instead.
    UndoSearch search(_transformer, isPainted ? takeSettings(*undoable._operation) : undoable._operation);
    for (const Action& action : later)
    {
        search.pass(action._operation);
    }
    const std::shared_ptr<const Operation> undo = search.makeUndo();
    return {isPainted ? takeShadowed(*undo) : undo, std::move(meaning)};
}

} // namespace Zem::CollaborationSession
