// A key of a map is removed and inserted again with another value, or inserted by two sites at once, while others edit
// below it.

#include "OperationNotation.h"
#include "TreeExhaustive.h"
#include "TreeReplica.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

/// One site inserts the key and edits below it.
OperationUPtr insertKeyAndText(int name, unsigned long gap)
{
    std::vector<OperationUPtr> parts;
    parts.push_back(insertKey("c", makeElementWithText(name)));
    parts.push_back(insertText(mapElementAddress("c"), gap, name + 1, static_cast<Operation::Id>(name)));
    return std::make_unique<CompositeOperation>(std::move(parts));
}

/// One operation below a key, which holds a value with a text of one slot.
std::vector<OperationUPtr> makeOperationsBelow(const std::string& key, int name)
{
    const OperationNodeAddress element = mapElementAddress(key);
    std::vector<OperationUPtr> operations;
    operations.push_back(setWhole(element, 0, name, static_cast<Operation::Id>(name)));
    operations.push_back(insertText(element, 0, name + 1, static_cast<Operation::Id>(name + 1)));
    operations.push_back(insertText(element, 1, name + 2, static_cast<Operation::Id>(name + 2)));
    operations.push_back(markText(element, 0));
    operations.push_back(insertText(textElementAddress(element, 0), 0, name + 3, static_cast<Operation::Id>(name + 3)));
    return operations;
}

/// What one site does: an operation below the key as it is; or it removes the key, inserts it again with another value
/// if it likes, and does an operation below that; or the same with a key that the map doesn't hold.
std::vector<OperationUPtr> makeSides(int name)
{
    std::vector<OperationUPtr> sides = makeOperationsBelow("a", name);
    sides.push_back(removeKey("a"));
    const auto addSides = [&](const std::string& key, bool isThere)
    {
        for (OperationUPtr& below : makeOperationsBelow(key, name + 10))
        {
            std::vector<OperationUPtr> parts;
            if (isThere)
            {
                parts.push_back(removeKey(key));
            }
            parts.push_back(insertKey(key, makeElementWithText(name)));
            parts.push_back(std::move(below));
            sides.push_back(std::make_unique<CompositeOperation>(std::move(parts)));
        }
    };
    addSides("a", true);
    addSides("c", false);
    return sides;
}

class ReinsertedKeysExhaustive : public TreeExhaustive
{
protected:
    std::vector<Candidate> makeExecutedSides(int name) const
    {
        std::vector<Candidate> candidates;
        for (OperationUPtr& side : makeSides(name))
        {
            applied(_document, *side);
            candidates.push_back(Candidate{std::move(side)});
        }
        return candidates;
    }

    auto makeCheck() const
    {
        return [this](const TreeDocument& state, Operation& first, Operation& second, TieResolveCondition tie)
        {
            const OperationUPtr firstAfter = _transformer->include(first, second, tie);
            const OperationUPtr secondAfter = _transformer->include(second, first, getOpposite(tie));
            const TreeDocument one = applied(applied(state, first), *secondAfter);
            const TreeDocument other = applied(applied(state, second), *firstAfter);
            EXPECT_TRUE(one == other) << toString(one) << "\n\n" << toString(other);
            EXPECT_TRUE(takenBack(takenBack(one, *secondAfter), first) == state);
        };
    }
};

} // namespace

TEST_P(ReinsertedKeysExhaustive, BothOrdersOfWhatTwoSitesDoGiveOneMapAndCanBeTakenBack)
{
    checkPairs(_document, makeExecutedSides(1000), makeExecutedSides(5000), makeCheck());
}

