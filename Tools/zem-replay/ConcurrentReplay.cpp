#include "ConcurrentReplay.h"

#include "PlainText.h"
#include "Progress.h"

#include "DOM_CheckInvariants.h"
#include "Editing/CS_Characters.h"
#include "Editing/CS_InvalidEditError.h"
#include "Editing/CS_TextEditor.h"
#include "Sharing/CS_Client.h"
#include "Sharing/CS_Server.h"

#include <deque>
#include <exception>

namespace ZemReplay
{

using namespace Zem;
using namespace Zem::CollaborationSession;

namespace
{

/// A document with one text, made by operations as every document is.
DOM::Document makeDocument(const std::string& text)
{
    Replica replica(DocumentKind::Text, DOM::Document());
    TextEditor(replica.getAdapter(), replica.getExecutor(), replica.getNotifications(),
               TextEditor::getMainTextAddress())
        .replace(0, 0, text);
    return replica.getDocument();
}

/// The text of a history whose users edit different lines: the even ones of the first's text, the odd ones of the
/// second's.
std::string mixLines(const std::string& even, const std::string& odd)
{
    std::string mixed;
    std::size_t evenBegin = 0;
    std::size_t oddBegin = 0;
    for (bool isEven = true;; isEven = !isEven)
    {
        const std::size_t evenEnd = even.find('\n', evenBegin);
        const std::size_t oddEnd = odd.find('\n', oddBegin);
        mixed += isEven ? even.substr(evenBegin, evenEnd - evenBegin) : odd.substr(oddBegin, oddEnd - oddBegin);
        if (evenEnd == std::string::npos || oddEnd == std::string::npos)
        {
            return mixed;
        }
        mixed += '\n';
        evenBegin = evenEnd + 1;
        oddBegin = oddEnd + 1;
    }
}

/// One user, with a client and what is under way to it.
class Agent
{
public:
    Agent(Server& server, bool composesTyping)
        : _server(server)
        , _client(join())
        , _editor(*_client, TextEditor::getMainTextAddress())
    {
        _client->setComposesTyping(composesTyping);
    }

    Agent(const Agent&) = delete;
    Agent& operator=(const Agent&) = delete;

    Client& getClient()
    {
        return *_client;
    }

    TextEditor& getEditor()
    {
        return _editor;
    }

    /// How many actions of others have come in.
    unsigned long getForeignCount() const
    {
        return _foreignCount;
    }

    /// Hands what there is to the server.
    void send()
    {
        if (const auto batch = _client->takeBatch())
        {
            _server.receive(_client->getID(), *batch);
        }
    }

    /// Takes in what has come, up to so many actions of others in total; says whether there was anything.
    bool receive(unsigned long foreignCount)
    {
        std::vector<ServerMessage> messages;
        while (!_inbox.empty() && (_foreignCount < foreignCount || !isForeign(_inbox.front())))
        {
            _foreignCount += isForeign(_inbox.front()) ? 1 : 0;
            messages.push_back(std::move(_inbox.front()));
            _inbox.pop_front();
        }
        if (messages.empty())
        {
            return false;
        }
        _client->receive(messages);
        return true;
    }

private:
    bool isForeign(const ServerMessage& message) const
    {
        const auto* happened = std::get_if<ActionHappened>(&message);
        return happened && happened->_entry->_author != _client->getID();
    }

    std::unique_ptr<Client> join()
    {
        auto [id, snapshot] = _server.join([this](const ServerMessage& message) { _inbox.push_back(message); });
        return std::make_unique<Client>(id, snapshot);
    }

    Server& _server;
    std::deque<ServerMessage> _inbox;
    std::unique_ptr<Client> _client;
    TextEditor _editor;
    unsigned long _foreignCount = 0;
};

/// A server and the users of one history.
class ConcurrentPlayer
{
public:
    ConcurrentPlayer(const Trace& trace, const Options& options)
        : _trace(trace)
        , _options(options)
        , _known(countKnown(trace))
        , _server(DocumentKind::Text, makeDocument(trace._startContent))
    {
        for (unsigned long agent = 0; agent < trace._agentsCount; ++agent)
        {
            // What others knew of a concurrent history is told by the transaction.
            _agents.push_back(std::make_unique<Agent>(_server, trace._kind != TraceKind::Concurrent));
        }
        for (unsigned long number = 0; number < trace._transactions.size(); ++number)
        {
            _transactions[trace._transactions[number]._agent].push_back(number);
        }
    }

    void play(ConcurrentResult& result)
    {
        result._times.push_back(measure([&] { playAll(); }));
        checkReplicas("at the end");
        compareText();
        describe(result);
    }

private:
    static constexpr unsigned long everything = ~0UL;

    /// Nothing can get stuck: of all transactions that aren't made, the first knows only what is made, and its author
    /// can take that in, since he has made all that he made without it.
    void playAll()
    {
        Progress progress(_trace._name, _trace._transactions.size());
        for (bool isBusy = true; isBusy;)
        {
            isBusy = false;
            for (unsigned long agent = 0; agent < _agents.size(); ++agent)
            {
                isBusy |= makeTransactions(agent, progress);
                isBusy |= _agents[agent]->receive(countWanted(agent));
                isBusy |= _agents[agent]->getClient().getPendingCount() > 0;
                _agents[agent]->send();
            }
        }
    }

    /// Makes what the user made with what has come in by now.
    bool makeTransactions(unsigned long agent, Progress& progress)
    {
        unsigned long& made = _madeCounts[agent];
        const unsigned long before = made;
        while (made < _transactions[agent].size() && countWanted(agent) == _agents[agent]->getForeignCount())
        {
            makeTransaction(agent, _transactions[agent][made]);
            ++made;
            progress.advance();
            checkNowAndThen();
        }
        return made > before;
    }

