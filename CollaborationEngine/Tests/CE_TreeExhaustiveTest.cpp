// All operations on small lists, maps and tables and on what is below them, all pairs, both ties: as the documents
// stand, behind each single operation, and behind each deletion with any other. What is dead there makes leavings,
// restorings and shadowed operations of them.

#include "CE_InverseOperation.h"
#include "CE_OperationEquality.h"
#include "CasesCount.h"
#include "OperationNotation.h"
#include "TreeCases.h"

#include <gtest/gtest.h>

#include <iostream>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using Operations = std::vector<OperationUPtr>;

constexpr auto late = TieResolveCondition::SecondWins;

/// An operation of a case. Two sites don't undo one operation both.
struct Candidate
{
    OperationUPtr _operation;
    const Operation* _undone = nullptr;
};

class TreeExhaustive : public testing::TestWithParam<TreePart>
{
protected:
    ~TreeExhaustive() override
    {
        std::cout << "  " << _casesCount << " cases\n";
        countCases(_casesCount);
    }

    TreeDocument applied(const TreeDocument& document, Operation& operation) const
    {
        TreeDocument after = document;
        BaseOperationExecutor executor(std::make_unique<TreeExecutor>(after), _transformer);
        OperationUPtr changedOp;
        executor.executeAndChangeIfNeeded(operation, changedOp);
        return after;
    }

    TreeDocument takenBack(const TreeDocument& document, Operation& operation) const
    {
        TreeDocument after = document;
        BaseOperationExecutor(std::make_unique<TreeExecutor>(after), _transformer).reverse(operation);
        return after;
    }

    OperationUPtr past(const Operation& operation, const Operations& history, std::size_t begin = 0) const
    {
        OperationUPtr result = cloneOperation(operation);
        for (std::size_t index = begin; index < history.size(); ++index)
        {
            result = _transformer->include(*result, *history[index], late);
        }
        return result;
    }

    /// What two sites can do behind a history: the same as before it, and undo what it holds. Each was executed once.
    std::vector<Candidate> makeCandidates(const TreeDocument& state, const Operations& history, int firstName) const
    {
        std::vector<Candidate> candidates;
        for (const OperationUPtr& operation : makeTreeOperations(_document, GetParam(), firstName))
        {
            unsigned long id = static_cast<unsigned long>(firstName) + candidates.size();
            operation->setIDIfNeeded(id);
            applied(_document, *operation);
            candidates.push_back({past(*operation, history)});
        }
        for (std::size_t index = 0; index < history.size(); ++index)
        {
            OperationUPtr undo = makeUndo(*history[index], *_transformer);
            candidates.push_back({past(*undo, history, index + 1), history[index].get()});
        }
        for (const Candidate& candidate : candidates)
        {
            applied(state, *candidate._operation);
        }
        return candidates;
    }

    template<class Check>
    void checkBehind(const Operations& history, const Check& check)
    {
        std::string trace = "behind";
        TreeDocument state = _document;
        for (const OperationUPtr& operation : history)
        {
            trace += "\n  " + describe(*operation);
            state = applied(state, *operation);
        }
        SCOPED_TRACE(trace);
        const auto firsts = makeCandidates(state, history, 1000);
        const auto seconds = makeCandidates(state, history, 5000);
        for (const Candidate& first : firsts)
        {
            for (const Candidate& second : seconds)
            {
                if (first._undone && first._undone == second._undone)
                {
                    continue;
                }
                SCOPED_TRACE(describe(*first._operation) + "\n" + describe(*second._operation));
                for (const auto tie : {TieResolveCondition::FirstWins, TieResolveCondition::SecondWins})
                {
                    ++_casesCount;
                    ASSERT_NO_THROW(check(state, *first._operation, *second._operation, tie));
                }
                if (HasFailure())
                {
                    return;
                }
            }
        }
    }

    /// Calls `check` for each pair of operations, both of which have been executed once, behind each history.
    template<class Check>
    void forEachPair(const Check& check)
    {
        ASSERT_NO_FATAL_FAILURE(checkBehind({}, check));
        for (OperationUPtr& operation : makeTreeOperations(_document, GetParam(), 9000))
        {
            if (HasFailure())
            {
                return;
            }
            Operations history;
            history.push_back(std::move(operation));
            applied(_document, *history.front());
            ASSERT_NO_FATAL_FAILURE(checkBehind(history, check));
        }
        for (const OperationUPtr& first : makeTreeDeletions(_document, GetParam()))
        {
            for (const OperationUPtr& second : makeTreeOperations(_document, GetParam(), 7000))
            {
                if (HasFailure())
                {
                    return;
                }
                Operations history;
                history.push_back(cloneOperation(*first));
                const TreeDocument state = applied(_document, *history.front());
                applied(_document, *second);
                history.push_back(past(*second, history));
                applied(state, *history.back());
                ASSERT_NO_FATAL_FAILURE(checkBehind(history, check));
            }
        }
    }

    std::shared_ptr<HierarchicalOperationTransformer> _transformer = makeTreeTransformer();
    TreeDocument _document = makeSmallDocument(GetParam());
    unsigned long _casesCount = 0;
};

} // namespace

TEST_P(TreeExhaustive, BothOrdersOfTwoOperationsGiveOneDocumentAndCanBeTakenBack)
{
    forEachPair(
        [&](const TreeDocument& state, Operation& first, Operation& second, TieResolveCondition tie)
        {
            const OperationUPtr firstAfter = _transformer->include(first, second, tie);
            const OperationUPtr secondAfter = _transformer->include(second, first, getOpposite(tie));
            const TreeDocument afterFirst = applied(state, first);
            const TreeDocument one = applied(afterFirst, *secondAfter);
            const TreeDocument other = applied(applied(state, second), *firstAfter);
            EXPECT_TRUE(one == other) << toString(one) << "\n\n" << toString(other);
            EXPECT_TRUE(takenBack(takenBack(one, *secondAfter), first) == state);
        });
}

TEST_P(TreeExhaustive, PseudoIdentitiesAreNeutral)
{
    forEachPair(
        [&](const TreeDocument&, Operation& first, Operation& second, TieResolveCondition tie)
        {
            const OperationUPtr identity = second.getPseudoIdentity(*_transformer);
            EXPECT_TRUE(areDeeplyEqual(*_transformer->include(first, *identity, tie), first)) << describe(*identity);
        });
}

TEST_P(TreeExhaustive, ResultsKeepTheId)
{
    forEachPair([&](const TreeDocument&, Operation& first, Operation& second, TieResolveCondition tie)
                { EXPECT_TRUE(_transformer->include(first, second, tie)->getID() == first.getID()); });
}

INSTANTIATE_TEST_SUITE_P(Trees, TreeExhaustive, testing::Values(TreePart::List, TreePart::Map, TreePart::Table),
                         [](const testing::TestParamInfo<TreePart>& part)
                         {
                             switch (part.param)
                             {
                             case TreePart::List:
                                 return "List";
                             case TreePart::Map:
                                 return "Map";
                             case TreePart::Table:
                                 return "Table";
                             }
                             return "";
                         });

} // namespace Zem::CollaborationEngine::Testing
