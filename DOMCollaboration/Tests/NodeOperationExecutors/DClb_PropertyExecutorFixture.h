#pragma once

#include "DClb_ExecutorFixture.h"
#include "DClb_NodeFactory.h"
#include "DClb_NodeOperationExecutor.h"

#include "CE_ListOperation.h"

namespace Zem::DOMCollaboration
{

/// What the tests of executors of set-property operations on nodes of a text have in common. `Node` names the place of
/// the node in the flat text, its type, and what the observer is told of it.
template<class Node>
class PropertyExecutorFixture : public ExecutorFixture
{
protected:
    template<PropertyId id>
    CollaborationEngine::SetPropertyOperation
    makeOperation(PropertyValueType<id> oldValue, PropertyValueType<id> newValue, unsigned long place = Node::place)
    {
        return makeSetProperty<id>(makeTextAddress(place), Node::type, std::move(oldValue), std::move(newValue));
    }

    template<PropertyId id>
    Lines makeLines(const std::string& address = Node::address)
    {
        return {Node::notification + ("(" + address + ", ") + std::to_string(convertPropertyId(id)) + ")"};
    }

    /// A change of one property from a value to another, in both directions.
    template<PropertyId id>
    void expectPropertyLaws(PropertyValueType<id> oldValue, PropertyValueType<id> newValue)
    {
        auto operation = makeOperation<id>(std::move(oldValue), std::move(newValue));
        expectLaws(operation, makeLines<id>(), makeLines<id>());
    }

    /// What every such executor refuses; `foreignId` is a property that isn't of its nodes.
    void expectFailures(PropertyId ownId, PropertyId foreignId, const char* unknownIdMessage)
    {
        const DOM::Document before(_document);
        const unsigned long type = convertOperationNodeType(Node::type);
        // No property has a value of type char.
        const auto value = makeValue('?');
        CollaborationEngine::SetPropertyOperation unknown(makeTextAddress(Node::place), type,
                                                          convertPropertyId(foreignId), value, value);
        expectBothFail(unknown, unknownIdMessage);
        CollaborationEngine::SetPropertyOperation ofWrongClass(makeTextAddress(Node::place), type,
                                                               convertPropertyId(ownId), value, value);
        expectBothFail(ofWrongClass, "plainPtr");
        CollaborationEngine::ListMoveOperation move(makeTextAddress(Node::place), type,
                                                    CollaborationUtils::IndexRange<unsigned long>(0, 1), 1);
        expectBothFail(move, "setPropsOperation");
        expectForeignOperandTypeFails();
        EXPECT_TRUE(before == _document);
        EXPECT_EQ(Lines(), _observer->takeLines());
    }

    /// The document is changed, and then nobody is there to be told.
    void expectLiveObserverNeeded(CollaborationEngine::SetPropertyOperation operation)
    {
        _observer.reset();
        expectBothFail(operation, "plainPtr");
    }

private:
    void expectForeignOperandTypeFails()
    {
        const auto factory = makeNodeTransformersFactory().at(convertOperationNodeType(Node::type));
        const auto nodeExecutor = factory->createNodeOperationExecutor(_executor, _adapter, _observer);
        CollaborationEngine::SetPropertyOperation operation(makeTextAddress(Node::place),
                                                            convertOperationNodeType(OperationDOMNodeType::Cell), 0,
                                                            makeValue(0), makeValue(0));
        OperationUPtr changedOp;
        constexpr const char* message = "operation.getOperandType() == convertOperationNodeType(getNodeType())";
        EXPECT_ASSERTION(nodeExecutor->executeAndChangeIfNeeded(operation, changedOp), message);
        EXPECT_ASSERTION(nodeExecutor->reverse(operation), message);
    }

    void expectBothFail(CollaborationEngine::Operation& operation, const char* message)
    {
        OperationUPtr changedOp;
        EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(operation, changedOp), message);
        EXPECT_ASSERTION(_executor.reverse(operation), message);
    }
};

} // namespace Zem::DOMCollaboration
