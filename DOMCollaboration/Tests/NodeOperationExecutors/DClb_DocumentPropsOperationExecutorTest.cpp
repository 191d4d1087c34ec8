#include "DClb_ExecutorFixture.h"
#include "DClb_NodeFactory.h"
#include "DClb_NodeOperationExecutor.h"

#include "CE_MapOperation.h"

namespace Zem::DOMCollaboration
{

namespace
{

class DocumentPropsOperationExecutorTest : public ExecutorFixture
{
protected:
    template<PropertyId id>
    static CollaborationEngine::SetPropertyOperation makeOperation(PropertyValueType<id> oldValue,
                                                                   PropertyValueType<id> newValue)
    {
        return makeSetProperty<id>(makeFixedAddress(OperationDOMNodeType::DocumentProps),
                                   OperationDOMNodeType::DocumentProps, std::move(oldValue), std::move(newValue));
    }

    template<PropertyId id>
    void expectPropertyLaws(PropertyValueType<id> oldValue, PropertyValueType<id> newValue)
    {
        auto operation = makeOperation<id>(std::move(oldValue), std::move(newValue));
        const Lines lines{"onDocumentPropsChanged(" + std::to_string(convertPropertyId(id)) + ')'};
        expectLaws(operation, lines, lines);
    }

    static CollaborationEngine::SetPropertyOperation makeOperation(PropertyId id, OperationDOMNodeType nodeType)
    {
        const auto value = makeValue('?');
        return {makeFixedAddress(OperationDOMNodeType::DocumentProps), convertOperationNodeType(nodeType),
                convertPropertyId(id), value, value};
    }

    void expectBothFail(CollaborationEngine::SetPropertyOperation operation, const char* message)
    {
        const DOM::Document before(_document);
        OperationUPtr changedOp;
        EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(operation, changedOp), message);
        EXPECT_ASSERTION(_executor.reverse(operation), message);
        EXPECT_TRUE(before == _document);
    }
};

} // namespace

TEST_F(DocumentPropsOperationExecutorTest, SetsChangesTracking)
{
    expectPropertyLaws<PropertyId::ChangesTrackingEnabledId>(false, true);
    EXPECT_TRUE(_document.isChangesTrackingEnabled());
}

TEST_F(DocumentPropsOperationExecutorTest, SetsDefaultSectionProps)
{
    DOM::SectionProps props;
    props._columnsCount = 3;
    expectPropertyLaws<PropertyId::SectionPropsId>(_document.getDefaultSectionProps(), props);
    EXPECT_TRUE(props == _document.getDefaultSectionProps());
}

TEST_F(DocumentPropsOperationExecutorTest, SetsTimeZone)
{
    expectPropertyLaws<PropertyId::DocumentTimeZoneId>(DOM::TimeZone(0), DOM::TimeZone(120));
    EXPECT_EQ(120, _document.getTimeZone().getOffset());
}

TEST_F(DocumentPropsOperationExecutorTest, UnknownPropertyFailsBeforeAnyChange)
{
    expectBothFail(makeOperation(PropertyId::RunPropertyId, OperationDOMNodeType::DocumentProps),
                   "Unrecognized PropertyIdType");
    EXPECT_EQ(Lines(), _observer->takeLines());
}

TEST_F(DocumentPropsOperationExecutorTest, WrongValueClassFails)
{
    for (const PropertyId id :
         {PropertyId::ChangesTrackingEnabledId, PropertyId::SectionPropsId, PropertyId::DocumentTimeZoneId})
    {
        expectBothFail(makeOperation(id, OperationDOMNodeType::DocumentProps), "plainPtr");
    }
    EXPECT_EQ(Lines(), _observer->takeLines());
}

TEST_F(DocumentPropsOperationExecutorTest, AnotherKindOfOperationIsABadCast)
{
    CollaborationEngine::MapLeaveRemovedOperation operation(
        makeFixedAddress(OperationDOMNodeType::DocumentProps),
        convertOperationNodeType(OperationDOMNodeType::DocumentProps), nullptr, nullptr);
    OperationUPtr changedOp;
    EXPECT_THROW(_executor.executeAndChangeIfNeeded(operation, changedOp), std::bad_cast);
    EXPECT_THROW(_executor.reverse(operation), std::bad_cast);
}

TEST_F(DocumentPropsOperationExecutorTest, RefusesAnotherOperandType)
{
    const auto factory =
        makeNodeTransformersFactory().at(convertOperationNodeType(OperationDOMNodeType::DocumentProps));
    const auto nodeExecutor = factory->createNodeOperationExecutor(_executor, _adapter, _observer);
    auto operation = makeOperation(PropertyId::SectionPropsId, OperationDOMNodeType::SectionTag);
    OperationUPtr changedOp;
    constexpr const char* message =
        "operation.getOperandType() == convertOperationNodeType(OperationDOMNodeType::DocumentProps)";
    EXPECT_ASSERTION(nodeExecutor->executeAndChangeIfNeeded(operation, changedOp), message);
    EXPECT_ASSERTION(nodeExecutor->reverse(operation), message);
}

TEST_F(DocumentPropsOperationExecutorTest, NeedsALiveObserver)
{
    _observer.reset();
    auto operation = makeOperation<PropertyId::ChangesTrackingEnabledId>(false, true);
    OperationUPtr changedOp;
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(operation, changedOp), "plainPtr");
    EXPECT_ASSERTION(_executor.reverse(operation), "plainPtr");
}

} // namespace Zem::DOMCollaboration