    /// How many actions of the other user are to be known for the next transaction.
    unsigned long countWanted(unsigned long agent) const
    {
        if (_madeCounts[agent] == _transactions[agent].size())
        {
            return everything;
        }
        const unsigned long other = 1 - agent;
        const unsigned long known = _known[_transactions[agent][_madeCounts[agent]]][other];
        return known == 0 ? 0 : _actionsEnds[other].size() < known ? everything : _actionsEnds[other][known - 1];
    }

    void makeTransaction(unsigned long agent, unsigned long number)
    {
        const Transaction& transaction = _trace._transactions[number];
        unsigned long actionsCount = _actionsEnds[agent].empty() ? 0 : _actionsEnds[agent].back();
        for (unsigned long index = transaction._patchesBegin; index < transaction._patchesEnd; ++index)
        {
            const Patch& patch = _trace._patches[index];
            try
            {
                const Operations operations = _agents[agent]->getEditor().replace(
                    patch._position, patch._position + patch._deleteCount, _trace.getText(patch));
                _operationsCount += operations.size();
                actionsCount += operations.empty() ? 0 : 1;
            }
            catch (const InvalidEditError& error)
            {
                throw BadTrace(_trace._name + ": " + getName(_trace, patch) + ": " + error.what());
            }
            catch (const std::exception& error)
            {
                fail("at " + getName(_trace, patch), error.what());
            }
        }
        _actionsEnds[agent].push_back(actionsCount);
    }

    void checkNowAndThen()
    {
        if (_options._checkInterval == 0 || ++_sinceCheck < _options._checkInterval)
        {
            return;
        }
        _sinceCheck = 0;
        for (const auto& agent : _agents)
        {
            checkDocument("on the way", agent->getClient().getDocument());
            agent->getEditor().getIndex().checkInvariants();
        }
        checkDocument("on the way", _server.getDocument());
    }

    void checkDocument(const std::string& where, const DOM::Document& document) const
    {
        const std::vector<std::string> faults = checkInvariants(document);
        if (!faults.empty())
        {
            fail(where, faults.front());
        }
    }

    void checkReplicas(const std::string& where)
    {
        checkDocument(where, _server.getDocument());
        for (const auto& agent : _agents)
        {
            if (!(agent->getClient().getDocument() == _server.getDocument()))
            {
                fail(where, "the replicas differ");
            }
            const auto refusals = agent->getClient().takeRefusals();
            if (!refusals.empty())
            {
                fail(where, "an action was refused: " + refusals.front()._refusal._sentence);
            }
            agent->getEditor().getIndex().checkInvariants();
        }
    }

    void compareText() const
    {
        if (_trace._kind == TraceKind::Hot)
        {
            return;
        }
        const std::string expected =
            _trace._kind == TraceKind::Spread ? mixLines(playAlone(0), playAlone(1)) : _trace._endContent;
        const std::string actual = getCharacters(_server.getDocument().getTextWithTombstones());
        if (actual != expected)
        {
            fail("at the end", "the text isn't what it is to be: " + describeDifference(actual, expected));
        }
    }

    /// What the text would be if only one user had been there.
    std::string playAlone(unsigned long agent) const
    {
        PlainText text;
        text.replace(0, 0, _trace._startContent);
        for (const Patch& patch : _trace._patches)
        {
            if (_trace._transactions[patch._transaction]._agent == agent)
            {
                text.replace(patch._position, patch._deleteCount, _trace.getText(patch));
            }
        }
        return text.getUtf8();
    }

    [[noreturn]] void fail(const std::string& where, const std::string& what) const
    {
        throw FailedComparison(_trace._name + ": " + where + ": " + what);
    }

    void describe(ConcurrentResult& result) const
    {
        result._replicasCount = _agents.size() + 1;
        result._operationsCount = _operationsCount;
        result._work = _server.getStatistics();
        for (const auto& agent : _agents)
        {
            const Statistics& statistics = agent->getClient().getStatistics();
            result._work._rebasedCount += statistics._rebasedCount;
            result._work._changedCount += statistics._changedCount;
            result._work._transformingTime += statistics._transformingTime;
            result._work._reversingTime += statistics._reversingTime;
            result._work._executingTime += statistics._executingTime;
        }
        const DOM::TextWithTombstones& text = _server.getDocument().getTextWithTombstones();
        result._charactersCount = countCharacters(getCharacters(text));
        result._tombstonesCount = text.getTombstones().getTombstonesCount();
    }

    const Trace& _trace;
    const Options& _options;
    std::vector<KnownCounts> _known;
    Server _server;
    std::vector<std::unique_ptr<Agent>> _agents;
    /// Of each user: the numbers of his transactions, how many of them are made, and how many actions he had made
    /// behind each. What replaces nothing by nothing is none.
    std::array<std::vector<unsigned long>, maximalAgentsCount> _transactions;
    std::array<unsigned long, maximalAgentsCount> _madeCounts{};
    std::array<std::vector<unsigned long>, maximalAgentsCount> _actionsEnds;
    unsigned long _operationsCount = 0;
    unsigned long _sinceCheck = 0;
};

} // namespace

ConcurrentResult replayConcurrently(const Trace& trace, const Options& options)
{
    ConcurrentResult result;
    result._name = trace._name;
    for (unsigned long round = 0; round < options._repeatCount; ++round)
    {
        ConcurrentPlayer(trace, options).play(result);
    }
    return result;
}

} // namespace ZemReplay
