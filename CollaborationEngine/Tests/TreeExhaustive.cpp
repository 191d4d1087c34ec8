#include "TreeExhaustive.h"

#include "CE_NodeOperands.h"
#include "CE_TableSlots.h"

#include "Util_Cast.h"

namespace Zem::CollaborationEngine::Testing
{

std::string getSlotActionName(SlotAction action)
{
    const std::vector<std::string> names{"insertion", "removal",   "marking", "restoring",
                                         "leaving",   "releasing", "move"};
    return names.at(static_cast<unsigned long>(action));
}

std::string getLineAction(const Operation& operation)
{
    if (cast<CompositeOperation>(&operation) || cast<EmptyOperation>(&operation))
    {
        return "";
    }
    const NodeOperand operand = makeNodeOperand(operation);
    const auto* table = cast<TableOperation>(&operand._operation);
    if (!table || isShadowedForGood(operand))
    {
        return "";
    }
    return visitWith<std::string>(
        *table,
        [&](const auto& typed)
        {
            const bool isRow = std::is_same_v<std::decay_t<decltype(typed)>, TableRowOperation>;
            const auto slots = describeSlots(typed.getNestedOperation(), operand._shadows);
            return (isRow ? "row " : "column ") + (slots ? getSlotActionName(slots->_action) : "setting");
        });
}

std::string getName(const testing::TestParamInfo<TreePart>& part)
{
    switch (part.param)
    {
    case TreePart::List:
        return "List";
    case TreePart::Map:
        return "Map";
    case TreePart::Table:
        return "Table";
    case TreePart::TallTable:
        return "TallTable";
    }
    return "";
}

} // namespace Zem::CollaborationEngine::Testing
