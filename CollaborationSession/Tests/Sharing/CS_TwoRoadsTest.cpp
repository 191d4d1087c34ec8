// Whether a client takes its pending operations back or lets others' run beside them makes no difference to anybody.

#include "Editing/CS_InvalidEditError.h"
#include "Sharing/CS_NodeOperations.h"

#include "CE_OperationEquality.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;
using namespace NodeOperations;

/// The same random session twice: the clients of the one never take pending operations back without need, those of the
/// other always do.
class TwoRoads
{
public:
    TwoRoads(unsigned long seed, bool composesTyping)
        : _random(seed)
        , _composesTyping(composesTyping)
    {
        for (std::size_t index = 0; index < _beside.size(); ++index)
        {
            _beside[index].getClient().setComposesTyping(composesTyping);
            _takenBack[index].getClient().setComposesTyping(composesTyping);
            _takenBack[index].getClient().setAlwaysTakesBack(true);
        }
    }

    void run(unsigned long stepsCount)
    {
        for (unsigned long step = 0; step < stepsCount && !testing::Test::HasFailure(); ++step)
        {
            SCOPED_TRACE("step " + std::to_string(step));
            const std::size_t who = pick(_beside.size());
            doOneThing(who);
            expectEqual(who);
        }
        both([](ManyNodesSession& session) { session.settle(); });
        for (std::size_t who = 0; who < _beside.size(); ++who)
        {
            expectEqual(who);
            ASSERT_EQ(_beside[who].getJson(), _takenBack[who].getJson());
        }
        ASSERT_EQ(_takenBack[0].getClient().getStatistics()._besidePendingCount, 0u);
    }

    unsigned long countBeside()
    {
        unsigned long count = 0;
        for (std::size_t who = 0; who < _beside.size(); ++who)
        {
            count += _beside[who].getClient().getStatistics()._besidePendingCount;
        }
        return count;
    }

private:
    unsigned long pick(unsigned long count)
    {
        return std::uniform_int_distribution<unsigned long>(0, count - 1)(_random);
    }

    template<class Do>
    void both(const Do& doIt)
    {
        doIt(_beside);
        doIt(_takenBack);
    }

    /// Composed, the two send different numbers of operations, but they send at the same times.
    void doOneThing(std::size_t who)
    {
        switch (pick(10))
        {
        case 0:
            send(who);
            break;
        case 1:
        case 2:
        {
            const std::size_t count = _composesTyping ? ~std::size_t(0) : pick(4);
            both([&](ManyNodesSession& session) { session[who].receive(count); });
            break;
        }
        case 3:
            undo(who);
            break;
        case 4:
            putCaret(who);
            break;
        case 5:
            execute(who);
            break;
        default:
            // Nothing runs beside an edit of the main text, in which all the others lie.
            pick(8) == 0 ? editMainText(who) : editText(who, pickText());
        }
    }

    void send(std::size_t who)
    {
        const auto batch = _beside[who].getClient().takeBatch();
        const auto other = _takenBack[who].getClient().takeBatch();
        ASSERT_EQ(batch.has_value(), other.has_value());
        if (!batch)
        {
            return;
        }
        if (!_composesTyping)
        {
            ASSERT_EQ(batch->_actions.size(), other->_actions.size());
            for (std::size_t index = 0; index < batch->_actions.size(); ++index)
            {
                ASSERT_TRUE(areDeeplyEqual(*batch->_actions[index]._operation, *other->_actions[index]._operation));
            }
        }
        _beside.getServer().receive(who + 1, *batch);
        _takenBack.getServer().receive(who + 1, *other);
    }

    OperationNodeAddress pickText()
    {
        switch (pick(4))
        {
        case 0:
            return getCellText(0, 0);
        case 1:
            return getCellText(0, 1);
        case 2:
            return getCellText(1, 0);
        default:
            return getShapeText();
        }
    }

    /// Neither the table nor the shape goes, but seldom.
    void editMainText(std::size_t who)
    {
        const unsigned long firstCharacter = pick(20) == 0 ? 0 : 2;
        edit(who, getMainText(), firstCharacter);
    }

    void editText(std::size_t who, const OperationNodeAddress& text)
    {
        edit(who, text, 0);
    }

