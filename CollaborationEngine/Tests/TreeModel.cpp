#include "TreeModel.h"

#include "CE_ListMultirangeTransformers.h"
#include "CE_ListTransformers.h"
#include "CE_MapTransformers.h"
#include "CE_SetPropertyTransformers.h"
#include "CE_TableTransformers.h"

#include "Util_Assert.h"

#include <algorithm>

namespace Zem::CollaborationEngine::Testing
{

bool operator==(const TreeElement& left, const TreeElement& right)
{
    return left._name == right._name && left._whole == right._whole && left._pair == right._pair &&
           left._text == right._text;
}

bool operator==(const TreeSlot& left, const TreeSlot& right)
{
    return left._identity == right._identity && left._isLive == right._isLive &&
           (!left._isLive || left._element == right._element);
}

namespace
{

using Range = IndexRange<unsigned long>;
using FixedChunk = OperationNodeAddress::FixedChunk;
using NodeAddressing::AddressInList;
using NodeAddressing::AddressInMap;
using NodeAddressing::AddressInTable;

std::string toString(const TreeText& text);

std::string toString(const TreeElement& element)
{
    return std::to_string(element._name) + "(" + std::to_string(element._whole) + " " +
           std::to_string(element._pair.first) + "/" + std::to_string(element._pair.second) + " " +
           toString(element._text) + ")";
}

std::string toString(const TreeText& text)
{
    std::string result = "{";
    for (const TreeSlot& slot : text)
    {
        result += slot._isLive ? toString(slot._element) + " " : "[" + std::to_string(slot._identity) + "] ";
    }
    return result + "}";
}

std::string toString(const std::vector<TreeLine>& lines)
{
    std::string result;
    for (const TreeLine& line : lines)
    {
        result +=
            (line._isLive ? "" : "dead ") + std::to_string(line._identity) + ":" + std::to_string(line._property) + " ";
    }
    return result;
}

/// The address is followed chunk by chunk; whatever isn't there, or is dead, fails an assertion.
class Walk
{
public:
    Walk(TreeDocument& document, const OperationNodeAddress& address)
        : _document(document)
    {
        for (const auto& chunk : address.getItems())
        {
            boost::apply_visitor([&](const auto& step) { go(step); }, chunk);
        }
    }

    TreeElement& getElement() const
    {
        return derefPtr(_element);
    }

    TreeText& getText() const
    {
        return derefPtr(_text);
    }

private:
    void go(const FixedChunk& step)
    {
        if (_element)
        {
            ZEM_ASSERT(step.getNodeType() == ElementTextType);
            _text = &_element->_text;
            _element = nullptr;
            return;
        }
        _text = step.getNodeType() == ElementListType ? &_document._list : nullptr;
    }

    void go(const AddressInList& step)
    {
        ZEM_ASSERT(_text && step.getIndex() < _text->size());
        TreeSlot& slot = (*_text)[step.getIndex()];
        ZEM_ASSERT(slot._isLive);
        _element = &slot._element;
        _text = nullptr;
    }

    void go(const AddressInMap& step)
    {
        const auto entry = _document._map.find(cast<KeyValue>(derefPtr(step.getKey())).getValue());
        ZEM_ASSERT(entry != _document._map.end());
        _element = &entry->second;
    }

    void go(const AddressInTable& step)
    {
        TreeTable& table = _document._table;
        ZEM_ASSERT(step.getRow().get() < table._rows.size() && step.getColumn().get() < table._columns.size());
        const TreeLine& row = table._rows[step.getRow().get()];
        const TreeLine& column = table._columns[step.getColumn().get()];
        ZEM_ASSERT(row._isLive && column._isLive);
        _element = &table._cells[{row._identity, column._identity}];
    }

    TreeDocument& _document;
    TreeElement* _element = nullptr;
    TreeText* _text = nullptr;
};

const std::vector<TreeElement>& getElements(const SharedConstPtr<ItemsCollection>& data)
{
    return cast<ElementItems>(derefPtr(data)).getCollection();
}

/// The two directions of what is done to a list of slots.
class SlotsExecutor
{
public:
    SlotsExecutor(TreeText& text, bool isReverse)
        : _text(text)
        , _isReverse(isReverse)
    {
    }

    void run(ListModificationOperation<InsertTag>& operation) const
    {
        _isReverse ? erase(operation) : insert(operation);
    }

    void run(ListModificationOperation<RemoveTag>& operation) const
    {
        ZEM_ASSERT(!_isReverse);
        erase(operation);
    }

    void run(ListModificationOperation<MarkAsRemovedTag>& operation) const
    {
        _isReverse ? restore(operation) : mark(operation);
    }

