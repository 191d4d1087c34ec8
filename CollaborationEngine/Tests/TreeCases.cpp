#include "TreeCases.h"

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using Insert = ListModificationOperation<InsertTag>;
using MarkAsRemoved = ListModificationOperation<MarkAsRemovedTag>;
using MapInsert = MapInsertOrRemoveOperation<MapInsertTag>;
using MapRemove = MapInsertOrRemoveOperation<MapRemoveTag>;
using LineInsert = TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>;
using LineMark = TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>;
using Range = IndexRange<unsigned long>;
using Operations = std::vector<OperationUPtr>;

template<class Nested>
void addMultirange(Operations& operations, Nested nested)
{
    operations.push_back(std::make_unique<ListMultirangeOperationImpl<Nested>>(std::vector<Nested>{std::move(nested)}));
}

void addPropertyOperations(Operations& operations, const OperationNodeAddress& address, const TreeElement& element,
                           int firstName)
{
    const auto add = [&](unsigned long property, auto oldValue, auto newValue)
    {
        using Value = SimpleDataValue<decltype(oldValue)>;
        operations.push_back(std::make_unique<SetPropertyOperation>(address, ElementType, property,
                                                                    makeSharedConst<Value>(std::move(oldValue)),
                                                                    makeSharedConst<Value>(std::move(newValue))));
    };
    add(WholeProperty, element._whole, firstName);
    add(PairProperty, element._pair, PairValue(firstName, element._pair.second));
    add(PairProperty, element._pair, PairValue(element._pair.first, firstName));
    add(WholeTextProperty, element._text, TreeText{TreeSlot{firstName, true, makeElement(firstName)}});
}

void addTextOperations(Operations& operations, const OperationNodeAddress& address, int firstName)
{
    addMultirange(operations, Insert(textAddress(address), ElementTextType,
                                     makeElementItems({makeElement(firstName + 1)}), Range::fromCount(1, 1)));
    addMultirange(operations, MarkAsRemoved(textAddress(address), ElementTextType, Range::fromCount(0, 1)));
}

void addElementOperations(Operations& operations, const OperationNodeAddress& address, const TreeElement& element,
                          int firstName)
{
    addPropertyOperations(operations, address, element, firstName);
    addTextOperations(operations, address, firstName);
}

void addListOperations(Operations& operations, unsigned long size, int firstName)
{
    for (unsigned long gap = 0; gap <= size; ++gap)
    {
        operations.push_back(std::make_unique<Insert>(listAddress(), ElementListType,
                                                      makeElementItems({makeElementWithText(firstName + 2)}),
                                                      Range::fromCount(gap, 1)));
    }
    for (unsigned long slot = 0; slot < size; ++slot)
    {
        for (unsigned long target = 0; target < size; ++target)
        {
            operations.push_back(
                std::make_unique<ListMoveOperation>(listAddress(), ElementListType, Range::fromCount(slot, 1),
                                                    static_cast<long>(target) - static_cast<long>(slot)));
        }
    }
}

template<class Tag>
OperationUPtr makeLine(typename TableRowOrColumnOperation<Tag>::NestedOperation nested)
{
    return std::make_unique<TableRowOrColumnOperation<Tag>>(tableAddress(), CellTableType, std::move(nested));
}

template<class Tag>
void addLineOperations(Operations& operations, const std::vector<TreeLine>& lines, unsigned long crossingCount,
                       int firstName)
{
    RowOrColumn inserted;
    inserted.setProps(makeSharedConst<SimpleDataValue<PairValue>>(PairValue(firstName + 3, 0)));
    for (unsigned long index = 0; index < crossingCount; ++index)
    {
        inserted.getCells().emplace_back(
            index, makeSharedConst<ElementValue>(makeElement(firstName + 4 + static_cast<int>(index))), false);
    }
    for (unsigned long gap = 0; gap <= lines.size(); ++gap)
    {
        operations.push_back(makeLine<Tag>(LineInsert(gap, makeSharedConst<RowOrColumn>(inserted))));
    }
    for (unsigned long index = 0; index < lines.size(); ++index)
    {
        operations.push_back(makeLine<Tag>(
            SetRowOrColumnPropertyOperation(index, RowProperty, makeSharedConst<IntValue>(lines[index]._property),
                                            makeSharedConst<IntValue>(firstName))));
        for (unsigned long target = 0; target < lines.size(); ++target)
        {
            if (target != index)
            {
                operations.push_back(makeLine<Tag>(
                    RowOrColumnMoveOperation(index, static_cast<long>(target) - static_cast<long>(index))));
            }
        }
    }
}

