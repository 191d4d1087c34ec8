#include "CE_TableMatrix.h"

#include "CE_OperationEquality.h"
#include "MatrixPairs.h"
#include "OperationNotation.h"
#include "TreeModel.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

ActionNames makeTableActionNames()
{
    ActionNames names = slotActionNames;
    names.push_back("setting");
    return names;
}

const ActionNames tableActionNames = makeTableActionNames();

SetRowOrColumnPropertyOperation makeSetting(unsigned long index, unsigned long propertyId)
{
    return SetRowOrColumnPropertyOperation(index, propertyId, makeSharedConst<IntValue>(0),
                                           makeSharedConst<IntValue>(static_cast<int>(index + propertyId)));
}

/// An operation on lines; one that is held down is a releasing.
template<class Tag>
OperationUPtr makeLineOperation(NestedTableOperation nestedOperation, bool isHeldDown = false)
{
    auto operation =
        std::make_unique<TableRowOrColumnOperation<Tag>>(tableAddress(), CellTableType, std::move(nestedOperation));
    Shadows shadows;
    shadows._holdersCount = isHeldDown ? 1 : 0;
    return applyShadows(std::move(operation), shadows);
}

/// Whatever carries the cells of the columns 0, 1 and 2, the last of which is removed.
template<class Tag>
std::vector<OperationUPtr> makeCarriers()
{
    RowOrColumn cells;
    cells.getCells().emplace_back(0, nullptr, false);
    cells.getCells().emplace_back(1, nullptr, false);
    cells.getCells().emplace_back(2, nullptr, true);
    const auto carried = makeSharedConst<RowOrColumn>(cells);
    std::vector<OperationUPtr> carriers;
    carriers.push_back(makeLineOperation<Tag>(RowOrColumnInsert(0, carried)));
    carriers.push_back(makeLineOperation<Tag>(RowOrColumnRemoveOperation(0, carried)));
    carriers.push_back(makeLineOperation<Tag>(RowOrColumnMark(0, carried)));
    carriers.push_back(makeLineOperation<Tag>(RowOrColumnRestore(0, carried)));
    carriers.push_back(makeLineOperation<Tag>(RowOrColumnLeaveTombstoneOperation(0, carried)));
    carriers.push_back(makeLineOperation<Tag>(RowOrColumnRestore(0, carried), true));
    return carriers;
}

/// The cells that travel with an operation, such as "0 1 2-", where 2 is removed.
std::string describeCells(const Operation& operation)
{
    std::string text;
    const NodeOperand operand = makeNodeOperand(operation);
    for (const CellData& cell : getRowOrColumn(makeTableOperand(operand)._nestedOperation)->getCells())
    {
        text += (text.empty() ? "" : " ") + std::to_string(cell.getIndex()) + (cell.isRemoved() ? "-" : "");
    }
    return text;
}

/// Expects what becomes of the cells past an operation on a crossing line, whatever carries them, on both axes.
void expectCellsPast(const NestedTableOperation& crossing, const std::string& cells, bool isHeldDown = false)
{
    const auto transformer = makeTreeTransformer();
    const auto expectCells = [&](const std::vector<OperationUPtr>& carriers, const Operation& second)
    {
        for (const OperationUPtr& carrier : carriers)
        {
            const OperationUPtr result = transformer->include(*carrier, second, TieResolveCondition::SecondWins);
            EXPECT_EQ(describeCells(*result), cells) << describe(*carrier) << " past " << describe(second);
        }
    };
    expectCells(makeCarriers<RowTag>(), *makeLineOperation<ColumnTag>(crossing, isHeldDown));
    expectCells(makeCarriers<ColumnTag>(), *makeLineOperation<RowTag>(crossing, isHeldDown));
}

} // namespace

TEST(LineMatrix, EachDefaultIsADecision)
{
    const Pairs slotsNeedNothingOfProperties = makePairs(slotActionNames, {"setting"});
    const Pairs theLineThatIsSetStaysDead = makePairs({"setting"}, {"leaving", "releasing"});
    EXPECT_EQ(tableActionNames.size(), tableActionsCount);
    EXPECT_EQ(findPairsWithoutRule<TableAction>(tableActionNames, &getLinePairRule),
              joinPairs({slotsNeedNothingOfProperties, theLineThatIsSetStaysDead}));
}