    void run(ListModificationOperation<RestoreTag>& operation) const
    {
        _isReverse ? mark(operation) : restore(operation);
    }

    void run(ListLeaveTombstonesOperation& operation) const
    {
        for (unsigned long index = operation.getRange().getBegin(); index < operation.getRange().getEnd(); ++index)
        {
            ZEM_ASSERT(!at(index)._isLive);
        }
    }

    void run(ListMoveOperation& operation) const
    {
        const unsigned long slot = operation.getRange().getBegin();
        const unsigned long target = slot + static_cast<unsigned long>(operation.getOffset());
        ZEM_ASSERT(slot < _text.size() && target < _text.size());
        const TreeSlot moved = at(_isReverse ? target : slot);
        _text.erase(_text.begin() + static_cast<long>(_isReverse ? target : slot));
        _text.insert(_text.begin() + static_cast<long>(_isReverse ? slot : target), moved);
    }

    template<class T>
    void run(ListMultirangeOperationImpl<T>& operation) const
    {
        std::vector<T>& nestedOperations = operation.getNestedOperations();
        if (!_isReverse)
        {
            std::for_each(nestedOperations.begin(), nestedOperations.end(), [&](T& nested) { run(nested); });
            return;
        }
        std::for_each(nestedOperations.rbegin(), nestedOperations.rend(), [&](T& nested) { run(nested); });
    }

private:
    TreeSlot& at(unsigned long index) const
    {
        ZEM_ASSERT(index < _text.size());
        return _text[index];
    }

    template<class T>
    void insert(T& operation) const
    {
        ZEM_ASSERT(operation.getRange().getBegin() <= _text.size());
        std::vector<TreeSlot> inserted;
        for (const TreeElement& element : getElements(operation.getData()))
        {
            inserted.push_back(TreeSlot{element._name, true, element});
        }
        ZEM_ASSERT(inserted.size() == operation.getRange().getCount());
        _text.insert(_text.begin() + static_cast<long>(operation.getRange().getBegin()), inserted.begin(),
                     inserted.end());
    }

    template<class T>
    void erase(T& operation) const
    {
        const Range& range = operation.getRange();
        ZEM_ASSERT(range.getEnd() <= _text.size());
        const auto begin = _text.begin() + static_cast<long>(range.getBegin());
        std::vector<TreeElement> elements;
        std::for_each(begin, begin + static_cast<long>(range.getCount()),
                      [&](const TreeSlot& slot) { elements.push_back(slot._element); });
        operation.setData(makeElementItems(std::move(elements)));
        _text.erase(begin, begin + static_cast<long>(range.getCount()));
    }

    template<class T>
    void mark(T& operation) const
    {
        std::vector<TreeElement> elements;
        for (unsigned long index = operation.getRange().getBegin(); index < operation.getRange().getEnd(); ++index)
        {
            TreeSlot& slot = at(index);
            ZEM_ASSERT(slot._isLive);
            elements.push_back(slot._element);
            slot = TreeSlot{slot._identity, false, {}};
        }
        operation.setData(makeElementItems(std::move(elements)));
    }

    template<class T>
    void restore(T& operation) const
    {
        const std::vector<TreeElement>& elements = getElements(operation.getData());
        ZEM_ASSERT(elements.size() == operation.getRange().getCount());
        for (unsigned long index = 0; index < elements.size(); ++index)
        {
            TreeSlot& slot = at(operation.getRange().getBegin() + index);
            ZEM_ASSERT(!slot._isLive && slot._identity == elements[index]._name);
            slot = TreeSlot{slot._identity, true, elements[index]};
        }
    }

    TreeText& _text;
    bool _isReverse;
};

/// The two directions of what is done to rows or columns. Only a marking captures data, and not the reversal of a
/// restoring: that would forget the cells whose crossing line is dead.
class LinesExecutor
{
public:
    LinesExecutor(TreeTable& table, bool areRows, bool isReverse)
        : _table(table)
        , _lines(areRows ? table._rows : table._columns)
        , _crossing(areRows ? table._columns : table._rows)
        , _areRows(areRows)
        , _isReverse(isReverse)
    {
    }

    void run(TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>& operation) const
    {
        const unsigned long index = operation.getIndex();
        if (_isReverse)
        {
            erase(index);
            return;
        }
        ZEM_ASSERT(index <= _lines.size());
        _lines.insert(_lines.begin() + static_cast<long>(index), TreeLine{});
        bringIn(_lines[index], derefPtr(operation.getRowOrColumn()));
    }

    void run(TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>& operation) const
    {
        _isReverse ? restore(operation) : mark(operation);
    }

