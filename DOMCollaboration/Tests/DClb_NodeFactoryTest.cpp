#include "DClb_NodeFactory.h"

#include "DClb_ExecutorFixture.h"
#include "DClb_NodeOperationExecutor.h"
#include "DClb_TextElement.h"
#include "NodeOperationExecutors/DClb_DocumentPropsOperationExecutor.h"
#include "NodeOperationExecutors/DClb_FieldBlockOperationExecutor.h"
#include "NodeOperationExecutors/DClb_ParagraphOperationExecutor.h"
#include "NodeOperationExecutors/DClb_RunOperationExecutor.h"
#include "NodeOperationExecutors/DClb_ScriptCollectionOperationExecutor.h"
#include "NodeOperationExecutors/DClb_SectionPropsOperationExecutor.h"
#include "NodeOperationExecutors/DClb_TextWithTombstonesOperationExecutor.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_ListMultirangeTransformers.h"
#include "CE_ListTransformers.h"
#include "CE_MapTransformers.h"
#include "CE_NodeAddressWithTransformationData.h"
#include "CE_SetPropertyTransformers.h"
#include "CE_TableTransformers.h"

#include <functional>
#include <map>

namespace Zem::DOMCollaboration
{

namespace
{

using namespace CollaborationEngine;

enum class Kind
{
    List,
    ListMultirange,
    Map,
    Table,
    SetProperty,
    Guarded
};

/// The kind of each node type, 0 to 34.
constexpr Kind kinds[] = {
    Kind::Guarded,     Kind::Guarded,     Kind::Guarded,     Kind::Guarded,     Kind::List,          Kind::Guarded,
    Kind::SetProperty, Kind::SetProperty, Kind::List,        Kind::SetProperty, Kind::List,          Kind::SetProperty,
    Kind::Table,       Kind::SetProperty, Kind::Guarded,     Kind::SetProperty, Kind::Guarded,       Kind::SetProperty,
    Kind::Guarded,     Kind::Map,         Kind::SetProperty, Kind::Guarded,     Kind::Guarded,       Kind::Guarded,
    Kind::SetProperty, Kind::Map,         Kind::Map,         Kind::SetProperty, Kind::Map,           Kind::SetProperty,
    Kind::Map,         Kind::SetProperty, Kind::Map,         Kind::Guarded,     Kind::ListMultirange};

template<class Position, class SameNode, class Ancestor>
void expectTransformers(const NodeFactory& factory)
{
    EXPECT_TRUE(cast<Position>(factory.createNodePositionTransformer().get()));
    EXPECT_TRUE(cast<SameNode>(factory.createSameNodeTransformer().get()));
    EXPECT_TRUE(cast<Ancestor>(factory.createAncestorTransformer().get()));
}

void expectGuards(const NodeFactory& factory)
{
    const SetPropertyOperation operation({}, 0, 0, std::make_shared<SimpleDataValue<int>>(),
                                         std::make_shared<SimpleDataValue<int>>());
    OperationNodeAddress address;
    NodeAddressWithTransformationData position{address};
    EXPECT_ASSERTION(factory.createNodePositionTransformer()->include(operation, position),
                     "Node position include transformation should never happen for this node type.");
    EXPECT_ASSERTION(factory.createNodePositionTransformer()->exclude(operation, position),
                     "Node position exclude transformation should never happen for this node type.");
    EXPECT_ASSERTION(
        factory.createSameNodeTransformer()->include({operation}, {operation}, TieResolveCondition::FirstWins),
        "Same node transformation should never happen for this node type.");
    EXPECT_ASSERTION(factory.createAncestorTransformer()->include(address, operation),
                     "Ancestor node transformation should never happen for this node type.");
}

void expectKind(const NodeFactory& factory, Kind kind)
{
    switch (kind)
    {
    case Kind::List:
        return expectTransformers<ListNodePositionTransformer, ListSameNodeTransformer,
                                  AncestorListModificationTransformer>(factory);
    case Kind::ListMultirange:
        return expectTransformers<ListMultirangeNodePositionTransformer, ListMultirangeSameNodeTransformer,
                                  AncestorListMultirangeModificationTransformer>(factory);
    case Kind::Map:
        return expectTransformers<MapNodePositionTransformer, MapSameNodeTransformer,
                                  AncestorMapModificationTransformer>(factory);
    case Kind::Table:
        return expectTransformers<TableNodePositionTransformer, TableSameNodeTransformer,
                                  AncestorTableModificationTransformer>(factory);
    case Kind::SetProperty:
        return expectTransformers<SetPropertyPositionTransformer, SetPropertyOperationTransformer,
                                  AncestorSetPropertyModificationTransformer>(factory);
    case Kind::Guarded:
        return expectGuards(factory);
    }
}

template<class Executor>
bool isExecutor(const NodeOperationExecutor& executor)
{
    return cast<Executor>(&executor) != nullptr;
}

class NodeFactoryTest : public ExecutorFixture
{
protected:
    template<class Transformer>
    static const SetPropertyDataMerger& getMerger(const SameNodeTransformer& transformer)
    {
        return cast<Transformer>(transformer).getMerger();
    }

