#include "TreeReplica.h"

#include "CE_InverseOperation.h"
#include "CE_MultirangeOperationUtils.h"

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using Insert = ListModificationOperation<InsertTag>;
using MarkAsRemoved = ListModificationOperation<MarkAsRemovedTag>;
using Range = IndexRange<unsigned long>;

} // namespace

OperationUPtr setWhole(OperationNodeAddress address, int oldValue, int newValue, Operation::Id id)
{
    OperationUPtr operation = SetPropertyOperation::makeNewSetPropertyOperation(
        std::move(address), ElementType, WholeProperty, std::make_unique<IntValue>(oldValue),
        std::make_unique<IntValue>(newValue));
    operation->setIDIfNeeded(id);
    return operation;
}

OperationUPtr insertText(OperationNodeAddress element, unsigned long gap, int name, Operation::Id id)
{
    OperationUPtr operation = MultirangeOperationUtils::makeMultirangeOperationFromSingle(
        Insert(textAddress(std::move(element)), ElementTextType, makeElementItems({makeElement(name)}),
               Range::fromCount(gap, 1)));
    operation->setIDIfNeeded(id);
    return operation;
}

OperationUPtr markText(OperationNodeAddress element, unsigned long slot)
{
    return MultirangeOperationUtils::makeMultirangeOperationFromSingle(
        MarkAsRemoved(textAddress(std::move(element)), ElementTextType, Range::fromCount(slot, 1)));
}

OperationNodeAddress textElementAddress(OperationNodeAddress element, unsigned long slot)
{
    return textAddress(std::move(element)).appendItems(NodeAddressing::AddressInList(slot));
}

OperationUPtr markElement(unsigned long slot)
{
    return std::make_unique<MarkAsRemoved>(listAddress(), ElementListType, Range::fromCount(slot, 1));
}

OperationUPtr insertKey(const std::string& key, TreeElement value)
{
    return std::make_unique<MapInsertOrRemoveOperation<MapInsertTag>>(mapAddress(), ElementMapType, makeKey(key),
                                                                      makeSharedConst<ElementValue>(std::move(value)));
}

OperationUPtr removeKey(const std::string& key)
{
    return std::make_unique<MapInsertOrRemoveOperation<MapRemoveTag>>(mapAddress(), ElementMapType, makeKey(key),
                                                                      nullptr);
}

OperationUPtr row(TableRowOperation::NestedOperation nested)
{
    return std::make_unique<TableRowOperation>(tableAddress(), CellTableType, std::move(nested));
}

OperationUPtr column(TableColumnOperation::NestedOperation nested)
{
    return std::make_unique<TableColumnOperation>(tableAddress(), CellTableType, std::move(nested));
}

TreeReplica::TreeReplica()
    : TreeReplica([](TreeDocument& document) { return std::make_unique<TreeExecutor>(document); })
{
}

TreeReplica::TreeReplica(MakeExecutor makeExecutor)
    : _makeExecutor(std::move(makeExecutor))
{
}

void TreeReplica::run(OperationUPtr operation)
{
    BaseOperationExecutor executor(_makeExecutor(_document), _transformer);
    OperationUPtr changedOp;
    const bool isChanged = executor.executeAndChangeIfNeeded(*operation, changedOp);
    _history.push_back(isChanged ? std::move(changedOp) : std::move(operation));
}

OperationUPtr TreeReplica::pastHistory(OperationUPtr operation, std::size_t begin) const
{
    for (std::size_t index = begin; index < _history.size(); ++index)
    {
        operation = _transformer->include(*operation, *_history[index], TieResolveCondition::SecondWins);
    }
    return operation;
}

OperationUPtr TreeReplica::makeUndoOf(std::size_t index) const
{
    return pastHistory(makeUndo(*_history[index], *_transformer), index + 1);
}

std::string textOf(const TreeElement& element)
{
    std::string text;
    for (const TreeSlot& slot : element._text)
    {
        text += (slot._isLive ? std::to_string(slot._identity) : "dead") + " ";
    }
    return text;
}

} // namespace Zem::CollaborationEngine::Testing
