#include "Session.h"

#include "Comparison.h"
#include "Generators.h"
#include "StartDocument.h"

#include "CS_InvalidEditError.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace ZemFarm
{

using namespace Zem::CollaborationSession;

namespace
{

/// Why operations that were legal where they were made may be refused: settings of one section are never brought past
/// each other, and what was made behind one that is refused for that goes with it.
constexpr std::array<std::string_view, 3> expectedReasons = {
    "Same node transformation should never happen for this node type.",
    "It was made behind one that can't be placed any more.", "It was made behind one that fits no document."};

bool isExpected(const std::string& reason)
{
    return std::find(expectedReasons.begin(), expectedReasons.end(), reason) != expectedReasons.end();
}

constexpr std::size_t everything = ~std::size_t(0);

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

Session::Session(const Setup& setup)
    : _setup(setup)
    , _server(setup._kind, makeStartDocument(setup), setup._checkpointInterval)
{
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
    catch (const std::exception& error)
    {
        throw Failure(error.what(), "\"" + print(step) + "\" failed: " + error.what());
    }
}

void Session::applyUnchecked(const Step& step)
{
    switch (step._action)
    {
    case Action::Join:
        join(step);
        return;
    case Action::Leave:
        leave(step._client);
        return;
    case Action::Bad:
        sendBadOperation(step._number);
        return;
    case Action::Settle:
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
    switch (step._action)
    {
    case Action::Do:
        make(participant, step);
        return;
    case Action::Select:
        select(participant, step._number);
        return;
    case Action::Send:
        participant.send();
        return;
    case Action::ToServer:
        participant.deliverToServer(step._number);
        return;
    case Action::ToClient:
        participant.deliverToClient(step._number);
        return;
    case Action::Disconnect:
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
    auto participant = std::make_unique<Participant>(_server, _setup, step._number != 0, _tally);
    participant->setTakesNotes(_takesNotes);
    _participants.emplace(step._client, std::move(participant));
}

void Session::leave(unsigned long client)
{
    const auto found = _participants.find(client);
    if (found == _participants.end())
    {
        return;
    }
    addClientStatistics(found->second->getClient().getStatistics());
    _server.leave(found->second->getClient().getID());
    _participants.erase(found);
}

void Session::make(Participant& participant, const Step& step)
{
    const Generator* generator = findGenerator(step._generator);
    if (!generator || !generator->_isFor(_setup._kind))
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
}

void Session::sendBadOperation(unsigned long seed)
{
    if (!_badSender)
    {
        _badSender = std::make_unique<BadSender>(_server);
    }
    const std::string fault = _badSender->send(seed);
    ++_tally._badCount;
    if (!fault.empty())
    {
        throw Failure("bad operation", fault);
    }
}

void Session::settle()
{
    ++_tally._roundsCount;
    deliverEverything();
    const std::string fault = findFault(_server.getDocument());
    if (!fault.empty())
    {
        throw Failure("unsound", "the document of the server is unsound: " + fault);
    }
    for (const auto& [number, participant] : _participants)
    {
        compare(number, *participant);
    }
    for (const auto& [reason, count] : _tally._refused)
    {
        if (!isExpected(reason))
        {
            throw Failure("refused: " + reason, "an operation that was legal where it was made was refused: " + reason);
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

void Session::compare(unsigned long number, Participant& participant)
{
    Client& client = participant.getClient();
    const std::string name = "client " + std::to_string(number);
    const std::string difference = findDifference(_setup._kind, _server.getDocument(), client.getDocument());
    if (!difference.empty())
    {
        throw Failure("documents differ", name + " differs from the server: " + difference);
    }
    const std::string fault = findFault(client.getDocument());
    if (!fault.empty())
    {
        throw Failure("unsound", "the document of " + name + " is unsound: " + fault);
    }
    const std::string selection = findDifference(_server.getSelections(), client.getSelections(), client.getID());
    if (!selection.empty())
    {
        throw Failure("selections differ", name + " differs from the server: " + selection);
    }
    participant.checkIndex();
}

void Session::addClientStatistics(const Statistics& statistics)
{
    _tally._rebasedCount += statistics._rebasedCount;
    _tally._executedCount += statistics._executedCount;
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
    tally._changedCount = _server.getStatistics()._changedCount;
    tally._shadowedCount = _server.getStatistics()._shadowedCount;
    tally._rejectedCount = _server.getStatistics()._rejectedCount - _tally._badCount;
    for (const auto& [number, participant] : _participants)
    {
        const Statistics& statistics = participant->getClient().getStatistics();
        tally._rebasedCount += statistics._rebasedCount;
        tally._executedCount += statistics._executedCount;
    }
    return tally;
}

std::unique_ptr<Failure> findFailure(const Script& script)
{
    try
    {
        Session session(script._setup);
        for (const Step& step : script._steps)
        {
            session.apply(step);
        }
        session.apply(Step());
        return nullptr;
    }
    catch (const Failure& failure)
    {
        return std::make_unique<Failure>(failure);
    }
}

namespace
{

/// Behind a step, to the end of its line.
std::string makeComment(const std::string& notes)
{
    return notes.empty() ? "\n" : "  #" + notes + '\n';
}

} // namespace

std::string annotate(const Script& script)
{
    std::string text = print(script._setup);
    Session session(script._setup);
    session.setTakesNotes(true);
    try
    {
        for (const Step& step : script._steps)
        {
            text += print(step);
            session.apply(step);
            text += makeComment(session.takeNotes());
            if (step._action == Action::Settle)
            {
                text += "# " + print(session.getDocument().getTextWithTombstones()) + '\n';
            }
        }
        text += "settle";
        session.apply(Step());
        text += "\n# all documents agreed\n";
    }
    catch (const Failure& failure)
    {
        text += makeComment(session.takeNotes()) + "# " + failure.what() + '\n';
    }
    return text;
}

} // namespace ZemFarm
