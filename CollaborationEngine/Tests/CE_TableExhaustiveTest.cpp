// All pairs of operations on rows and columns, which meet in each cell of the matrix, and in each cell of the crossing
// axes.

#include "TreeExhaustive.h"

#include <set>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

class TableExhaustive : public TreeExhaustive
{
protected:
    /// What two sites can do behind a history, and the removals of all rows and columns.
    std::vector<Candidate> makeCandidatesAndRemovals(const TreeDocument& state, const Operations& history,
                                                     int firstName) const
    {
        std::vector<Candidate> candidates = makeCandidates(state, history, firstName);
        for (OperationUPtr& removal : makeLineRemovals(state._table))
        {
            candidates.push_back(Candidate{std::move(removal)});
        }
        return candidates;
    }

    /// The histories of all trees; and those in which a row or column is deleted twice and another one once or twice,
    /// behind which releasings meet restorings, leavings and each other.
    template<class Consume>
    void forEachHistoryOfTables(const Consume& consume)
    {
        forEachHistory(consume);
        const Operations deletions = makeTreeDeletions(_document, GetParam());
        for (const OperationUPtr& twice : deletions)
        {
            const OperationUPtr twiceAgain = cloneOperation(*twice);
            for (const OperationUPtr& other : deletions)
            {
                const OperationUPtr otherAgain = cloneOperation(*other);
                callBehind(makeHistory({twice.get(), twiceAgain.get(), other.get()}), consume);
                callBehind(makeHistory({twice.get(), twiceAgain.get(), other.get(), otherAgain.get()}), consume);
            }
        }
    }
};

} // namespace

TEST_P(TableExhaustive, EachPairOfKindsOnRowsAndColumnsMeetsAndGivesOneTable)
{
    std::set<std::string> metPairs;
    forEachHistoryOfTables(
        [&](const TreeDocument& state, const Operations& history)
        {
            checkPairs(state, makeCandidatesAndRemovals(state, history, 1000),
                       makeCandidatesAndRemovals(state, history, 5000),
                       [&](const TreeDocument&, Operation& first, Operation& second, TieResolveCondition tie)
                       {
                           metPairs.insert(getLineAction(first) + " past " + getLineAction(second));
                           const OperationUPtr firstAfter = _transformer->include(first, second, tie);
                           const OperationUPtr secondAfter = _transformer->include(second, first, getOpposite(tie));
                           const TreeDocument one = applied(applied(state, first), *secondAfter);
                           const TreeDocument other = applied(applied(state, second), *firstAfter);
                           EXPECT_TRUE(one == other) << toString(one) << "\n\n" << toString(other);
                       });
        });
    std::vector<std::string> actions{"setting"};
    for (unsigned long action = 0; action < slotActionsCount; ++action)
    {
        actions.push_back(getSlotActionName(static_cast<SlotAction>(action)));
    }
    for (const std::string first : {"row ", "column "})
    {
        for (const std::string second : {"row ", "column "})
        {
            for (const std::string& firstAction : actions)
            {
                for (const std::string& secondAction : actions)
                {
                    const std::string pair = first + firstAction + " past " + second + secondAction;
                    EXPECT_EQ(metPairs.count(pair), 1u) << pair << " is met by no case";
                }
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Tables, TableExhaustive, testing::Values(TreePart::Table, TreePart::TallTable), &getName);

} // namespace Zem::CollaborationEngine::Testing
