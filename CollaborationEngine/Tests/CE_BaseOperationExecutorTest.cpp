#include "CE_BaseOperationExecutor.h"

#include "CE_AfterDocumentActionSignal.h"
#include "OperationNotation.h"
#include "SlotModel.h"

#include "TS_Assertions.h"

namespace Zem::CollaborationEngine::Testing
{

namespace
{

/// Records what it is asked to do, and changes the operations on one index.
class RecordingExecutor final : public AtomicOperationExecutor
{
public:
    explicit RecordingExecutor(std::vector<std::string>& log)
        : _log(log)
    {
    }

    bool executeAndChangeIfNeeded(AtomicOperation& operation, OperationUPtr& changedOp) override
    {
        _log.push_back(describe(operation));
        if (cast<ListOperation>(operation).getRange().getBegin() == changedIndex)
        {
            changedOp = std::make_unique<EmptyOperation>();
        }
        return static_cast<bool>(changedOp);
    }

    void reverse(AtomicOperation& operation) override
    {
        _log.push_back("back " + describe(operation));
    }

    static constexpr unsigned long changedIndex = 9;

private:
    std::vector<std::string>& _log;
};

OperationUPtr makeMarking(unsigned long begin)
{
    return makeListOperation<MarkAsRemoved>(Family::SingleRange, {{begin, 1, "a"}});
}

OperationUPtr makeComposite(const std::vector<unsigned long>& begins)
{
    std::vector<OperationUPtr> parts;
    for (const unsigned long begin : begins)
    {
        parts.push_back(makeMarking(begin));
    }
    return std::make_unique<CompositeOperation>(std::move(parts));
}

class BaseOperationExecutorTest : public testing::Test
{
protected:
    BaseOperationExecutorTest()
        : _executor(std::make_unique<RecordingExecutor>(_log), makeListTransformer())
    {
        _executor.getAfterDocumentActionSignal().connect([this] { _log.push_back("signal"); });
    }

    using Log = std::vector<std::string>;

    Log _log;
    BaseOperationExecutor _executor;
    OperationUPtr _changedOp;
};

} // namespace

TEST_F(BaseOperationExecutorTest, NullAtomicExecutorFails)
{
    EXPECT_ASSERTION(BaseOperationExecutor(nullptr, makeListTransformer()), "_atomicExecutor");
}

TEST_F(BaseOperationExecutorTest, CompositeRunsInOrderAndBackInReverseOrderWithOneSignalEach)
{
    const OperationUPtr composite = makeComposite({1, 2});
    EXPECT_FALSE(_executor.executeAndChangeIfNeeded(*composite, _changedOp));
    EXPECT_FALSE(_changedOp);
    EXPECT_EQ(_log, (Log{"/1 mark(1,1, a)", "/1 mark(2,1, a)", "signal"}));
    _log.clear();
    _executor.reverse(*composite);
    EXPECT_EQ(_log, (Log{"back /1 mark(2,1, a)", "back /1 mark(1,1, a)", "signal"}));
}

TEST_F(BaseOperationExecutorTest, NestedCompositeRunsToo)
{
    std::vector<OperationUPtr> parts;
    parts.push_back(makeComposite({1}));
    parts.push_back(makeMarking(2));
    CompositeOperation composite(std::move(parts));
    _executor.executeAndChangeIfNeeded(composite, _changedOp);
    EXPECT_EQ(_log, (Log{"/1 mark(1,1, a)", "/1 mark(2,1, a)", "signal"}));
}

TEST_F(BaseOperationExecutorTest, ChangedPartChangesTheComposite)
{
    unsigned long nextID = 4;
    const OperationUPtr composite = makeComposite({1, RecordingExecutor::changedIndex, 2});
    composite->setIDIfNeeded(nextID);
    EXPECT_TRUE(_executor.executeAndChangeIfNeeded(*composite, _changedOp));
    EXPECT_EQ(describe(*_changedOp), "[/1 mark(1,1, a); /1 mark(2,1, a); ]");
    EXPECT_EQ(_changedOp->getID().value_or(0), 4u);
}

TEST_F(BaseOperationExecutorTest, WhatIsLeftOfAChangedCompositeTakesOverItsId)
{
    unsigned long nextID = 4;
    const OperationUPtr composite = makeComposite({1, RecordingExecutor::changedIndex});
    composite->setIDIfNeeded(nextID);
    EXPECT_TRUE(_executor.executeAndChangeIfNeeded(*composite, _changedOp));
    EXPECT_EQ(_changedOp->getID().value_or(0), 4u);
    const CompositeOperation& left = cast<CompositeOperation>(*_changedOp);
    ASSERT_EQ(left.getParts().size(), 1u);
    EXPECT_EQ(left.getParts()[0]->getID().value_or(0), 5u) << "positions go by the id of the part";
}

TEST_F(BaseOperationExecutorTest, CompositeOfWhichNothingIsLeftKeepsItsId)
{
    unsigned long nextID = 4;
    const OperationUPtr composite = makeComposite({RecordingExecutor::changedIndex});
    composite->setIDIfNeeded(nextID);
    EXPECT_TRUE(_executor.executeAndChangeIfNeeded(*composite, _changedOp));
    EXPECT_EQ(describe(*_changedOp), "nothing");
    EXPECT_EQ(_changedOp->getID().value_or(0), 4u);
}

TEST_F(BaseOperationExecutorTest, ChangedOperationThatIsLeftOverFailsBeforeAnythingIsDone)
{
    _changedOp = std::make_unique<EmptyOperation>();
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(*makeMarking(1), _changedOp), "!changedOp");
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeededChangedOp(*makeMarking(1), _changedOp), "!changedOp");
    EXPECT_EQ(_log, Log());
}