void addTableOperations(Operations& operations, const TreeTable& table, int firstName)
{
    addLineOperations<RowTag>(operations, table._rows, table._columns.size(), firstName);
    addLineOperations<ColumnTag>(operations, table._columns, table._rows.size(), firstName + 10);
    const auto getCell = [&](unsigned long row, unsigned long column) -> const TreeElement& {
        return table._cells.at({table._rows[row]._identity, table._columns[column]._identity});
    };
    addPropertyOperations(operations, cellAddress(0, 0), getCell(0, 0), firstName);
    addElementOperations(operations, cellAddress(1, 0), getCell(1, 0), firstName);
}

TreeTable makeTable(const std::vector<int>& rows, const std::vector<int>& columns)
{
    TreeTable table;
    for (const int row : rows)
    {
        table._rows.push_back(TreeLine{row, true, 0});
    }
    for (const int column : columns)
    {
        table._columns.push_back(TreeLine{column, true, 0});
        for (const int row : rows)
        {
            table._cells[{row, column}] = makeElementWithText(row * 100 + column);
        }
    }
    return table;
}

} // namespace

TreeElement makeElementWithText(int name)
{
    TreeElement element = makeElement(name);
    element._text.push_back(TreeSlot{name * 10, true, makeElement(name * 10)});
    return element;
}

TreeDocument makeSmallDocument(TreePart part)
{
    TreeDocument document;
    switch (part)
    {
    case TreePart::List:
        document._list = {TreeSlot{1, true, makeElementWithText(1)}, TreeSlot{2, true, makeElementWithText(2)},
                          TreeSlot{3, true, makeElementWithText(3)}};
        break;
    case TreePart::Map:
        document._map = {{"a", makeElementWithText(4)}, {"b", makeElementWithText(5)}};
        break;
    case TreePart::Table:
        document._table = makeTable({61, 62}, {71, 72});
        break;
    case TreePart::TallTable:
        document._table = makeTable({61, 62, 63}, {71, 72});
    }
    return document;
}

std::vector<OperationUPtr> makeTreeDeletions(const TreeDocument& document, TreePart part)
{
    Operations operations;
    switch (part)
    {
    case TreePart::List:
        for (unsigned long slot = 0; slot < document._list.size(); ++slot)
        {
            operations.push_back(
                std::make_unique<MarkAsRemoved>(listAddress(), ElementListType, Range::fromCount(slot, 1)));
        }
        operations.push_back(std::make_unique<MarkAsRemoved>(listAddress(), ElementListType,
                                                             Range::fromCount(0, document._list.size())));
        break;
    case TreePart::Map:
        for (const auto& entry : document._map)
        {
            operations.push_back(
                std::make_unique<MapRemove>(mapAddress(), ElementMapType, makeKey(entry.first), nullptr));
        }
        break;
    case TreePart::Table:
    case TreePart::TallTable:
        for (unsigned long index = 0; index < document._table._rows.size(); ++index)
        {
            operations.push_back(makeLine<RowTag>(LineMark(index, nullptr)));
        }
        for (unsigned long index = 0; index < document._table._columns.size(); ++index)
        {
            operations.push_back(makeLine<ColumnTag>(LineMark(index, nullptr)));
        }
    }
    return operations;
}

std::vector<OperationUPtr> makeTreeOperations(const TreeDocument& document, TreePart part, int firstName)
{
    Operations operations = makeTreeDeletions(document, part);
    switch (part)
    {
    case TreePart::List:
        addListOperations(operations, document._list.size(), firstName);
        for (unsigned long slot = 0; slot < document._list.size(); ++slot)
        {
            addElementOperations(operations, listElementAddress(slot), document._list[slot]._element, firstName);
        }
        break;
    case TreePart::Map:
        operations.push_back(std::make_unique<MapInsert>(mapAddress(), ElementMapType, makeKey("c"),
                                                         makeSharedConst<ElementValue>(makeElement(firstName + 2))));
        for (const auto& entry : document._map)
        {
            addElementOperations(operations, mapElementAddress(entry.first), entry.second, firstName);
        }
        break;
    case TreePart::Table:
    case TreePart::TallTable:
        addTableOperations(operations, document._table, firstName);
    }
    return operations;
}

std::vector<OperationUPtr> makeLineRemovals(const TreeTable& table)
{
    Operations operations;
    for (unsigned long index = 0; index < table._rows.size(); ++index)
    {
        operations.push_back(makeLine<RowTag>(RowOrColumnRemoveOperation(index, nullptr)));
    }
    for (unsigned long index = 0; index < table._columns.size(); ++index)
    {
        operations.push_back(makeLine<ColumnTag>(RowOrColumnRemoveOperation(index, nullptr)));
    }
    return operations;
}

} // namespace Zem::CollaborationEngine::Testing
