// Random histories on a document with every kind of node. In each round two sites change the document at once; each
// also undoes operations of the past, brought past all that came after them.

#include "CE_InverseOperation.h"
#include "OperationNotation.h"
#include "RandomTreeOperations.h"

#include "Util_Assert.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <stdexcept>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using History = std::vector<OperationUPtr>;

struct Site
{
    TreeDocument _document;
    History _operations;
};

class Rounds
{
public:
    explicit Rounds(unsigned long seed)
        : _operations(seed)
    {
    }

    /// Fails: an exception where something doesn't hold. Returns the number of operations that were made.
    unsigned long run()
    {
        for (unsigned long round = 0; round < 4; ++round)
        {
            runRound();
        }
        return _nextId;
    }

    /// All operations in the order in which they were executed, for messages of failures.
    const std::string& getScript() const
    {
        return _script;
    }

private:
    void runRound()
    {
        _script += "round\n";
        Site one{_document, {}};
        Site other{_document, {}};
        change(one, 0);
        _script += "other site\n";
        change(other, 1);
        const auto tie = _operations.below(2) == 0 ? TieResolveCondition::FirstWins : TieResolveCondition::SecondWins;
        const CompositeOperation oneAll(clone(one._operations));
        const CompositeOperation otherAll(clone(other._operations));
        OperationUPtr oneAfter = _transformer->include(oneAll, otherAll, tie);
        OperationUPtr otherAfter = _transformer->include(otherAll, oneAll, getOpposite(tie));
        _script += "other's past one's, then one's past other's\n";
        Site mergedOne{one._document, {}};
        execute(mergedOne, std::move(otherAfter));
        Site mergedOther{other._document, {}};
        execute(mergedOther, std::move(oneAfter));
        requireEqual(mergedOne._document, mergedOther._document);
        checkReversal(one, mergedOne);
        _document = mergedOne._document;
        append(_history, one._operations);
        append(_history, mergedOne._operations);
    }

    void change(Site& site, unsigned long parity)
    {
        for (unsigned long count = _operations.below(3) + 1; count > 0; --count)
        {
            OperationUPtr operation = _operations.below(2) == 0 ? makeUndoOfPast(site, parity) : nullptr;
            execute(site, operation ? std::move(operation) : _operations.make(site._document));
        }
    }

    /// The sites undo different operations.
    OperationUPtr makeUndoOfPast(const Site& site, unsigned long parity)
    {
        if (_history.empty())
        {
            return nullptr;
        }
        const unsigned long chosen = _operations.below(_history.size());
        // A deletion that never took effect has seen nothing of what was edited in its elements; see the README.
        const bool wasShadowed = describe(*_history[chosen]).find("dead at") != std::string::npos;
        if (chosen % 2 != parity || _areUndone.count(chosen) != 0 || wasShadowed)
        {
            return nullptr;
        }
        _areUndone[chosen] = true;
        OperationUPtr undo = makeUndo(*_history[chosen], *_transformer);
        for (unsigned long index = chosen + 1; index < _history.size(); ++index)
        {
            undo = _transformer->include(*undo, *_history[index], TieResolveCondition::SecondWins);
        }
        for (const OperationUPtr& own : site._operations)
        {
            undo = _transformer->include(*undo, *own, TieResolveCondition::SecondWins);
        }
        return undo;
    }

    void execute(Site& site, OperationUPtr operation)
    {
        operation->setIDIfNeeded(_nextId);
        _script += describe(*operation) + "\n";
        BaseOperationExecutor executor(std::make_unique<TreeExecutor>(site._document), _transformer);
        OperationUPtr changedOp;
        ZEM_ASSERT(!executor.executeAndChangeIfNeeded(*operation, changedOp));
        site._operations.push_back(std::move(operation));
    }

    /// Takes all back, newest first.
    void checkReversal(const Site& first, const Site& second)
    {
        TreeDocument document = second._document;
        BaseOperationExecutor executor(std::make_unique<TreeExecutor>(document), _transformer);
        for (const Site* site : {&second, &first})
        {
            for (auto operation = site->_operations.rbegin(); operation != site->_operations.rend(); ++operation)
            {
                executor.reverse(**operation);
            }
        }
        requireEqual(document, _document);
    }

    static void requireEqual(const TreeDocument& one, const TreeDocument& other)
    {
        if (!(one == other))
        {
            throw std::logic_error(toString(one) + "\n\n" + toString(other));
        }
    }

    static History clone(const History& operations)
    {
        History clones;
        for (const OperationUPtr& operation : operations)
        {
            clones.push_back(cloneOperation(*operation));
        }
        return clones;
    }

    static void append(History& history, const History& operations)
    {
        for (OperationUPtr& operation : clone(operations))
        {
            history.push_back(std::move(operation));
        }
    }

    RandomTreeOperations _operations;
    std::string _script;
    std::shared_ptr<HierarchicalOperationTransformer> _transformer = makeTreeTransformer();
    TreeDocument _document = makeTreeDocument();
    History _history;
    std::map<unsigned long, bool> _areUndone;
    unsigned long _nextId = 1;
};

constexpr unsigned long maximumFailures = 5;

class HierarchicalRandom : public testing::Test
{
protected:
    ~HierarchicalRandom() override
    {
        std::cout << "  " << _historiesCount << " histories, " << _operationsCount << " operations\n";
    }

    /// A history that fails doesn't hide others: its script is printed, and only a handful of them ends the test.
    void check(unsigned long seed)
    {
        if (_failuresCount == maximumFailures)
        {
            return;
        }
        ++_historiesCount;
        Rounds rounds(seed);
        try
        {
            _operationsCount += rounds.run();
        }
        catch (const std::exception& error)
        {
            ++_failuresCount;
            ADD_FAILURE() << "COLLABORATION_ENGINE_SEED=" << seed << "\n" << error.what() << "\n" << rounds.getScript();
        }
    }

private:
    unsigned long _historiesCount = 0;
    unsigned long _operationsCount = 0;
    unsigned long _failuresCount = 0;
};

} // namespace

TEST_F(HierarchicalRandom, TwoSitesMeetAndCanGoBack)
{
    const char* longRun = std::getenv("COLLABORATION_ENGINE_LONG_TESTS");
    const char* firstSeed = std::getenv("COLLABORATION_ENGINE_SEED");
    const unsigned long begin = firstSeed ? std::stoul(firstSeed) : 1;
    const unsigned long count = firstSeed ? 1 : (longRun ? 400000 : 20000);
    for (unsigned long seed = begin; seed < begin + count; ++seed)
    {
        check(seed);
    }
}

// Each of these has failed at some time, and is far rarer than what the default run meets.
TEST_F(HierarchicalRandom, HistoriesKnownToBeHardHold)
{
    const std::vector<unsigned long> keyWithAFormerValue{328218, 1026211};
    const std::vector<unsigned long> settingOfAWholeText{341450};
    const std::vector<unsigned long> restoringInsideADeadRow{1048282};
    const std::vector<unsigned long> unitsThatMeet{54379, 220654};
    for (const auto* seeds : {&keyWithAFormerValue, &settingOfAWholeText, &restoringInsideADeadRow, &unitsThatMeet})
    {
        std::for_each(seeds->begin(), seeds->end(), [&](unsigned long seed) { check(seed); });
    }
}

} // namespace Zem::CollaborationEngine::Testing