TEST_F(BaseOperationExecutorTest, PartBehindAChangedOneFailsWithoutATransformer)
{
    BaseOperationExecutor executor(std::make_unique<RecordingExecutor>(_log), nullptr);
    EXPECT_FALSE(executor.executeAndChangeIfNeeded(*makeComposite({1, 2}), _changedOp));
    EXPECT_ASSERTION(
        executor.executeAndChangeIfNeeded(*makeComposite({RecordingExecutor::changedIndex, 1}), _changedOp),
        "_transformer");
}

TEST_F(BaseOperationExecutorTest, ChangedPartLeavesARestoringWithWhatItBringsAlongTogether)
{
    auto parts = dynamicUPtrCheckedCast<CompositeOperation>(makeComposite({1, RecordingExecutor::changedIndex, 2}));
    CompositeOperation composite(std::move(parts->getParts()), CompositeKind::Restoring);
    EXPECT_TRUE(_executor.executeAndChangeIfNeeded(composite, _changedOp));
    EXPECT_EQ(describe(*_changedOp), "brings[/1 mark(1,1, a); /1 mark(2,1, a); ]");
}

// A restoring that a text refused used to bring an operation along to a place that was still dead.
TEST_F(BaseOperationExecutorTest, PartBehindARefusedOneFollowsThat)
{
    std::vector<OperationUPtr> parts;
    parts.push_back(makeMarking(RecordingExecutor::changedIndex));
    parts.push_back(makeListOperation<Restore>(Family::SingleRange, {{RecordingExecutor::changedIndex, 1, "a"}}));
    parts.push_back(makeMarking(2));
    CompositeOperation composite(std::move(parts));
    EXPECT_TRUE(_executor.executeAndChangeIfNeeded(composite, _changedOp));
    EXPECT_EQ(describe(*_changedOp), "/1 mark(2,1, a)");
    EXPECT_TRUE(std::none_of(_log.begin(), _log.end(),
                             [](const std::string& line) { return line.find("restore") != std::string::npos; }));
}

TEST_F(BaseOperationExecutorTest, ChangedAtomicOperationTakesOverTheId)
{
    unsigned long nextID = 4;
    const OperationUPtr operation = makeMarking(RecordingExecutor::changedIndex);
    operation->setIDIfNeeded(nextID);
    EXPECT_TRUE(_executor.executeAndChangeIfNeeded(*operation, _changedOp));
    EXPECT_EQ(_changedOp->getID().value_or(0), 4u);
}

TEST_F(BaseOperationExecutorTest, ChangedOpEntryFillsWhatHappenedInAnyCase)
{
    const OperationUPtr operation = makeMarking(1);
    EXPECT_FALSE(_executor.executeAndChangeIfNeededChangedOp(*operation, _changedOp));
    EXPECT_EQ(describe(*_changedOp), describe(*operation));
    _changedOp.reset();
    EXPECT_TRUE(_executor.executeAndChangeIfNeededChangedOp(*makeMarking(RecordingExecutor::changedIndex), _changedOp));
    EXPECT_EQ(describe(*_changedOp), "nothing");
}

TEST_F(BaseOperationExecutorTest, EmptyAndShadowedOperationsDoNothing)
{
    EmptyOperation empty;
    ShadowedOperation shadowed(dynamicUPtrCheckedCast<AtomicOperation>(makeMarking(1)));
    EXPECT_FALSE(_executor.executeAndChangeIfNeeded(empty, _changedOp));
    EXPECT_FALSE(_executor.executeAndChangeIfNeeded(shadowed, _changedOp));
    _executor.reverse(shadowed);
    EXPECT_EQ(_log, (Log{"signal", "signal", "signal"}));
}

TEST_F(BaseOperationExecutorTest, SilentModeGuardsNest)
{
    {
        const auto guard = _executor.getSetSilentModeGuard();
        {
            const auto inner = _executor.getSetSilentModeGuard();
        }
        _executor.executeAndChangeIfNeeded(*makeMarking(1), _changedOp);
        _executor.reverse(*makeMarking(1));
    }
    EXPECT_EQ(_log, (Log{"/1 mark(1,1, a)", "back /1 mark(1,1, a)"}));
    _executor.executeAndChangeIfNeeded(*makeMarking(1), _changedOp);
    EXPECT_EQ(_log.back(), "signal");
}

TEST_F(BaseOperationExecutorTest, AtomicExecutorMustSayWhetherItChangedTheOperation)
{
    class LyingExecutor final : public AtomicOperationExecutor
    {
    public:
        bool executeAndChangeIfNeeded(AtomicOperation&, OperationUPtr&) override
        {
            return true;
        }

        void reverse(AtomicOperation&) override
        {
        }
    };
    BaseOperationExecutor executor(std::make_unique<LyingExecutor>(), makeListTransformer());
    EXPECT_ASSERTION(executor.executeAndChangeIfNeeded(*makeMarking(1), _changedOp),
                     "isChanged == static_cast<bool>(changedOp)");
}

TEST_F(BaseOperationExecutorTest, OperationRunsItselfAndGivesBackWhatHappened)
{
    OperationUPtr operation = makeMarking(1);
    EXPECT_EQ(describe(*std::move(*operation).execute(_executor)), "/1 mark(1,1, a)");
    OperationUPtr changed = makeMarking(RecordingExecutor::changedIndex);
    EXPECT_EQ(describe(*std::move(*changed).execute(_executor)), "nothing");
}

} // namespace Zem::CollaborationEngine::Testing
