#include "Sharing/CS_ActionRunner.h"

#include "Editing/CS_Painting.h"
#include "Editing/CS_Stretch.h"
#include "Editing/CS_TextInDocument.h"
#include "Sharing/CS_DeadElements.h"
#include "Sharing/CS_DescribeException.h"
#include "Sharing/CS_ExecuteStably.h"
#include "Sharing/CS_Looks.h"
#include "Sharing/CS_MissingStructure.h"
#include "Sharing/CS_RemovedParagraphs.h"
#include "Sharing/CS_Stopwatch.h"
#include "Sharing/CS_TypedApart.h"

#include "CE_InverseOperation.h"
#include "CE_OperationEquality.h"
#include "CE_SetPropertyOperation.h"

#include "Util_Cast.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <numeric>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;
using DOMCollaboration::PlaceKind;

namespace
{

const Meaning& getMeaning(const Action& action)
{
    static const Meaning none;
    return action._meaning ? *action._meaning : none;
}

/// Whether something of an operation waits for an element that was removed.
bool isInRemoved(const Operation& operation)
{
    return visitWith<bool>(
        operation, [](const AtomicOperation&) { return false; },
        [](const CompositeOperation& composite)
        {
            return std::any_of(composite.getParts().begin(), composite.getParts().end(),
                               [](const OperationUPtr& part) { return isInRemoved(*part); });
        },
        [](const EmptyOperation&) { return false; },
        [](const ShadowedOperation& shadowed) { return !shadowed.getShadows()._deadPlaces.empty(); });
}

/// How many ranges are brought past each step of a bridge, and what else each operation costs there.
unsigned long countRanges(const Operation& operation)
{
    constexpr unsigned long ofEachOperation = 16;
    return visitWith<unsigned long>(
        operation,
        [](const AtomicOperation& atomic)
        {
            const auto* onRanges = cast<ListMultirangeOperation>(&atomic);
            return ofEachOperation + (onRanges
                                          ? visitWith<unsigned long>(*onRanges, [](const auto& ranges)
                                                                     { return ranges.getNestedOperations().size(); })
                                          : 0);
        },
        [](const CompositeOperation& composite)
        {
            return std::accumulate(composite.getParts().begin(), composite.getParts().end(), ofEachOperation,
                                   [](unsigned long count, const OperationUPtr& part)
                                   { return count + countRanges(*part); });
        },
        [](const EmptyOperation&) { return ofEachOperation; },
        [](const ShadowedOperation& shadowed) { return ofEachOperation + countRanges(shadowed.getOriginal()); });
}

/// What fits, or `planned` if that does; an empty operation if nothing is left to do.
template<class Fitted>
OperationUPtr take(Fitted fitted, const Operation& planned)
{
    if (!fitted._isChanged)
    {
        return cloneOperation(planned);
    }
    if (!fitted._operation)
    {
        return std::make_unique<EmptyOperation>();
    }
    fitted._operation->inheritIDIfPossibleImpl(planned);
    return std::move(fitted._operation);
}

/// Whether something that isn't a byte came or went.
bool movesStructure(const ListMultirangeOperation& operation)
{
    const auto isIn = [](const auto& typed)
    {
        const auto& nestedOperations = typed.getNestedOperations();
        return std::any_of(
            nestedOperations.begin(), nestedOperations.end(),
            [](const auto& nested)
            {
                const auto* items = nested.getData()
                                        ? cast<DOMCollaboration::TextWithTombstonesItems>(nested.getData().get())
                                        : nullptr;
                return items && std::any_of(items->getCollection().begin(), items->getCollection().end(),
                                            [](const DOMCollaboration::TextWithTombstonesElement& element)
                                            { return getKind(element) != PlaceKind::Char; });
            });
    };
    const auto* insertion = cast<TextInsertion>(&operation);
    const auto* marking = cast<TextMarking>(&operation);
    const auto* restoring = cast<TextRestoring>(&operation);
    return (insertion && isIn(*insertion)) || (marking && isIn(*marking)) || (restoring && isIn(*restoring));
}

/// Empty if the text is gone, or in something that is.
std::optional<TextInDocument>
findText(const std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter>& document,
         const OperationNodeAddress& address)
{
    try
    {
        return TextInDocument(document, address);
    }
    catch (const std::exception&)
    {
        return std::nullopt;
    }
}

} // namespace

ActionRunner::ActionRunner(Replica& replica, Bridge& bridge, Statistics& statistics, Host& host)
    : _replica(replica)
    , _bridge(bridge)
    , _statistics(statistics)
    , _host(host)
    , _executor(replica.getExecutor(), *replica.getAdapter())
{
}

