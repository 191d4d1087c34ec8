#include "HostileSender.h"

#include "Describe.h"
#include "HostileOperations.h"
#include "Random.h"
#include "Values.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"
#include "Sharing/CS_InvalidOperationError.h"

#include <limits>
#include <utility>
#include <variant>
#include <vector>

namespace ZemFarm
{

using namespace Zem::CollaborationSession;
using Zem::DOMCollaboration::PropertyId;

namespace
{

LookChange makeLookChange(bool isOfRuns, Random& random)
{
    const PropertyChange change =
        isOfRuns ? changeRun(random, Zem::DOM::TextRun()) : changeParagraph(random, Zem::DOM::Paragraph());
    try
    {
        return LookChange::setProperty(change._property, change._newValue);
    }
    catch (const Zem::BaseRuntimeError&)
    {
        return LookChange::setField(&Zem::DOM::RunProps::_fontSize,
                                    random.isOnceIn(2) ? 12 : std::numeric_limits<float>::infinity());
    }
}

} // namespace

HostileSender::HostileSender(Server& server, DocumentKind kind, Tally& tally)
    : _server(server)
    , _kind(kind)
    , _tally(tally)
{
    join();
}

void HostileSender::join()
{
    _inbox = std::make_shared<std::deque<ServerMessage>>();
    auto [id, snapshot] = _server.join([inbox = _inbox](const ServerMessage& message) { inbox->push_back(message); });
    _id = id;
    _revision = snapshot._revision + snapshot._entries.size();
    _lastNumber = 0;
}

std::string HostileSender::send(std::uint64_t seed)
{
    Random random(seed);
    receive(random.isOnceIn(4) ? random.pick(_inbox->size() + 1) : _inbox->size());
    HostileOperations operations(random, _kind, _server.getDocument(), _id);
    const ClientBatch batch = makeBatch(operations, random);
    const Zem::DOM::Document before = _server.getDocument();
    const Revision revision = _server.getRevision();
    ++_tally._hostileBatchesCount;
    if (isTakenIn(batch))
    {
        return findFaultOfAnswer(batch, revision);
    }
    ++_tally._turnedAwayCount;
    const bool isAsBefore = _server.getRevision() == revision && _server.getDocument() == before;
    return isAsBefore ? "" : "a batch that was turned away has changed something";
}

ClientBatch HostileSender::makeBatch(HostileOperations& operations, Random& random)
{
    ClientBatch batch;
    batch._base = random.isOnceIn(10) ? operations.makeBase(_revision) : _revision;
    batch._firstNumber = random.isOnceIn(20) ? operations.makeBase(_lastNumber) : _lastNumber + 1;
    const unsigned long mostActions = random.isOnceIn(4) ? 6 : 1;
    for (unsigned long count = random.isOnceIn(10) ? 0 : 1 + random.pick(mostActions); count > 0; --count)
    {
        batch._actions.push_back({operations.makeOperation(), makeMeaning(operations, random)});
    }
    if (random.isOnceIn(4))
    {
        batch._selection = std::make_shared<const Selection>(operations.makeSelection());
    }
    return batch;
}

std::shared_ptr<const Meaning> HostileSender::makeMeaning(HostileOperations& operations, Random& random) const
{
    if (random.isOnceIn(2))
    {
        return nullptr;
    }
    auto meaning = std::make_shared<Meaning>();
    meaning->_isAllOrNothing = random.isOnceIn(4);
    meaning->_isUndo = random.isOnceIn(3);
    meaning->_isTyping = random.isOnceIn(3);
    for (unsigned long count = random.isOnceIn(3) ? random.pick(3) : 0; count > 0; --count)
    {
        Selection stretch = operations.makeSelection();
        if (random.isOnceIn(2))
        {
            stretch.getSelectionEnd() = stretch.getSelectionBegin();
        }
        const bool isOfRuns = random.isOnceIn(2);
        const LookTarget target = isOfRuns ? LookTarget::Runs : LookTarget::Paragraphs;
        const auto anyTarget = static_cast<LookTarget>(random.pick(256));
        meaning->_looks.push_back(
            {std::move(stretch), random.isOnceIn(20) ? anyTarget : target, makeLookChange(isOfRuns, random)});
    }
    return meaning;
}

/// Whether the server takes in a batch, as one that a client can have sent.
bool HostileSender::isTakenIn(const ClientBatch& batch)
{
    try
    {
        _server.receive(_id, batch);
        return true;
    }
    catch (const InvalidOperationError&)
    {
        return false;
    }
    catch (const InvalidBatchError&)
    {
        return false;
    }
}

/// Each action is one entry, unless the batch came before.
std::string HostileSender::findFaultOfAnswer(const ClientBatch& batch, Revision before)
{
    const bool cameBefore = batch._firstNumber <= _lastNumber;
    const std::size_t count = cameBefore ? 0 : batch._actions.size();
    if (_server.getRevision() != before + count)
    {
        return "the server answered " + std::to_string(count) + " actions with " +
               std::to_string(_server.getRevision() - before) + " entries";
    }
    _lastNumber += count;
    _tally._hostileActionsCount += count;
    // Those at the end of what came are the answer.
    std::size_t left = count;
    for (auto message = _inbox->rbegin(); message != _inbox->rend() && left > 0; ++message)
    {
        if (const auto* happened = std::get_if<ActionHappened>(&*message))
        {
            _tally._hostileRefusedCount += happened->_entry->_refusal ? 1 : 0;
            --left;
        }
    }
    return left == 0 ? "" : "the server didn't tell a stranger what became of its actions";
}

void HostileSender::receive(std::size_t count)
{
    for (; count > 0; --count)
    {
        if (const auto* happened = std::get_if<ActionHappened>(&_inbox->front()))
        {
            _revision = happened->_revision;
        }
        _inbox->pop_front();
    }
}

} // namespace ZemFarm
