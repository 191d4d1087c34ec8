#include "DClb_ExecutorFixture.h"
#include "DClb_TextElement.h"
#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

#include "CE_AfterDocumentActionSignal.h"
#include "CE_ListMultirangeOperation.h"

#include <functional>
#include <set>

namespace Zem::DOMCollaboration
{

using CollaborationEngine::AtomicOperation;
using CollaborationEngine::Operation;
using CollaborationEngine::OperationUPtr;

namespace
{

/// An operation that is aimed at no node.
class NodelessOperation final
    : public CollaborationEngine::OperationImpl<NodelessOperation, AtomicOperation, AtomicOperation>
{
public:
    using OperationImpl::cloneTo;

    void cloneTo(std::shared_ptr<AtomicOperation>& target) const override
    {
        target = std::make_shared<NodelessOperation>(*this);
    }

    void cloneTo(std::unique_ptr<AtomicOperation>& target) const override
    {
        target = std::make_unique<NodelessOperation>(*this);
    }

    OperationUPtr getPseudoIdentity(const CollaborationEngine::BaseOperationTransformer&) const override
    {
        return std::make_unique<CollaborationEngine::EmptyOperation>();
    }
};

class DocumentOperationExecutorTest : public ExecutorFixture
{
protected:
    DocumentOperationExecutorTest()
    {
        _executor.getAfterDocumentActionSignal().connect([this] { ++_signalsCount; });
    }

    static CollaborationEngine::SetPropertyOperation makeParentChange(const UUID& oldParent, const UUID& newParent)
    {
        return makeSetProperty<PropertyId::ParentStyleId>(makeTextAddress(textRunPlace), OperationDOMNodeType::Run,
                                                          oldParent, newParent);
    }

    static CollaborationEngine::SetPropertyOperation makeOperationOn(unsigned long nodeType)
    {
        return {{}, nodeType, 0, makeValue(0), makeValue(0)};
    }

    int _signalsCount = 0;
};

/// Gives its node executors' proxy out.
class ExecutorWithOpenProxy final : public DocumentOperationExecutor
{
public:
    using DocumentOperationExecutor::DocumentOperationExecutor;

    CollaborationEngine::OperationExecutor& getProxy()
    {
        return _proxy;
    }
};

const std::set<unsigned long> guardedTypes{0, 1, 2, 3, 14, 16, 18, 21, 22, 23, 33};

/// What an assertion says; "another exception" or empty for what isn't one.
std::string getFailure(const std::function<void()>& function)
{
    try
    {
        function();
        return {};
    }
    catch (const AssertionFailure& failure)
    {
        return failure.what();
    }
    catch (const std::exception&)
    {
        return "another exception";
    }
}

} // namespace

TEST_F(DocumentOperationExecutorTest, NeedsADocument)
{
    EXPECT_ASSERTION(DocumentOperationExecutor(nullptr, std::make_shared<DocumentOperationTransformer>(), _observer),
                     "_dom");
}

TEST_F(DocumentOperationExecutorTest, KnowsTheNodeTypesFrom0To34AndNoOther)
{
    constexpr const char* message = "nodeExecutorIt != _DOMCollaborationMap.end()";
    for (unsigned long nodeType = 0; nodeType <= 34; ++nodeType)
    {
        auto operation = makeOperationOn(nodeType);
        OperationUPtr changedOp;
        EXPECT_NE(message, getFailure([&] { _executor.executeAndChangeIfNeeded(operation, changedOp); })) << nodeType;
    }
    for (const unsigned long nodeType : {35ul, 74ul, ~0ul})
    {
        auto operation = makeOperationOn(nodeType);
        OperationUPtr changedOp;
        EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(operation, changedOp), message);
        EXPECT_ASSERTION(_executor.reverse(operation), message);
    }
}

TEST_F(DocumentOperationExecutorTest, NodesThatNothingMayBeAimedAtAreGuarded)
{
    for (const unsigned long nodeType : guardedTypes)
    {
        auto operation = makeOperationOn(nodeType);
        OperationUPtr changedOp;
        EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(operation, changedOp),
                         "Operation execution should never happen for this node type.");
        EXPECT_ASSERTION(_executor.reverse(operation), "Operation reverse should never happen for this node type.");
    }
}