ActionRunner::Outcome ActionRunner::run(const Action& action)
{
    _meaning = &getMeaning(action);
    _hasMet = _hasMet || !_bridge.isClear();
    boost::optional<Bridge::Mark> before;
    if (_meaning->_isAllOrNothing)
    {
        before = _bridge.getMark();
    }
    runParts(*action._operation);
    std::vector<LookSetting> painted = _hasMet ? paintAll() : _meaning->_looks;
    if (before && _refusal)
    {
        restore(0);
        painted.clear();
        _bridge.returnTo(std::move(*before));
        _bridge.leaveOut(*action._operation);
        _refusal->_reason = RefusalReason::NotWhole;
    }
    return makeOutcome(action, std::move(painted));
}

ActionRunner::Outcome ActionRunner::makeOutcome(const Action& action, std::vector<LookSetting> painted)
{
    Outcome outcome;
    outcome._refusal = std::move(_refusal);
    outcome._looksOfOthers = std::move(_looksOfOthers);
    outcome._happened = {makeOperation(action), action._meaning};
    const bool isMeaningMoved = !_meaning->_looks.empty() || !_meaning->_typedApart.empty() || !_typedApart.empty();
    if (action._meaning && _hasMet && isMeaningMoved)
    {
        auto meaning = std::make_shared<Meaning>(*action._meaning);
        meaning->_looks = std::move(painted);
        meaning->_typedApart = std::exchange(_typedApart, {});
        outcome._happened._meaning = std::move(meaning);
    }
    _hasMet = false;
    _done.clear();
    return outcome;
}

/// One operation of all that happened.
ActionRunner::OperationPtr ActionRunner::makeOperation(const Action& action) const
{
    if (_done.size() == 1)
    {
        return _done.front();
    }
    OperationUPtr operation = joinDone(0);
    operation->inheritIDIfPossibleImpl(*action._operation);
    return operation;
}

/// The operations of an action happen one by one: what one can't do costs that one alone.
void ActionRunner::runParts(const Operation& operation)
{
    const auto* composite = cast<CompositeOperation>(&operation);
    if (!composite || composite->getKind() != CompositeKind::Plain)
    {
        runPart(operation);
        return;
    }
    for (const OperationUPtr& part : composite->getParts())
    {
        runParts(*part);
    }
}

void ActionRunner::runPart(const Operation& part)
{
    if (!_host.mayTry(_bridge.getStepsCount() * countRanges(part)))
    {
        // Nothing is tried any more, so nothing has to be brought past it.
        refuse(RefusalReason::HasNoPlace, "What came with it was too much to try, or to bring past what others did.");
        return;
    }
    OperationUPtr planned = place(part);
    if (!planned || cast<EmptyOperation>(planned.get()))
    {
        return;
    }
    if (isInRemoved(*planned) && !isInRemoved(part))
    {
        ++_statistics._shadowedCount;
        refuse(RefusalReason::TargetRemoved, "What it is about was removed.");
    }
    if (_hasMet && isPainted(*planned))
    {
        return;
    }
    carryOut(part, std::move(planned));
}

/// `part` past the bridge. Null if there is no place for it: what was made behind it goes on without it.
OperationUPtr ActionRunner::place(const Operation& part)
{
    const Stopwatch stopwatch(_statistics._transformingTime);
    try
    {
        return _bridge.cross(part, _meaning->_isUndo ? Bridge::Values::Yields : Bridge::Values::LaterStands);
    }
    catch (const std::exception& error)
    {
        refuse(RefusalReason::HasNoPlace, error.what());
    }
    _bridge.leaveOut(part);
    return nullptr;
}

/// A setting of a look that is painted anyway, once the other operations have happened. Of what is in a removed place
/// the operation has to remember it.
bool ActionRunner::isPainted(const Operation& planned) const
{
    return !_meaning->_looks.empty() && cast<SetPropertyOperation>(&planned);
}