    void run(TableRowOrColumnListModificationOperation<RowOrColumnRestoreOperationTag>& operation) const
    {
        _isReverse ? mark(operation) : restore(operation);
    }

    void run(RowOrColumnRemoveOperation& operation) const
    {
        ZEM_ASSERT(!_isReverse);
        erase(operation.getIndex());
    }

    void run(RowOrColumnMoveOperation& operation) const
    {
        const unsigned long index = operation.getIndex();
        const unsigned long target = index + static_cast<unsigned long>(operation.getOffset());
        ZEM_ASSERT(index < _lines.size() && target < _lines.size());
        const TreeLine moved = _lines[_isReverse ? target : index];
        _lines.erase(_lines.begin() + static_cast<long>(_isReverse ? target : index));
        _lines.insert(_lines.begin() + static_cast<long>(_isReverse ? index : target), moved);
    }

    void run(RowOrColumnLeaveTombstoneOperation& operation) const
    {
        ZEM_ASSERT(!at(operation.getIndex())._isLive);
    }

    void run(SetRowOrColumnPropertyOperation& operation) const
    {
        TreeLine& line = at(operation.getIndex());
        ZEM_ASSERT(line._isLive);
        line._property = getSimpleDataValue<int>(_isReverse ? operation.getOldValue() : operation.getNewValue());
    }

private:
    using Key = std::pair<int, int>;

    TreeLine& at(unsigned long index) const
    {
        ZEM_ASSERT(index < _lines.size());
        return _lines[index];
    }

    Key makeCellKey(const TreeLine& line, const TreeLine& crossing) const
    {
        return _areRows ? Key(line._identity, crossing._identity) : Key(crossing._identity, line._identity);
    }

    void erase(unsigned long index) const
    {
        takeOut(at(index));
        _lines.erase(_lines.begin() + static_cast<long>(index));
    }

    template<class T>
    void mark(T& operation) const
    {
        TreeLine& line = at(operation.getIndex());
        ZEM_ASSERT(line._isLive);
        SharedConstPtr<RowOrColumn> taken = takeOut(line);
        if (!_isReverse)
        {
            operation.setRowOrColumn(std::move(taken));
        }
        line = TreeLine{line._identity, false, 0};
    }

    template<class T>
    void restore(T& operation) const
    {
        TreeLine& line = at(operation.getIndex());
        ZEM_ASSERT(!line._isLive);
        bringIn(line, derefPtr(operation.getRowOrColumn()));
    }

    SharedConstPtr<RowOrColumn> takeOut(TreeLine& line) const
    {
        RowOrColumn taken;
        taken.setProps(makeSharedConst<SimpleDataValue<PairValue>>(PairValue(line._identity, line._property)));
        for (unsigned long index = 0; index < _crossing.size(); ++index)
        {
            const auto cell = _table._cells.find(makeCellKey(line, _crossing[index]));
            if (cell != _table._cells.end())
            {
                ZEM_ASSERT(_crossing[index]._isLive);
                taken.getCells().emplace_back(index, makeSharedConst<ElementValue>(cell->second), false);
                _table._cells.erase(cell);
            }
        }
        return makeSharedConst<RowOrColumn>(std::move(taken));
    }

    void bringIn(TreeLine& line, const RowOrColumn& data) const
    {
        const PairValue& props = getSimpleDataValue<PairValue>(derefPtr(data.getProps()));
        line = TreeLine{props.first, true, props.second};
        for (const CellData& cell : data.getCells())
        {
            ZEM_ASSERT(cell.getIndex() < _crossing.size());
            ZEM_ASSERT(cell.isRemoved() == !_crossing[cell.getIndex()]._isLive);
            if (!cell.isRemoved())
            {
                _table._cells[makeCellKey(line, _crossing[cell.getIndex()])] =
                    getSimpleDataValue<TreeElement>(derefPtr(cell.getData()));
            }
        }
    }

    TreeTable& _table;
    std::vector<TreeLine>& _lines;
    std::vector<TreeLine>& _crossing;
    bool _areRows;
    bool _isReverse;
};

class NodeExecutor
{
public:
    NodeExecutor(TreeDocument& document, bool isReverse)
        : _document(document)
        , _isReverse(isReverse)
    {
    }

