#include "Sharing/CS_ChangedNodes.h"

#include "Sharing/CS_NodeOperations.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;
using namespace NodeOperations;

template<class... Others>
std::vector<OperationUPtr> makeList(Others... operations)
{
    std::vector<OperationUPtr> list;
    (list.push_back(std::move(operations)), ...);
    return list;
}

OperationUPtr typeInCell(unsigned long row, unsigned long column)
{
    return inText(getCellText(row, column), TestSupport::insert(0, "{|x}"));
}

ChangedNodes makeNodes(const std::vector<OperationUPtr>& operations)
{
    ChangedNodes nodes;
    for (const OperationUPtr& operation : operations)
    {
        nodes.add(*operation);
    }
    return nodes;
}

/// Asks in both directions.
bool commute(const OperationUPtr& first, const OperationUPtr& second)
{
    const auto firstAlone = makeList(cloneOperation(*first));
    const auto secondAlone = makeList(cloneOperation(*second));
    const bool doCommute = makeNodes(firstAlone).commuteWith(*second);
    EXPECT_EQ(makeNodes(secondAlone).commuteWith(*first), doCommute);
    return doCommute;
}

} // namespace

TEST(ChangedNodes, TextsOfDifferentCellsCommute)
{
    EXPECT_TRUE(commute(typeInCell(0, 0), typeInCell(0, 1)));
    EXPECT_TRUE(commute(typeInCell(0, 0), typeInCell(1, 0)));
}

TEST(ChangedNodes, EditsOfOneTextDont)
{
    EXPECT_FALSE(commute(typeInCell(0, 0), typeInCell(0, 0)));
    EXPECT_FALSE(commute(TestSupport::insert(4, "x"), TestSupport::insert(9, "y")));
}

TEST(ChangedNodes, TextOfACellAndTheTextThatItsTableStandsInDont)
{
    EXPECT_FALSE(commute(typeInCell(0, 0), TestSupport::mark(0, 1)));
    EXPECT_FALSE(commute(typeInCell(0, 0), TestSupport::insert(9, "x")));
}

TEST(ChangedNodes, TextAndAPropertyOfAnElementOfItDont)
{
    EXPECT_FALSE(commute(TestSupport::insert(9, "x"), setRunSize(3, 12)));
    EXPECT_FALSE(commute(TestSupport::insert(9, "x"), setMarkSize(2, 12)));
    EXPECT_FALSE(commute(inText(getCellText(1, 1), TestSupport::mark(0, 1)), setComments({})));
}

TEST(ChangedNodes, SettingsOfOneNodeDont)
{
    EXPECT_FALSE(commute(setRunSize(3, 10), setRunSize(3, 12)));
    EXPECT_FALSE(commute(setTimeZone(60), setTracking(false, true)));
    EXPECT_FALSE(commute(insertScript("a", "1"), insertScript("b", "2")));
}

TEST(ChangedNodes, NodesWithoutAWordAboutTheirExecutorDont)
{
    const OperationUPtr ofACell = set<PropertyId::RunPropertyId>(getCellText(0, 0), OperationDOMNodeType::Cell,
                                                                 std::shared_ptr<DOM::RunProps>(), makeRunProps(12));
    EXPECT_FALSE(commute(ofACell, setTimeZone(60)));
}

TEST(ChangedNodes, ComposedOperationsDont)
{
    const OperationUPtr composite = std::make_unique<CompositeOperation>(makeList(typeInCell(0, 0), typeInCell(0, 1)));
    EXPECT_FALSE(commute(composite, typeInCell(1, 0)));
}

TEST(ChangedNodes, ShadowedOperationsDont)
{
    std::unique_ptr<AtomicOperation> original;
    cast<AtomicOperation>(*typeInCell(0, 0)).cloneTo(original);
    const OperationUPtr shadowed = std::make_unique<ShadowedOperation>(std::move(original));
    EXPECT_FALSE(commute(shadowed, typeInCell(1, 0)));
}

TEST(ChangedNodes, WhereNothingWasChangedEverythingCommutes)
{
    const auto nothing = makeList(OperationUPtr(std::make_unique<EmptyOperation>()));
    EXPECT_TRUE(makeNodes(nothing).commuteWith(*TestSupport::mark(0, 1)));
    EXPECT_TRUE(ChangedNodes().commuteWith(CompositeOperation(makeList(typeInCell(0, 0), typeInCell(0, 1)))));
}

TEST(ChangedNodes, WhatDoesNothingCommutesWithAllThatIsKnown)
{
    const auto known = makeList(setTimeZone(60));
    EXPECT_TRUE(makeNodes(known).commuteWith(EmptyOperation()));
    const auto unknown = makeList(OperationUPtr(std::make_unique<CompositeOperation>(makeList(typeInCell(0, 0)))));
    EXPECT_FALSE(makeNodes(unknown).commuteWith(EmptyOperation()));
}

TEST(ChangedNodes, AllMustCommute)
{
    const auto operations = makeList(typeInCell(0, 0), setTimeZone(60), typeInCell(0, 0), typeInCell(0, 1));
    const ChangedNodes nodes = makeNodes(operations);
    EXPECT_TRUE(nodes.commuteWith(*typeInCell(1, 0)));
    EXPECT_FALSE(nodes.commuteWith(*typeInCell(0, 0)));
    EXPECT_FALSE(nodes.commuteWith(*typeInCell(0, 1)));
    EXPECT_FALSE(nodes.commuteWith(*setTracking(false, true)));
}

TEST(ChangedNodes, OfMoreThanSixteenNodesNothingIsKnown)
{
    std::vector<OperationUPtr> settings;
    for (unsigned long slot = 100; slot < 116; ++slot)
    {
        settings.push_back(setRunSize(slot, 12));
        settings.push_back(setRunSize(slot, 12));
    }
    EXPECT_TRUE(makeNodes(settings).commuteWith(*setTimeZone(60)));
    settings.push_back(setRunSize(116, 12));
    EXPECT_FALSE(makeNodes(settings).commuteWith(*setTimeZone(60)));
}

} // namespace Zem::CollaborationSession