void ActionRunner::carryOut(const Operation& part, OperationUPtr planned)
{
    const std::size_t doneBefore = _done.size();
    const std::size_t misfitsBefore = _executor.getMisfits().size();
    try
    {
        const Stopwatch stopwatch(_statistics._executingTime);
        carryOutFitted(*planned, part);
    }
    catch (...)
    {
        refuse(RefusalReason::FitsNoDocument, describeCurrentException());
        restore(doneBefore);
        _bridge.refuse(part);
        return;
    }
    const OperationUPtr happened = joinDone(doneBefore);
    const bool happensNothing = cast<EmptyOperation>(happened.get()) != nullptr;
    if (_executor.getMisfits().size() > misfitsBefore)
    {
        // What a restoring was to bring along has lost the run or paragraph that it was about.
        const auto* unit = cast<CompositeOperation>(planned.get());
        const bool isBroughtAlong = unit && unit->bringsShadowedAlong();
        refuse(isBroughtAlong ? RefusalReason::TargetRemoved : RefusalReason::FitsNoDocument,
               describe(_executor.getMisfits()[misfitsBefore]));
        if (happensNothing)
        {
            _bridge.refuse(part);
            return;
        }
    }
    else if (happensNothing)
    {
        refuse(RefusalReason::NotTaken, "The document doesn't take it.");
    }
    if (!haveEqualEffects(*planned, *happened))
    {
        ++_statistics._changedCount;
        _bridge.appendChange(part, *planned, *happened);
    }
}

void ActionRunner::execute(OperationUPtr planned)
{
    OperationUPtr changed;
    const bool isChanged = executeStably(_executor, *planned, changed);
    OperationUPtr& happened = isChanged ? changed : planned;
    if (cast<EmptyOperation>(happened.get()))
    {
        return;
    }
    _bridge.moveMeaning(*happened);
    std::erase_if(_typedApart, [&](Stretch& stretch) { return !moveStretch(stretch, *happened); });
    _host.onCarriedOut(*planned, *happened);
    _done.emplace_back(std::move(happened));
}

OperationUPtr ActionRunner::joinDone(std::size_t begin) const
{
    std::vector<OperationUPtr> parts;
    for (std::size_t index = begin; index < _done.size(); ++index)
    {
        parts.push_back(cloneOperation(*_done[index]));
    }
    return makeOperationFromParts(std::move(parts));
}

/// Tells the host that all behind the first `doneCount` operations is taken back.
void ActionRunner::forget(std::size_t doneCount)
{
    for (; _done.size() > doneCount; _done.pop_back())
    {
        _host.onTakenBack(*_done.back());
    }
}

void ActionRunner::giveUp()
{
    restore(0);
}

/// The document is made again. It isn't taken back by what happened: of a setting that tells what its author says that
/// the value was.
void ActionRunner::restore(std::size_t doneCount)
{
    forget(doneCount);
    _typedApart.clear();
    _host.restore(_done);
}

/// The first reason is the one that its author is told.
void ActionRunner::refuse(RefusalReason reason, const std::string& sentence)
{
    ++_statistics._rejectedCount;
    if (!_refusal)
    {
        _refusal = Refusal{reason, sentence};
    }
}

/// What was planned may have several parts, as the elements of a deletion that somebody else deleted, too.
void ActionRunner::carryOutFitted(const Operation& planned, const Operation& part)
{
    const auto* composite = cast<CompositeOperation>(&planned);
    if (composite && composite->getKind() == CompositeKind::Plain)
    {
        for (const OperationUPtr& piece : composite->getParts())
        {
            carryOutFitted(*piece, part);
        }
        return;
    }
    const bool isCarriedOut = _hasMet && (carryOutTyping(planned, part) || carryOutRestoring(planned));
    if (!isCarriedOut)
    {
        execute(_hasMet ? fit(planned) : cloneOperation(planned));
    }
}

/// The operation to execute in place of `planned`.
OperationUPtr ActionRunner::fit(const Operation& planned) const
{
    const auto* marking = cast<TextMarking>(&planned);
    const auto text = marking ? findText(_replica.getAdapter(), marking->getNodeAddress()) : std::nullopt;
    return text ? take(fitMarking(text->getText(), *marking), planned) : cloneOperation(planned);
}

/// False if `planned` brings nothing back in a text.
bool ActionRunner::carryOutRestoring(const Operation& planned)
{
    const auto* restoring = cast<TextRestoring>(&planned);
    const auto text = restoring ? findText(_replica.getAdapter(), restoring->getNodeAddress()) : std::nullopt;
    if (!text)
    {
        return false;
    }
    FittedRestoring fitted = fitBack(text->getText(), *restoring);
    const auto singles = takeSingles(*restoring, fitted._leftOut);
    execute(take(std::move(fitted), planned));
    const std::size_t doneBefore = _done.size();
    for (const auto& single : singles)
    {
        const OperationUPtr placed = pass(cloneOperation(*single), doneBefore);
        bringBack(text->getText(), cast<TextRestoring>(*placed));
    }
    return true;
}