    void run(AtomicOperation& operation) const
    {
        auto& hierarchical = cast<HierarchicalOperation>(operation);
        if (auto* table = cast<TableOperation>(&hierarchical))
        {
            visitWith(*table, [&](auto& typed) { runTable(typed); });
        }
        else if (auto* map = cast<MapOperation>(&hierarchical))
        {
            visitWith(*map, [&](auto& typed) { runMap(typed); });
        }
        else if (auto* property = cast<SetPropertyOperation>(&hierarchical))
        {
            runProperty(*property);
        }
        else
        {
            const SlotsExecutor slots(Walk(_document, hierarchical.getNodeAddress()).getText(), _isReverse);
            if (auto* list = cast<ListOperation>(&hierarchical))
            {
                visitWith(*list, [&](auto& typed) { slots.run(typed); });
                return;
            }
            visitWith(cast<ListMultirangeOperation>(hierarchical), [&](auto& typed) { slots.run(typed); });
        }
    }

private:
    template<class Tag>
    void runTable(TableRowOrColumnOperation<Tag>& operation) const
    {
        const LinesExecutor lines(_document._table, std::is_same_v<Tag, RowTag>, _isReverse);
        boost::apply_visitor([&](auto& nested) { lines.run(nested); }, operation.getNestedOperation());
    }

    static const std::string& getKey(const MapOperation& operation)
    {
        return cast<KeyValue>(derefPtr(operation.getKey())).getValue();
    }

    template<class Tag>
    void runMap(MapInsertOrRemoveOperation<Tag>& operation) const
    {
        const bool inserts = std::is_same_v<Tag, MapInsertTag> != _isReverse;
        const auto entry = _document._map.find(getKey(operation));
        if (inserts)
        {
            ZEM_ASSERT(entry == _document._map.end());
            _document._map[getKey(operation)] = getSimpleDataValue<TreeElement>(derefPtr(operation.getData()));
            return;
        }
        ZEM_ASSERT(entry != _document._map.end());
        operation.setData(makeSharedConst<ElementValue>(entry->second));
        _document._map.erase(entry);
    }

    void runMap(MapLeaveRemovedOperation& operation) const
    {
        ZEM_ASSERT(_document._map.find(getKey(operation)) == _document._map.end());
    }

    void runProperty(SetPropertyOperation& operation) const
    {
        TreeElement& element = Walk(_document, operation.getNodeAddress()).getElement();
        const DataValue& value = _isReverse ? operation.getOldValue() : operation.getNewValue();
        switch (operation.getPropertyID())
        {
        case WholeProperty:
            element._whole = getSimpleDataValue<int>(value);
            return;
        case PairProperty:
            element._pair = getSimpleDataValue<PairValue>(value);
            return;
        case WholeTextProperty:
        {
            const TreeText replaced = element._text;
            element._text = getSimpleDataValue<TreeText>(value);
            if (!_isReverse)
            {
                operation.setOldValue(makeSharedConst<SimpleDataValue<TreeText>>(replaced));
            }
            return;
        }
        default:
            ZEM_FAIL("An element has no such property.");
        }
    }