TEST_F(DocumentOperationExecutorTest, AnOperationOnNoNodeIsABadCast)
{
    NodelessOperation operation;
    OperationUPtr changedOp;
    EXPECT_THROW(_executor.executeAndChangeIfNeeded(operation, changedOp), std::bad_cast);
    EXPECT_THROW(_executor.reverse(operation), std::bad_cast);
}

TEST_F(DocumentOperationExecutorTest, AnOperationThatRanAsItIsLeavesNothingChanged)
{
    auto operation = makeParentChange(UUID(), makeTestUUID(1));
    OperationUPtr changedOp;
    EXPECT_FALSE(_executor.executeAndChangeIfNeeded(operation, changedOp));
    EXPECT_FALSE(changedOp);
}

TEST_F(DocumentOperationExecutorTest, RaisesOneSignalForEachAction)
{
    auto operation = makeParentChange(UUID(), makeTestUUID(1));
    execute(operation);
    EXPECT_EQ(1, _signalsCount);
    _executor.reverse(operation);
    EXPECT_EQ(2, _signalsCount);
}

TEST_F(DocumentOperationExecutorTest, ProxyExecutesSilentlyAndReversesAloud)
{
    DocumentOperationExecutor::ProxyOperationExecutor proxy(_executor);
    auto operation = makeParentChange(UUID(), makeTestUUID(1));
    OperationUPtr changedOp;
    EXPECT_FALSE(proxy.executeAndChangeIfNeeded(operation, changedOp));
    EXPECT_EQ(makeTestUUID(1), getTextRun().getSharedStyle()->get().getParentUUID());
    EXPECT_EQ(0, _signalsCount);
    proxy.reverse(operation);
    EXPECT_EQ(1, _signalsCount);
}

TEST_F(DocumentOperationExecutorTest, ProxyIsNotSilentForLongerThanItsCall)
{
    DocumentOperationExecutor::ProxyOperationExecutor proxy(_executor);
    auto broken = makeOperationOn(35);
    OperationUPtr changedOp;
    EXPECT_ASSERTION(proxy.executeAndChangeIfNeeded(broken, changedOp), "nodeExecutorIt != _DOMCollaborationMap.end()");
    auto operation = makeParentChange(UUID(), makeTestUUID(1));
    execute(operation);
    EXPECT_EQ(1, _signalsCount);
}

TEST_F(DocumentOperationExecutorTest, OnlyTheOuterOperationOfANestedOneRaisesASignal)
{
    // The observer runs a further operation while the first one executes.
    DocumentOperationExecutor* executor = nullptr;
    bool isNested = false;
    auto nest = [&]
    {
        if (std::exchange(isNested, true))
        {
            return;
        }
        DocumentOperationExecutor::ProxyOperationExecutor proxy(*executor);
        auto nested = makeParentChange(makeTestUUID(1), makeTestUUID(2));
        OperationUPtr changedOp;
        proxy.executeAndChangeIfNeeded(nested, changedOp);
    };
    const auto observer = std::make_shared<SingleActionExecutorNotificationObserver<decltype(nest)>>(nest);
    DocumentOperationExecutor nestingExecutor(_adapter, nullptr, observer);
    executor = &nestingExecutor;
    int signalsCount = 0;
    nestingExecutor.getAfterDocumentActionSignal().connect([&] { ++signalsCount; });

    auto operation = makeParentChange(UUID(), makeTestUUID(1));
    OperationUPtr changedOp;
    nestingExecutor.executeAndChangeIfNeeded(operation, changedOp);
    EXPECT_EQ(makeTestUUID(2), getTextRun().getSharedStyle()->get().getParentUUID());
    EXPECT_EQ(1, signalsCount);
}