// The key was removed and inserted again. Each site undoes that, edits below the new value, or comes late with an edit
// below the former one.
TEST_P(ReinsertedKeysExhaustive, BothOrdersGiveOneMapBehindARemovalAndAnInsertion)
{
    const OperationUPtr removal = removeKey("a");
    const OperationUPtr insertion = insertKey("a", makeElementWithText(300));
    const TreeDocument withoutKey = applied(_document, *removal);
    const TreeDocument state = applied(withoutKey, *insertion);
    const auto makeAll = [&](int name)
    {
        Operations history;
        history.push_back(cloneOperation(*removal));
        history.push_back(cloneOperation(*insertion));
        std::vector<Candidate> candidates;
        for (const OperationUPtr& late : makeOperationsBelow("a", name))
        {
            applied(_document, *late);
            candidates.push_back(Candidate{past(*late, history)});
        }
        for (OperationUPtr& live : makeOperationsBelow("a", name + 10))
        {
            candidates.push_back(Candidate{std::move(live)});
        }
        candidates.push_back(Candidate{removeKey("a")});
        candidates.push_back(Candidate{past(*makeUndo(*removal, *_transformer), history, 1), removal.get()});
        candidates.push_back(Candidate{makeUndo(*insertion, *_transformer), insertion.get()});
        for (const Candidate& candidate : candidates)
        {
            applied(state, *candidate._operation);
        }
        return candidates;
    };
    checkPairs(state, makeAll(1000), makeAll(5000), makeCheck());
}

INSTANTIATE_TEST_SUITE_P(Maps, ReinsertedKeysExhaustive, testing::Values(TreePart::Map), &getName);

TEST(ReinsertedKeys, EditBelowTheWinnersValueIsNotMovedByOneBelowTheLosersValue)
{
    const auto transformer = makeTreeTransformer();
    const OperationUPtr winner = insertKeyAndText(100, 1);
    const OperationUPtr loser = insertKeyAndText(200, 0);
    const OperationUPtr winnerPastLoser = transformer->include(*winner, *loser, TieResolveCondition::FirstWins);
    EXPECT_EQ(describe(*winnerPastLoser), "[/4 remove(c); /4 insert(c); /4[c]/2 multi{insert(1,1, 1 items) }; ]");
    TreeReplica replica;
    replica.run(cloneOperation(*loser));
    replica.run(cloneOperation(*winnerPastLoser));
    EXPECT_EQ(textOf(replica.getDocument()._map.at("c")), "1000 101 ");
}

TEST(ReinsertedKeys, EditBelowTheNewValueIsNotMovedByOneShadowedOnTheFormerValue)
{
    TreeReplica replica;
    replica.run(removeKey("a"));
    replica.run(insertKey("a", makeElementWithText(300)));
    replica.run(replica.pastHistory(insertText(mapElementAddress("a"), 0, 900, 4), 0));
    replica.run(replica.pastHistory(insertText(mapElementAddress("a"), 1, 901, 5), 2));
    EXPECT_EQ(textOf(replica.getDocument()._map.at("a")), "3000 901 ");
}

TEST(ReinsertedKeys, EditShadowedOnTheFormerValueIsNotMovedByThoseBelowTheNewValueAndWakesWithTheFormerOne)
{
    TreeReplica replica;
    replica.run(removeKey("a"));
    replica.run(insertKey("a", makeElementWithText(300)));
    replica.run(insertText(mapElementAddress("a"), 0, 901, 5));
    EXPECT_EQ(describe(*replica.pastHistory(insertText(mapElementAddress("a"), 2, 900, 4), 0)),
              "shadowed(/4[a]/2 multi{insert(2,1, 1 items) }, dead at 1)");
    replica.undo(1);
    EXPECT_EQ(describe(*replica.pastHistory(insertText(mapElementAddress("a"), 2, 900, 4), 0)),
              "shadowed(/4[a]/2 multi{insert(2,1, 1 items) }, dead at 1)");
    replica.run(insertKey("a", makeTreeDocument()._map.at("a")));
    EXPECT_EQ(describe(*replica.pastHistory(insertText(mapElementAddress("a"), 2, 900, 4), 0)),
              "/4[a]/2 multi{insert(2,1, 1 items) }");
}

} // namespace Zem::CollaborationEngine::Testing