    TreeDocument& _document;
    bool _isReverse;
};

} // namespace

std::string toString(const TreeDocument& document)
{
    std::string result = "list " + toString(document._list) + "\nmap ";
    for (const auto& entry : document._map)
    {
        result += entry.first + "=" + toString(entry.second) + " ";
    }
    result += "\nrows " + toString(document._table._rows) + " columns " + toString(document._table._columns) + "cells ";
    for (const auto& cell : document._table._cells)
    {
        result += std::to_string(cell.first.first) + "," + std::to_string(cell.first.second) + "=" +
                  toString(cell.second) + " ";
    }
    return result;
}

bool TreeExecutor::executeAndChangeIfNeeded(AtomicOperation& operation, OperationUPtr&)
{
    NodeExecutor(_document, false).run(operation);
    return false;
}

void TreeExecutor::reverse(AtomicOperation& operation)
{
    NodeExecutor(_document, true).run(operation);
}

std::unique_ptr<DataValue> PairMerger::getMergedValue(const DataValue& value, const DataValue& replacement,
                                                      const DataValue& expected, const DataValue& actual) const
{
    PairValue merged = getSimpleDataValue<PairValue>(value);
    const PairValue& other = getSimpleDataValue<PairValue>(replacement);
    const PairValue& before = getSimpleDataValue<PairValue>(expected);
    const PairValue& after = getSimpleDataValue<PairValue>(actual);
    merged.first = before.first == after.first ? other.first : merged.first;
    merged.second = before.second == after.second ? other.second : merged.second;
    return std::make_unique<SimpleDataValue<PairValue>>(merged);
}

std::shared_ptr<HierarchicalOperationTransformer> makeTreeTransformer()
{
    auto merger = std::make_shared<SetPropertyDataMergerImpl>();
    merger->registerDataMerger(WholeTextProperty, std::make_shared<SimpleDataMerger>());
    merger->registerDataMerger(WholeProperty, std::make_shared<SimpleDataMerger>());
    merger->registerDataMerger(PairProperty, std::make_shared<PairMerger>());
    merger->registerDataMerger(RowProperty, std::make_shared<SimpleDataMerger>());
    auto transformer = std::make_shared<HierarchicalOperationTransformer>();
    const auto add = [&](unsigned long nodeType, auto sameNode, auto ancestor)
    {
        transformer->registerSameNodeTransformer(nodeType, sameNode);
        transformer->registerAdressModifierTransformer(nodeType, ancestor);
    };
    add(ElementListType, std::make_shared<ListSameNodeTransformer>(),
        std::make_shared<AncestorListModificationTransformer>());
    add(ElementTextType, std::make_shared<ListMultirangeSameNodeTransformer>(),
        std::make_shared<AncestorListMultirangeModificationTransformer>());
    add(ElementType, std::make_shared<SetPropertyOperationTransformer>(merger),
        std::make_shared<AncestorSetPropertyModificationTransformer>());
    add(ElementMapType, std::make_shared<MapSameNodeTransformer>(),
        std::make_shared<AncestorMapModificationTransformer>());
    add(CellTableType, std::make_shared<TableSameNodeTransformer>(merger),
        std::make_shared<AncestorTableModificationTransformer>());
    return transformer;
}

std::unique_ptr<PositionTransformer> makeTreePositionTransformer()
{
    auto transformer = std::make_unique<PositionTransformer>();
    transformer->registerNodePositionTransformer(ElementListType, std::make_shared<ListNodePositionTransformer>());
    transformer->registerNodePositionTransformer(ElementTextType,
                                                 std::make_shared<ListMultirangeNodePositionTransformer>());
    transformer->registerNodePositionTransformer(ElementType, std::make_shared<SetPropertyPositionTransformer>());
    transformer->registerNodePositionTransformer(ElementMapType, std::make_shared<MapNodePositionTransformer>());
    transformer->registerNodePositionTransformer(CellTableType, std::make_shared<TableNodePositionTransformer>());
    return transformer;
}

OperationNodeAddress listAddress()
{
    return OperationNodeAddress{FixedChunk(ElementListType)};
}

OperationNodeAddress listElementAddress(unsigned long slot)
{
    return listAddress().appendItems(AddressInList(slot));
}

OperationNodeAddress mapAddress()
{
    return OperationNodeAddress{FixedChunk(ElementMapType)};
}

OperationNodeAddress mapElementAddress(const std::string& key)
{
    return mapAddress().appendItems(AddressInMap(makeKey(key)));
}

OperationNodeAddress tableAddress()
{
    return OperationNodeAddress{FixedChunk(CellTableType)};
}

OperationNodeAddress cellAddress(unsigned long row, unsigned long column)
{
    return tableAddress().appendItems(AddressInTable(AddressInTable::Row(row), AddressInTable::Column(column)));
}

OperationNodeAddress textAddress(OperationNodeAddress element)
{
    return element.appendItems(FixedChunk(ElementTextType));
}

TreeElement makeElement(int name)
{
    TreeElement element;
    element._name = name;
    return element;
}

SharedConstPtr<ItemsCollection> makeElementItems(std::vector<TreeElement> elements)
{
    return makeSharedConst<ElementItems>(std::move(elements));
}

SharedConstPtr<NodeAddressing::MapKey> makeKey(const std::string& key)
{
    return makeSharedConst<KeyValue>(key);
}

TreeDocument makeTreeDocument()
{
    TreeDocument document;
    const auto makeSlot = [](int name)
    {
        TreeSlot slot{name, true, makeElement(name)};
        slot._element._text.push_back(TreeSlot{name * 10, true, makeElement(name * 10)});
        slot._element._text.push_back(TreeSlot{name * 10 + 1, true, makeElement(name * 10 + 1)});
        return slot;
    };
    document._list = {makeSlot(1), makeSlot(2), makeSlot(3)};
    document._map = {{"a", makeSlot(4)._element}, {"b", makeSlot(5)._element}};
    document._table._rows = {TreeLine{61, true, 0}, TreeLine{62, true, 0}};
    document._table._columns = {TreeLine{71, true, 0}, TreeLine{72, true, 0}};
    for (const TreeLine& row : document._table._rows)
    {
        for (const TreeLine& column : document._table._columns)
        {
            document._table._cells[{row._identity, column._identity}] =
                makeSlot(row._identity * 100 + column._identity)._element;
        }
    }
    return document;
}

} // namespace Zem::CollaborationEngine::Testing