TEST(LineMatrix, SlotsPastSlotsAreLeftToTheSlotMatrix)
{
    EXPECT_EQ(findPairs<TableAction>(tableActionNames, &getLinePairRule,
                                     [](LinePairRule rule) { return rule == &includeLineSlotsPastSlots; }),
              makePairs(slotActionNames, slotActionNames));
}

TEST(LineMatrix, SettingsOfOtherPropertiesAndOfOtherLinesStayAsTheyAre)
{
    const auto transformer = makeTreeTransformer();
    const TableRowOperation first(tableAddress(), CellTableType, makeSetting(1, RowProperty));
    for (const auto& second : {makeSetting(1, RowProperty + 1), makeSetting(0, RowProperty)})
    {
        for (const auto tie : {TieResolveCondition::FirstWins, TieResolveCondition::SecondWins})
        {
            EXPECT_TRUE(areDeeplyEqual(
                *transformer->include(first, TableRowOperation(tableAddress(), CellTableType, second), tie), first));
        }
    }
}

TEST(CellsMatrix, EachDefaultIsADecision)
{
    const ActionNames carriers{"insertion", "removal", "marking", "restoring", "leaving", "releasing"};
    const Pairs movesAndSettingsCarryNoCells = makePairs({"move", "setting"}, tableActionNames);
    const Pairs theCrossingLineStaysDead = makePairs(carriers, {"leaving", "releasing"});
    const Pairs aPropertyOfALineIsNotOneOfItsCells = makePairs(carriers, {"setting"});
    EXPECT_EQ(findPairsWithoutRule<TableAction>(tableActionNames, &getCellsPairRule),
              joinPairs({movesAndSettingsCarryNoCells, theCrossingLineStaysDead, aPropertyOfALineIsNotOneOfItsCells}));
}

TEST(CellsMatrix, CellsFollowTheCrossingLinesWhateverCarriesThem)
{
    expectCellsPast(RowOrColumnInsert(1, nullptr), "0 2 3-");
    expectCellsPast(RowOrColumnRemoveOperation(1, nullptr), "0 1-");
    expectCellsPast(RowOrColumnMark(1, nullptr), "0 1- 2-");
    expectCellsPast(RowOrColumnRestore(2, nullptr), "0 1 2");
    expectCellsPast(RowOrColumnMoveOperation(2, -2), "0- 1 2");
    expectCellsPast(RowOrColumnLeaveTombstoneOperation(2, nullptr), "0 1 2-");
    expectCellsPast(RowOrColumnRestore(2, nullptr), "0 1 2-", true);
    expectCellsPast(makeSetting(2, RowProperty), "0 1 2-");
}

TEST(CellsMatrix, OnlyWhatComesBackTakesOverTheCellWhereTwoLinesCross)
{
    EXPECT_EQ(findPairs<TableAction>(tableActionNames, &getCellsPairRule,
                                     [](CellsPairRule rule) {
                                         return rule == &includeRestoredCellsPastInsertion ||
                                                rule == &includeRestoredCellsPastRestoring;
                                     }),
              makePairs({"restoring", "releasing"}, {"insertion", "restoring"}));
}

TEST(TableAction, IsThatOfTheSlotsOrTheSettingOfAProperty)
{
    Shadows held;
    held._holdersCount = 1;
    const std::vector<NestedTableOperation> nestedOperations{
        RowOrColumnInsert(1, nullptr),  RowOrColumnRemoveOperation(1, nullptr),         RowOrColumnMark(1, nullptr),
        RowOrColumnRestore(1, nullptr), RowOrColumnLeaveTombstoneOperation(1, nullptr), RowOrColumnMoveOperation(1, 1),
        makeSetting(1, RowProperty)};
    Pairs met;
    for (const NestedTableOperation& nested : nestedOperations)
    {
        for (const Shadows* shadows : {static_cast<const Shadows*>(nullptr), static_cast<const Shadows*>(&held)})
        {
            const auto slots = describeSlots(nested, shadows);
            const std::string expected =
                slots ? slotActionNames.at(static_cast<unsigned long>(slots->_action)) : "setting";
            EXPECT_EQ(tableActionNames.at(static_cast<unsigned long>(getTableAction(nested, shadows))), expected);
            met.insert(expected);
        }
    }
    EXPECT_EQ(met.size(), tableActionsCount);
}

} // namespace Zem::CollaborationEngine::Testing