    template<class Transformer>
    void expectMergersOfTheirOwn(OperationDOMNodeType nodeType)
    {
        const auto factory = _factories.at(convertOperationNodeType(nodeType));
        const auto first = factory->createSameNodeTransformer();
        const auto second = factory->createSameNodeTransformer();
        EXPECT_NE(first, second);
        EXPECT_NE(&getMerger<Transformer>(*first), &getMerger<Transformer>(*second));
    }

    std::vector<std::shared_ptr<const NodeFactory>> _factories = makeNodeTransformersFactory();
};

} // namespace

TEST_F(NodeFactoryTest, ThereIsOneForEachNodeTypeInAscendingOrder)
{
    ASSERT_EQ(35u, _factories.size());
    for (unsigned long nodeType = 0; nodeType < 35; ++nodeType)
    {
        EXPECT_EQ(nodeType, _factories[nodeType]->getNodeType());
    }
}

TEST_F(NodeFactoryTest, TransformersAreThoseOfTheKindOfNode)
{
    ASSERT_EQ(std::size(kinds), _factories.size());
    for (unsigned long nodeType = 0; nodeType < 35; ++nodeType)
    {
        SCOPED_TRACE(nodeType);
        expectKind(*_factories[nodeType], kinds[nodeType]);
    }
}

TEST_F(NodeFactoryTest, TransformersHaveMergersOfTheirOwn)
{
    expectMergersOfTheirOwn<SetPropertyOperationTransformer>(OperationDOMNodeType::Run);
    expectMergersOfTheirOwn<TableSameNodeTransformer>(OperationDOMNodeType::CellCollection);
}

TEST_F(NodeFactoryTest, ExecutorsServeTheNodeTypeOfTheirFactory)
{
    for (const auto& factory : _factories)
    {
        const auto executor = factory->createNodeOperationExecutor(_executor, _adapter, _observer);
        EXPECT_EQ(factory->getNodeType(), executor->getNodeType());
        EXPECT_EQ(_adapter.get(), &executor->getDomAdapter());
    }
}

TEST_F(NodeFactoryTest, ExecutorsDoNotKeepTheObserverAlive)
{
    std::vector<std::shared_ptr<NodeOperationExecutor>> executors;
    for (const auto& factory : _factories)
    {
        executors.push_back(factory->createNodeOperationExecutor(_executor, _adapter, _observer));
    }
    EXPECT_EQ(1, _observer.use_count());
}

TEST_F(NodeFactoryTest, AnExpiredObserverGivesAnExecutorWithoutOne)
{
    std::weak_ptr<ExecutorNotificationObserver> expired = std::make_shared<TestSupport::RecordingObserver>();
    const auto executor = _factories.at(convertOperationNodeType(OperationDOMNodeType::Run))
                              ->createNodeOperationExecutor(_executor, _adapter, expired);
    auto operation = makeSetProperty<PropertyId::ParentStyleId>(makeTextAddress(textRunPlace),
                                                                OperationDOMNodeType::Run, UUID(), makeTestUUID(1));
    OperationUPtr changedOp;
    EXPECT_ASSERTION(executor->executeAndChangeIfNeeded(operation, changedOp), "plainPtr");
}

TEST_F(NodeFactoryTest, AnExpiredObserverGivesATextExecutorThatGoesOnSilently)
{
    std::weak_ptr<ExecutorNotificationObserver> expired = std::make_shared<TestSupport::RecordingObserver>();
    constexpr auto nodeType = OperationDOMNodeType::TextWithTombstones;
    const auto executor =
        _factories.at(convertOperationNodeType(nodeType))->createNodeOperationExecutor(_executor, _adapter, expired);
    using Nested = ListModificationOperation<InsertTag>;
    const auto letter = std::make_shared<TextWithTombstonesItems>(TextWithTombstonesElementVector{short{'x'}});
    ListMultirangeOperationImpl<Nested> insertion(std::vector<Nested>{Nested(
        makeFixedAddress(nodeType), convertOperationNodeType(nodeType), letter, IndexRange<unsigned long>(3, 4))});
    OperationUPtr changedOp;
    EXPECT_FALSE(executor->executeAndChangeIfNeeded(insertion, changedOp));
    EXPECT_EQ("axb", cast<DOM::TextRun>(getTextRun()).getText());
    executor->reverse(insertion);
    EXPECT_EQ("ab", cast<DOM::TextRun>(getTextRun()).getText());
}

// A node type that gets an executor is to be entered here: one that is forgotten is found by this test alone.
TEST_F(NodeFactoryTest, EachNodeTypeHasTheExecutorOfItsOwnOrAGuard)
{
    const std::map<unsigned long, bool (*)(const NodeOperationExecutor&)> executors{
        {5, &isExecutor<SectionPropsOperationExecutor>},       {11, &isExecutor<FieldBlockOperationExecutor>},
        {15, &isExecutor<ParagraphOperationExecutor>},         {17, &isExecutor<RunOperationExecutor>},
        {24, &isExecutor<DocumentPropsOperationExecutor>},     {25, &isExecutor<ScriptCollectionOperationExecutor>},
        {34, &isExecutor<TextWithTombstonesOperationExecutor>}};
    for (const auto& factory : _factories)
    {
        SCOPED_TRACE(factory->getNodeType());
        const auto executor = factory->createNodeOperationExecutor(_executor, _adapter, _observer);
        const auto expected = executors.find(factory->getNodeType());
        if (expected != executors.end())
        {
            EXPECT_TRUE(expected->second(*executor));
            continue;
        }
        SetPropertyOperation operation({}, factory->getNodeType(), 0, makeValue(0), makeValue(0));
        OperationUPtr changedOp;
        EXPECT_ASSERTION(executor->executeAndChangeIfNeeded(operation, changedOp),
                         "Operation execution should never happen for this node type.");
    }
}

TEST_F(NodeFactoryTest, EachInterfaceIsVisitedOnceForEachNodeTypeInOrder)
{
    std::vector<unsigned long> expected(35);
    for (unsigned long nodeType = 0; nodeType < 35; ++nodeType)
    {
        expected[nodeType] = nodeType;
    }
    std::vector<unsigned long> visited;
    forAllNodePositionTransformers([&](const NodePositionTransformersFactory& factory)
                                   { visited.push_back(factory.getNodeType()); });
    EXPECT_EQ(expected, std::exchange(visited, {}));
    forAllSameNodePositionTransformers([&](const SameNodePositionTransformersFactory& factory)
                                       { visited.push_back(factory.getNodeType()); });
    EXPECT_EQ(expected, std::exchange(visited, {}));
    forAllNodeOperationExecutors([&](const NodeOperationExecutorsFactory& factory)
                                 { visited.push_back(factory.getNodeType()); });
    EXPECT_EQ(expected, visited);
}

} // namespace Zem::DOMCollaboration