/// Brings back what lacks tags or marks, with new ones.
void ActionRunner::bringBack(const DOM::TextWithTombstones& text, const TextRestoring& single)
{
    const unsigned long slot = single.getNestedOperations().front().getRange().getBegin();
    const auto findDeadHere = [&](unsigned long dead) { return findDead(single.getNodeAddress(), dead, slot); };
    MissingStructure missing = findMissingStructure(text, single, findDeadHere);
    const std::size_t doneBefore = _done.size();
    if (missing._insertion)
    {
        execute(std::move(missing._insertion));
    }
    if (missing._isInstead)
    {
        return;
    }
    const OperationUPtr placed = pass(cloneOperation(single), doneBefore);
    FittedRestoring fitted = fitBack(text, cast<TextRestoring>(*placed));
    if (!fitted._leftOut.empty())
    {
        refuse(RefusalReason::NothingToBringBack, "Of what was to come back, not everything is known any more.");
    }
    execute(take(std::move(fitted), *placed));
    if (missing._removal)
    {
        execute(fit(*missing._removal));
    }
}

FittedRestoring ActionRunner::fitBack(const DOM::TextWithTombstones& text, const TextRestoring& restoring) const
{
    const unsigned long first = restoring.getNestedOperations().front().getRange().getBegin();
    return fitRestoring(text, restoring,
                        [&](unsigned long slot) { return findDead(restoring.getNodeAddress(), slot, first); });
}

/// `operation` behind what was done since.
OperationUPtr ActionRunner::pass(OperationUPtr operation, std::size_t doneBefore) const
{
    for (std::size_t index = doneBefore; index < _done.size(); ++index)
    {
        operation = _replica.getTransformer().include(*operation, *_done[index], TieResolveCondition::SecondWins);
    }
    return operation;
}

/// What is typed into a removed paragraph wakes it, and the paragraph goes again as far as nothing that lives needs it.
/// Whoever brings back the rest then finds everything at its place. False if `planned` isn't typed.
bool ActionRunner::carryOutTyping(const Operation& planned, const Operation& part)
{
    const auto* insertion = cast<TextInsertion>(&planned);
    const auto* original = cast<TextInsertion>(&part);
    // The tags of what is typed, and those that part runs for another look, go on from what is there.
    const bool goesOn = _meaning->_isTyping || !_meaning->_looks.empty();
    const auto typings = insertion && original && goesOn ? findTypings(*insertion, *original) : boost::none;
    const auto text = typings ? findText(_replica.getAdapter(), insertion->getNodeAddress()) : std::nullopt;
    if (!text)
    {
        return false;
    }
    const auto moved = moveInFrontOfOthers(*insertion, *typings, _bridge.getTypedApart());
    const TextInsertion& placed = moved ? *moved : *insertion;
    const auto findDeadHere = [&](unsigned long slot, unsigned long seenFrom)
    { return findDead(placed.getNodeAddress(), slot, seenFrom); };
    const auto woken = findRemovedParagraphs(text->getText(), placed, *typings, findDeadHere);
    if (woken)
    {
        execute(cloneOperation(*woken));
    }
    const std::size_t doneBefore = _done.size();
    execute(take(fitInsertion(text->getText(), placed, *typings), placed));
    rememberTypedApart(doneBefore, *typings);
    if (woken)
    {
        // It goes again as far as nothing needs it.
        execute(fit(*pass(makeMarkingOf(*woken), doneBefore)));
    }
    return true;
}

void ActionRunner::rememberTypedApart(std::size_t doneBefore, const std::vector<Typing>& typings)
{
    const auto* happened = _done.size() > doneBefore ? cast<TextInsertion>(_done.back().get()) : nullptr;
    if (happened)
    {
        for (Stretch& stretch : findTypedApart(*happened, typings))
        {
            _typedApart.push_back(std::move(stretch));
        }
    }
}

/// Nothing if what was planned isn't told apart as what was typed.
boost::optional<std::vector<Typing>> ActionRunner::findTypings(const TextInsertion& planned,
                                                               const TextInsertion& original) const
{
    const std::size_t count = planned.getNestedOperations().size();
    if (original.getNestedOperations().size() != count)
    {
        return boost::none;
    }
    std::vector<Typing> typings(count);
    for (std::size_t index = 0; index < count; ++index)
    {
        const unsigned long gap = original.getNestedOperations()[index].getRange().getBegin();
        const auto apart = findAnchorApart(original, index, _meaning->_typedApart);
        const unsigned long slotInFront = apart.value_or(gap - std::min(gap, 1UL));
        Stretch anchor = makeStretch(original.getNodeAddress(), slotInFront, slotInFront);
        if (gap > 0)
        {
            if (!_bridge.followBefore(anchor))
            {
                return boost::none;
            }
            // What it was typed behind stands in front of it, whatever came in between.
            const unsigned long plannedGap = planned.getNestedOperations()[index].getRange().getBegin();
            const unsigned long slot = readStretch(anchor)._firstSlot;
            typings[index]._anchor = slot < plannedGap ? std::optional(slot) : std::nullopt;
        }
        if (_meaning->_isTyping)
        {
            typings[index]._look = _meaning->_typedLook;
        }
    }
    return typings;
}