TEST_F(DocumentOperationExecutorTest, TheProxyThatNodeExecutorsAreGivenRunsOnTheSameDocumentSilently)
{
    ExecutorWithOpenProxy* executor = nullptr;
    std::vector<UUID> parents;
    auto nest = [&]
    {
        parents.push_back(getTextRun().getSharedStyle()->get().getParentUUID());
        if (parents.size() > 1)
        {
            return;
        }
        auto nested = makeParentChange(makeTestUUID(1), makeTestUUID(2));
        OperationUPtr changedOp;
        EXPECT_FALSE(executor->getProxy().executeAndChangeIfNeeded(nested, changedOp));
    };
    const auto observer = std::make_shared<SingleActionExecutorNotificationObserver<decltype(nest)>>(nest);
    ExecutorWithOpenProxy nestingExecutor(_adapter, nullptr, observer);
    executor = &nestingExecutor;
    int signalsCount = 0;
    nestingExecutor.getAfterDocumentActionSignal().connect([&] { ++signalsCount; });

    auto operation = makeParentChange(UUID(), makeTestUUID(1));
    OperationUPtr changedOp;
    nestingExecutor.executeAndChangeIfNeeded(operation, changedOp);
    EXPECT_EQ((std::vector<UUID>{makeTestUUID(1), makeTestUUID(2)}), parents);
    EXPECT_EQ(1, signalsCount);
    EXPECT_ASSERTION(nestingExecutor.getProxy().getAfterDocumentActionSignal(),
                     "Proxy executor isn't supposed to have subcribers.");
}

// It used to be found after the run had its new parent already.
TEST_F(DocumentOperationExecutorTest, AChangedOperationThatIsLeftOverFailsBeforeTheTreeIsTouched)
{
    const DOM::Document before(_document);
    auto operation = makeParentChange(UUID(), makeTestUUID(1));
    OperationUPtr changedOp = std::make_unique<CollaborationEngine::EmptyOperation>();
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(operation, changedOp), "!changedOp");
    EXPECT_TRUE(before == _document);
    EXPECT_EQ(Lines(), _observer->takeLines());
    EXPECT_EQ(0, _signalsCount);
}

TEST_F(DocumentOperationExecutorTest, NobodyMaySubscribeToTheProxy)
{
    DocumentOperationExecutor::ProxyOperationExecutor proxy(_executor);
    EXPECT_ASSERTION(proxy.getAfterDocumentActionSignal(), "Proxy executor isn't supposed to have subcribers.");
}

TEST_F(DocumentOperationExecutorTest, DoesNotKeepItsObserverAlive)
{
    const std::weak_ptr<TestSupport::RecordingObserver> observer(_observer);
    _observer.reset();
    EXPECT_TRUE(observer.expired());
}

TEST_F(DocumentOperationExecutorTest, TheAssertObserverFailsAtTheFirstChange)
{
    const auto observer = makeAssertExecutorNotificationObserver();
    DocumentOperationExecutor executor(_adapter, nullptr, observer);
    auto operation = makeParentChange(UUID(), makeTestUUID(1));
    OperationUPtr changedOp;
    EXPECT_ASSERTION(executor.executeAndChangeIfNeeded(operation, changedOp), "Unexpected observer call.");
}

TEST_F(DocumentOperationExecutorTest, WithoutAnObserverTextGoesOnSilentlyAndPropertiesFail)
{
    _observer.reset();
    using CollaborationEngine::InsertTag;
    using CollaborationEngine::ListModificationOperation;
    using Nested = ListModificationOperation<InsertTag>;
    const auto letter = std::make_shared<TextWithTombstonesItems>(TextWithTombstonesElementVector{short{'x'}});
    CollaborationEngine::ListMultirangeOperationImpl<Nested> insertion(
        std::vector<Nested>{Nested(makeFixedAddress(OperationDOMNodeType::TextWithTombstones),
                                   convertOperationNodeType(OperationDOMNodeType::TextWithTombstones), letter,
                                   CollaborationUtils::IndexRange<unsigned long>(3, 4))});
    execute(insertion);
    EXPECT_EQ("axb", cast<DOM::TextRun>(getTextRun()).getText());

    auto operation = makeParentChange(UUID(), makeTestUUID(1));
    OperationUPtr changedOp;
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(operation, changedOp), "plainPtr");
}

} // namespace Zem::DOMCollaboration