    void edit(std::size_t who, const OperationNodeAddress& text, unsigned long firstCharacter)
    {
        const unsigned long begin = pick(8);
        const unsigned long length = pick(3) * pick(2);
        static constexpr const char* texts[] = {"", "x", "yz", "\n", "p\nq"};
        const char* const typed = texts[pick(std::size(texts))];
        both(
            [&](ManyNodesSession& session)
            {
                try
                {
                    TextEditor editor(session[who].getClient(), text);
                    const unsigned long count = editor.getIndex().getCharactersCount();
                    const unsigned long first = std::min(count, firstCharacter + begin);
                    editor.replace(first, std::min(count, first + length), typed);
                }
                catch (const InvalidEditError&)
                {
                    // The text is gone, or doesn't take the edit.
                }
            });
        ASSERT_EQ(_beside[who].getClient().getLastAction(), _takenBack[who].getClient().getLastAction());
    }

    /// What no text takes; it may fail, on both roads then.
    void execute(std::size_t who)
    {
        const auto operation = [&]() -> OperationUPtr
        {
            switch (pick(4))
            {
            case 0:
                return setTimeZone(static_cast<short>(60 * pick(3)));
            case 1:
                return setTracking(pick(2) == 0, pick(2) == 0);
            case 2:
                return insertScript(std::string(1, static_cast<char>('a' + pick(3))), "text");
            default:
                return setComments({UUID()});
            }
        }();
        std::vector<bool> haveFailed;
        both(
            [&](ManyNodesSession& session)
            {
                const OperationUPtr copy = cloneOperation(*operation);
                try
                {
                    session[who].execute(*copy);
                    haveFailed.push_back(false);
                }
                catch (const std::exception&)
                {
                    haveFailed.push_back(true);
                }
            });
        ASSERT_EQ(haveFailed[0], haveFailed[1]);
    }

    /// Composed, an action may be known by its own id on one road only.
    void undo(std::size_t who)
    {
        const ActionID last = _beside[who].getClient().getLastAction();
        if (last > 0)
        {
            const ActionID action = 1 + pick(last);
            const bool isUndone = _beside[who].getClient().undo(action);
            ASSERT_EQ(isUndone, _takenBack[who].getClient().undo(action));
        }
    }

    void putCaret(std::size_t who)
    {
        OperationNodeAddress address = pickText();
        address.appendItems(NodeAddressing::AddressInList(pick(3)));
        const Selection::SelectionPosition position(address);
        both(
            [&](ManyNodesSession& session) {
                session[who].getClient().setSelection(
                    Selection(DOMCollaboration::SelectionMode::Text, position, position));
            });
    }

    void expectEqual(std::size_t who)
    {
        const Client& client = _beside[who].getClient();
        const Client& other = _takenBack[who].getClient();
        ASSERT_TRUE(client.getDocument() == other.getDocument());
        ASSERT_TRUE(client.getSelections() == other.getSelections());
        ASSERT_EQ(client.findOwnSelection() == nullptr, other.findOwnSelection() == nullptr);
        ASSERT_TRUE(!client.findOwnSelection() || *client.findOwnSelection() == *other.findOwnSelection());
        if (!_composesTyping)
        {
            ASSERT_EQ(client.getPendingCount(), other.getPendingCount());
            ASSERT_EQ(client.getRevision(), other.getRevision());
        }
    }

    std::mt19937_64 _random;
    bool _composesTyping;
    ManyNodesSession _beside{3, {16}};
    ManyNodesSession _takenBack{3, {16}};
};

void runSeeds(unsigned long seedsCount, bool composesTyping)
{
    unsigned long besideCount = 0;
    for (unsigned long seed = 1; seed <= seedsCount && !testing::Test::HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TwoRoads roads(seed, composesTyping);
        roads.run(240);
        besideCount += roads.countBeside();
    }
    EXPECT_GT(besideCount, 2 * seedsCount);
}

TEST(TwoRoads, RandomSessionsGoAsIfAllWereTakenBack)
{
    runSeeds(40, false);
}

TEST(TwoRoads, RandomSessionsWithComposedTypingGoAsIfAllWereTakenBack)
{
    runSeeds(40, true);
}

} // namespace

} // namespace Zem::CollaborationSession
