#pragma once

/// All operations on small lists, maps and tables and on what is below them: as the documents stand, behind each single
/// operation, and behind each deletion with any other. What is dead there makes leavings, restorings and shadowed
/// operations of them.

#include "CasesCount.h"
#include "OperationNotation.h"
#include "TreeCases.h"

#include "CE_InverseOperation.h"
#include "CE_Slots.h"

#include <gtest/gtest.h>

#include <iostream>

namespace Zem::CollaborationEngine::Testing
{

/// An operation of a case. Two sites don't undo one operation both.
struct Candidate
{
    OperationUPtr _operation;
    const Operation* _undone = nullptr;
};

using Operations = std::vector<OperationUPtr>;

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
            result = _transformer->include(*result, *history[index], TieResolveCondition::SecondWins);
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

    /// Calls `check` for each pair of the candidates, with both ties.
    template<class Check>
    void checkPairs(const TreeDocument& state, const std::vector<Candidate>& firsts,
                    const std::vector<Candidate>& seconds, const Check& check)
    {
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

    /// Calls `consume` for each history, with the document behind it.
    template<class Consume>
    void forEachHistory(const Consume& consume)
    {
        callBehind({}, consume);
        for (OperationUPtr& operation : makeTreeOperations(_document, GetParam(), 9000))
        {
            Operations history;
            history.push_back(std::move(operation));
            applied(_document, *history.front());
            callBehind(history, consume);
        }
        for (const OperationUPtr& first : makeTreeDeletions(_document, GetParam()))
        {
            for (const OperationUPtr& second : makeTreeOperations(_document, GetParam(), 7000))
            {
                callBehind(makeHistory({first.get(), second.get()}), consume);
            }
        }
    }

    /// Operations that were all made in the document as it stands, one past the other, and executed.
    Operations makeHistory(const std::vector<Operation*>& operations) const
    {
        Operations history;
        TreeDocument state = _document;
        for (Operation* operation : operations)
        {
            applied(_document, *operation);
            history.push_back(past(*operation, history));
            state = applied(state, *history.back());
        }
        return history;
    }

    /// Calls `check` for each pair of operations, both of which have been executed once, behind each history.
    template<class Check>
    void forEachPair(const Check& check)
    {
        forEachHistory(
            [&](const TreeDocument& state, const Operations& history)
            { checkPairs(state, makeCandidates(state, history, 1000), makeCandidates(state, history, 5000), check); });
    }

    template<class Consume>
    void callBehind(const Operations& history, const Consume& consume)
    {
        if (HasFailure())
        {
            return;
        }
        std::string trace = "behind";
        TreeDocument state = _document;
        for (const OperationUPtr& operation : history)
        {
            trace += "\n  " + describe(*operation);
            state = applied(state, *operation);
        }
        SCOPED_TRACE(trace);
        consume(state, history);
    }

    std::shared_ptr<HierarchicalOperationTransformer> _transformer = makeTreeTransformer();
    TreeDocument _document = makeSmallDocument(GetParam());
    unsigned long _casesCount = 0;
};

std::string getSlotActionName(SlotAction action);

/// What an operation does to rows or columns, such as "row marking"; empty for any other, and for what is shadowed for
/// good.
std::string getLineAction(const Operation& operation);

/// For the names of tests.
std::string getName(const testing::TestParamInfo<TreePart>& part);

} // namespace Zem::CollaborationEngine::Testing
