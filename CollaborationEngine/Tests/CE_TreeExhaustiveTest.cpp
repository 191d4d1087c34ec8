// All pairs of operations on small lists, maps and tables and on what is below them, both ties.

#include "CE_ListSlots.h"
#include "CE_MapMatrix.h"
#include "CE_NodeOperands.h"
#include "CE_OperationEquality.h"
#include "TreeExhaustive.h"

#include "Util_Cast.h"

#include <set>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using Pairs = std::set<std::string>;

std::string getMapKind(const NodeOperand& operand)
{
    const std::vector<std::string> names{"insertion", "removal", "leaving", "releasing"};
    return "map " + names.at(static_cast<unsigned long>(getMapAction(operand)));
}

/// Such as "text marking"; what lies in something dead is "shadowed".
std::string getKind(const Operation& operation)
{
    const NodeOperand operand = makeNodeOperand(operation);
    const bool isInDead = operand._shadows && !operand._shadows->_deadPlaces.empty();
    const std::string prefix = isInDead ? "shadowed " : "";
    if (cast<TableOperation>(&operand._operation))
    {
        return prefix + getLineAction(operation);
    }
    if (const auto* list = cast<ListOperation>(&operand._operation))
    {
        return prefix + "list " + getSlotActionName(describeSlots(*list, operand._shadows)._action);
    }
    if (const auto* text = cast<ListMultirangeOperation>(&operand._operation))
    {
        return prefix + "text " + getSlotActionName(describeSlots(*text, operand._shadows)._action);
    }
    if (const auto* setting = cast<SetPropertyOperation>(&operand._operation))
    {
        return prefix + (setting->getPropertyID() == WholeTextProperty ? "text setting" : "setting");
    }
    return prefix + getMapKind(operand);
}

Pairs getPairsThatDontComeBack(TreePart part)
{
    Pairs pairs{// The value that lost is gone.
                "setting past setting", "text setting past text setting",
                // A text that is replaced takes with it for good what was done in it.
                "text insertion past text setting", "text marking past text setting",
                "text restoring past text setting", "shadowed text insertion past shadowed text setting",
                "shadowed text marking past shadowed text setting", "shadowed text leaving past shadowed text setting",
                "shadowed text restoring past shadowed text setting"};
    const auto addSlots = [&](const std::string& slots)
    {
        // A gap at a slot that moves goes with one of its neighbours, and on the way back can't tell with which.
        pairs.insert(slots + " insertion past " + slots + " move");
        // A move that another one of the same slot has beaten stays lost.
        pairs.insert(slots + " move past " + slots + " move");
        // A releasing of one and a releasing of all can't tell, on the way back, which of them knew how many.
        pairs.insert(slots + " releasing past " + slots + " releasing");
    };
    switch (part)
    {
    case TreePart::List:
        addSlots("list");
        // What was split stays split.
        pairs.insert("list releasing past list insertion");
        pairs.insert("list releasing past list leaving");
        break;
    case TreePart::Map:
        // Of two values for a key one is lost, or its insertion has become a removal of the other's with an insertion.
        pairs.insert("map insertion past map insertion");
        pairs.insert("map releasing past map releasing");
        break;
    case TreePart::Table:
    case TreePart::TallTable:
        addSlots("row");
        addSlots("column");
        pairs.insert("row setting past row setting");
        pairs.insert("column setting past column setting");
    }
    return pairs;
}

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

// What an operation was comes back once the other one is taken back, but for what is decided to be so. Operations of
// several parts are left out: their parts come back each by itself.
TEST_P(TreeExhaustive, PastAnOperationAndItsReversalAnOperationIsItself)
{
    std::set<std::string> changed;
    forEachPair(
        [&](const TreeDocument& state, Operation& first, Operation& second, TieResolveCondition tie)
        {
            if (cast<CompositeOperation>(&first) || cast<CompositeOperation>(&second))
            {
                return;
            }
            const OperationUPtr pastSecond = _transformer->include(first, second, tie);
            const OperationUPtr back = _transformer->include(*pastSecond, *makeReversal(second), tie);
            // What has no effect is known by its description alone.
            const bool isBack = cast<ShadowedOperation>(&first) ? describe(*back) == describe(first)
                                                                : applied(state, *back) == applied(state, first);
            if (!isBack)
            {
                changed.insert(getKind(first) + " past " + getKind(second));
            }
        });
    EXPECT_EQ(changed, getPairsThatDontComeBack(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Trees, TreeExhaustive,
                         testing::Values(TreePart::List, TreePart::Map, TreePart::Table, TreePart::TallTable),
                         &getName);

} // namespace Zem::CollaborationEngine::Testing
