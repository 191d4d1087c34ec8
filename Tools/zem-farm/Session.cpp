#include "Session.h"

#include "Comparison.h"
#include "Generators.h"
#include "OneLine.h"
#include "StartDocument.h"

#include "Editing/CS_InvalidEditError.h"

#include <algorithm>
#include <array>

namespace ZemFarm
{

using namespace Zem::CollaborationSession;

namespace
{

/// Why less may happen of an action that was legal where it was made: somebody else removed what it is about, or gave
/// a cell what takes no text beside it; or an undo brings back characters whose surroundings went so long ago, or by
/// ways so far apart, that nobody remembers them.
constexpr std::array<RefusalReason, 3> expectedReasons = {RefusalReason::TargetRemoved, RefusalReason::NotTaken,
                                                          RefusalReason::NothingToBringBack};

bool isExpected(RefusalReason reason)
{
    return std::find(expectedReasons.begin(), expectedReasons.end(), reason) != expectedReasons.end();
}

constexpr std::size_t everything = ~std::size_t(0);

/// Fails, if anything is wrong.
void require(const std::string& fault, const char* kind, const std::string& place)
{
    if (!fault.empty())
    {
        throw Failure(kind, place + fault);
    }
}

/// Where a selection may begin or end: at a slot or the end of a text, or at a cell.
Address pickPosition(const Participant& participant, Random& random)
{
    const Places places = findPlaces(participant.getKind(), participant.getDocument(), random);
    const bool isCell = !places._tables.empty() && (places._texts.empty() || random.isOnceIn(4));
    if (isCell)
    {
        const TablePlace& place = random.pickFrom(places._tables);
        Address address = place._address;
        address.appendItems(
            Zem::NodeAddressing::AddressInTable(Zem::RowIndex(random.pick(place._table->getAllRowsCount().get())),
                                                Zem::ColumnIndex(random.pick(place._table->getAllColsCount().get()))));
        return address;
    }
    if (places._texts.empty())
    {
        return makeFixedAddress(Zem::DOMCollaboration::OperationDOMNodeType::DocumentProps);
    }
    const TextPlace* place = pickText(places, random);
    Address address = place->_address;
    address.appendItems(Zem::NodeAddressing::AddressInList(random.pick(FlatText(*place->_text)._slotsCount + 1)));
    return address;
}

} // namespace

Failure::Failure(std::string kind, const std::string& message)
    : std::runtime_error(makeOneLine(message))
    , _kind(std::move(kind))
{
}

Session::Session(const Setup& setup)
    : _setup(setup)
{
    try
    {
        ServerSettings settings;
        settings._checkpointInterval = setup._checkpointInterval;
        _judgedSession = setup._isJudged ? std::make_unique<JudgedSession>(setup) : nullptr;
        _server = std::make_unique<Server>(
            setup._kind, _judgedSession ? _judgedSession->getStartDocument() : makeStartDocument(setup), settings);
        _server->setOnDocumentReplaced([this] { ++_tally._remadeAtServerCount; });
    }
    catch (const std::exception& error)
    {
        throw Failure(error.what(), std::string("the start document failed: ") + error.what());
    }
    _tally._sessionsCount = 1;
}

void Session::apply(const Step& step)
{
    try
    {
        applyUnchecked(step);
    }
    catch (const Failure&)
    {
        throw;
    }
    catch (const Misjudged& error)
    {
        throw Failure("misjudged", "\"" + print(step) + "\" ended in what nobody meant: " + error.what());
    }
    catch (const std::exception& error)
    {
        throw Failure(error.what(), "\"" + print(step) + "\" failed: " + error.what());
    }
}

void Session::applyUnchecked(const Step& step)
{
    switch (step._kind)
    {
    case StepKind::Join:
        join(step);
        return;
    case StepKind::Leave:
        leave(step._client);
        return;
    case StepKind::Bad:
        sendBadOperation(step._number);
        return;
    case StepKind::Hostile:
        sendAnything(step._number);
        return;
    case StepKind::Settle:
        settle();
        return;
    default:
        const auto found = _participants.find(step._client);
        if (found != _participants.end())
        {
            applyTo(*found->second, step);
        }
    }
}

void Session::applyTo(Participant& participant, const Step& step)
{
    switch (step._kind)
    {
    case StepKind::Do:
        make(participant, step);
        return;
    case StepKind::Select:
        select(participant, step._number);
        return;
    case StepKind::Send:
        participant.send();
        return;
    case StepKind::ToServer:
        participant.deliverToServer(step._number);
        return;
    case StepKind::ToClient:
        participant.deliverToClient(step._number);
        return;
    case StepKind::Disconnect:
        if (participant.isConnected())
        {
            participant.disconnect();
        }
        return;
    default:
        if (!participant.isConnected())
        {
            participant.reconnect();
        }
    }
}

void Session::join(const Step& step)
{
    if (_participants.count(step._client) > 0)
    {
        return;
    }
    auto participant = std::make_unique<Participant>(*_server, _setup, step._number != 0, _tally, _judgedSession.get());
    participant->setTakesNotes(_takesNotes);
    _participants.emplace(step._client, std::move(participant));
    ++_tally._joinsCount;
    _tally._lateJoinsCount += _tally._operationsCount > 0 ? 1 : 0;
}

void Session::leave(unsigned long client)
{
    const auto found = _participants.find(client);
    if (found == _participants.end())
    {
        return;
    }
    addClientStatistics(found->second->getClient().getStatistics(), _tally);
    ++_tally._leavesCount;
    _server->leave(found->second->getClient().getID());
    _participants.erase(found);
}

void Session::make(Participant& participant, const Step& step)
{
    const Generator* generator = findGenerator(step._generator);
    if (!generator || !generator->_isFor(_setup._kind) || (_setup._isJudged && !isJudged(*generator)))
    {
        return;
    }
    Random random(step._number);
    try
    {
        generator->_make(participant, random);
    }
    catch (const InvalidEditError&)
    {
        ++_tally._declinedCount;
    }
    const unsigned long count = participant.takeExecutedCount();
    _tally._operationsCount += count;
    _tally._operationsByGenerator[step._generator] += count;
}

void Session::select(Participant& participant, unsigned long seed)
{
    Random random(seed);
    const Address begin = pickPosition(participant, random);
    const bool isCaret = random.isOnceIn(2);
    const Address end = isCaret ? begin : pickPosition(participant, random);
    const bool isOfCells = begin.getItemFromEndAs<Zem::NodeAddressing::AddressInTable>(0) != nullptr;
    Selection::SelectionPosition beginPosition(begin);
    beginPosition.setStickToPrevious(random.isOnceIn(2));
    participant.getClient().setSelection(
        Selection(isOfCells ? Zem::DOMCollaboration::SelectionMode::Cells : Zem::DOMCollaboration::SelectionMode::Text,
                  beginPosition, Selection::SelectionPosition(end)));
    ++_tally._selectionsCount;
}

void Session::sendBadOperation(unsigned long seed)
{
    if (!_badSender)
    {
        _badSender = std::make_unique<BadSender>(*_server);
    }
    const std::string fault = _badSender->send(seed);
    ++_tally._badCount;
    require(fault, "bad operation", "");
}

void Session::sendAnything(unsigned long seed)
{
    if (!_hostileSender)
    {
        _hostileSender = std::make_unique<HostileSender>(*_server, _setup._kind, _tally);
    }
    require(_hostileSender->send(seed), "hostile batch", "");
}

void Session::settle()
{
    ++_tally._roundsCount;
    deliverEverything();
    require(findFault(_server->getDocument()), "unsound", "the document of the server is unsound: ");
    require(findFaultOfJson(_server->getDocument()), "JSON differs", "the document of the server: ");
    for (const auto& [number, participant] : _participants)
    {
        compare(number, *participant);
    }
    judge();
    checkRefusals();
    checkRemadeDocuments();
}

void Session::judge()
{
    if (_judgedSession)
    {
        _judgedSession->compare(_server->getDocument());
        ++_tally._judgedCount;
    }
}

/// A document is made again for an operation that fails, and of all that are sent only those fail that are bad on
/// purpose, or a stranger's. Each of them fails at the server, and comes to clients as nothing.
void Session::checkRemadeDocuments() const
{
    // An action of a stranger has several parts that may fail.
    const unsigned long allowedCount =
        _tally._badCount + _tally._hostileActionsCount * Zem::CollaborationSession::AdmissionLimits()._failures;
    const bool isExplained = _tally._remadeByClientsCount == 0 && _tally._remadeAtServerCount <= allowedCount;
    if (!isExplained)
    {
        throw Failure("made again", "documents were made again for nothing: at the server " +
                                        std::to_string(_tally._remadeAtServerCount) + " times for " +
                                        std::to_string(_tally._badCount) + " bad operations, by clients " +
                                        std::to_string(_tally._remadeByClientsCount) + " times");
    }
}

void Session::checkRefusals() const
{
    for (const RefusalCounts& counts : {_tally._refused, _tally._rejected})
    {
        for (const auto& [reason, refused] : counts)
        {
            if (!isExpected(reason))
            {
                throw Failure("refused: " + refused._sentence,
                              "an action that was legal where it was made was refused: " +
                                  std::string(describe(reason)) + ": " + refused._sentence);
            }
        }
    }
    for (const auto& [number, participant] : _participants)
    {
        if (!participant->hasLearntRefusals())
        {
            throw Failure("refusals untold",
                          "client " + std::to_string(number) + " has kept from its user what the server refused");
        }
    }
}

void Session::deliverEverything()
{
    for (const auto& [number, participant] : _participants)
    {
        if (!participant->isConnected())
        {
            participant->reconnect();
        }
    }
    constexpr unsigned int maxTurnsCount = 100;
    for (unsigned int turn = 0; !isQuiet(); ++turn)
    {
        if (turn == maxTurnsCount)
        {
            throw Failure("never quiet", "there is always more to send");
        }
        for (const auto& [number, participant] : _participants)
        {
            participant->send();
            participant->deliverToServer(everything);
            participant->deliverToClient(everything);
        }
    }
}

bool Session::isQuiet() const
{
    for (const auto& [number, participant] : _participants)
    {
        if (participant->getBatchesCount() > 0 || participant->getMessagesCount() > 0 ||
            !participant->getClient().isQuiet())
        {
            return false;
        }
    }
    return true;
}

void Session::compare(unsigned long number, Participant& participant) const
{
    const Client& client = participant.getClient();
    const std::string name = "client " + std::to_string(number);
    if (client.getRevision() != _server->getRevision())
    {
        throw Failure("revisions differ", name + " has " + std::to_string(client.getRevision()) +
                                              " entries of the history in place of " +
                                              std::to_string(_server->getRevision()));
    }
    require(findDifference(_setup._kind, _server->getDocument(), client.getDocument()), "documents differ",
            name + " differs from the server: ");
    require(findFault(client.getDocument()), "unsound", "the document of " + name + " is unsound: ");
    compareSelections(name, client);
    participant.checkIndex();
}

void Session::compareSelections(const std::string& name, const Client& client) const
{
    Selections others = _server->getSelections();
    Selections expectedOwn;
    expectedOwn.insert(others.extract(client.getID()));
    Selections own;
    if (const Selection* selection = client.findOwnSelection())
    {
        own.emplace(client.getID(), *selection);
    }
    require(findDifference(others, client.getSelections()), "selections differ", name + " differs from the server: ");
    require(findDifference(expectedOwn, own), "own selections differ",
            name + " differs from what the server has of it: ");
}

void Session::addClientStatistics(const Statistics& statistics, Tally& tally)
{
    tally._replayedCount += statistics._replayedCount;
    tally._rebasedCount += statistics._rebasedCount;
    tally._executedCount += statistics._executedCount;
    tally._besidePendingCount += statistics._besidePendingCount;
}

std::string Session::takeNotes()
{
    std::string notes;
    for (const auto& [number, participant] : _participants)
    {
        const std::string own = participant->takeNotes();
        notes += own.empty() ? "" : "  client " + std::to_string(number) + ":" + own;
    }
    return notes;
}

Tally Session::getTally() const
{
    Tally tally = _tally;
    tally._replayedCount += _server->getStatistics()._replayedCount;
    tally._changedCount = _server->getStatistics()._changedCount;
    tally._shadowedCount = _server->getStatistics()._shadowedCount;
    for (const auto& [number, participant] : _participants)
    {
        addClientStatistics(participant->getClient().getStatistics(), tally);
    }
    return tally;
}

} // namespace ZemFarm