/// What is known of a dead slot of a text, seen from another one.
boost::optional<DeadElement> ActionRunner::findDead(const OperationNodeAddress& text, unsigned long slot,
                                                    unsigned long seenFrom) const
{
    DeadElementSearch search(text, slot, seenFrom);
    for (auto operation = _done.rbegin(); operation != _done.rend(); ++operation)
    {
        if (!search.pass(**operation))
        {
            return search.getElement();
        }
    }
    _host.forEachBefore([&](const Operation& operation) { return search.pass(operation); });
    return search.getElement();
}

/// Paints what others painted, and what the action means, on the text as it stands; gives what it means behind that. If
/// that fails, nothing is painted.
std::vector<LookSetting> ActionRunner::paintAll()
{
    if (_meaning->_looks.empty() && _bridge.getLooks().empty())
    {
        return {};
    }
    Bridge::Mark before = _bridge.getMark();
    const std::size_t doneBefore = _done.size();
    try
    {
        const Stopwatch stopwatch(_statistics._executingTime);
        paintLooksOfOthers();
        return paintMeaning();
    }
    catch (...)
    {
        refuse(RefusalReason::FitsNoDocument, describeCurrentException());
        restore(doneBefore);
        _bridge.returnTo(std::move(before));
        return {};
    }
}

/// What others painted at the same moment holds on all that has come into it, or was joined with it.
void ActionRunner::paintLooksOfOthers()
{
    for (std::size_t index = 0; index < _bridge.getLooks().size(); ++index)
    {
        const std::vector<LookSetting>& looks = _bridge.getLooks();
        if (!changesStructureOf(readStretch(looks[index]._stretch)._text))
        {
            continue;
        }
        std::vector<LookSetting> standing = {looks[index]};
        for (std::size_t later = index + 1; later < looks.size(); ++later)
        {
            standing = withoutLater(std::move(standing), looks[later]);
        }
        paint(std::move(standing));
    }
}

/// Whether tags or marks of a text came or went.
bool ActionRunner::changesStructureOf(const OperationNodeAddress& text) const
{
    return std::any_of(_done.begin(), _done.end(),
                       [&](const OperationPtr& operation)
                       {
                           const auto* onText = cast<ListMultirangeOperation>(operation.get());
                           return onText && onText->getNodeAddress() == text && movesStructure(*onText);
                       });
}

/// Paints what the action means on the text as it stands, and gives what it means behind that.
std::vector<LookSetting> ActionRunner::paintMeaning()
{
    std::vector<LookSetting> looks;
    for (LookSetting look : _meaning->_looks)
    {
        if (!_bridge.follow(look._stretch))
        {
            continue;
        }
        std::vector<LookSetting> parts;
        parts.push_back(std::move(look));
        if (_meaning->_isUndo)
        {
            for (const LookSetting& later : _bridge.getLooks())
            {
                parts = withoutLater(std::move(parts), later);
            }
        }
        std::move(parts.begin(), parts.end(), std::back_inserter(looks));
    }
    looks = paint(std::move(looks));
    if (!looks.empty())
    {
        _looksOfOthers = _bridge.getLooks();
        _bridge.overrideLooks(looks);
    }
    return looks;
}

/// Gives the looks behind what was done for them.
std::vector<LookSetting> ActionRunner::paint(std::vector<LookSetting> looks)
{
    for (std::size_t index = 0; index < looks.size(); ++index)
    {
        const StretchInText stretch = readStretch(looks[index]._stretch);
        const std::optional<TextInDocument> text = findText(_replica.getAdapter(), stretch._text);
        if (!text)
        {
            continue;
        }
        Operations operations = paintStretch(text->getText(), stretch._text, stretch._firstSlot, stretch._lastSlot,
                                             looks[index]._target, looks[index]._change)
                                    ._operations;
        for (OperationUPtr& operation : operations)
        {
            execute(std::move(operation));
            for (LookSetting& look : looks)
            {
                moveStretch(look._stretch, *_done.back());
            }
            _bridge.appendOwn(_done.back());
        }
    }
    return looks;
}

} // namespace Zem::CollaborationSession
