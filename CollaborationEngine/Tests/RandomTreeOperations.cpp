#include "RandomTreeOperations.h"

#include "CE_MultirangeOperationUtils.h"

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using Range = IndexRange<unsigned long>;

/// Makes operations on one range of the list, with the class that the kind of list needs.
struct SingleRange
{
    template<class T>
    OperationUPtr operator()(T operation) const
    {
        return std::make_unique<T>(std::move(operation));
    }
};

struct Multirange
{
    template<class T>
    OperationUPtr operator()(T operation) const
    {
        return MultirangeOperationUtils::makeMultirangeOperationFromSingle(std::move(operation));
    }

    OperationUPtr operator()(ListMoveOperation) const
    {
        return nullptr;
    }
};

} // namespace

OperationUPtr RandomTreeOperations::make(const TreeDocument& document)
{
    for (;;)
    {
        const std::vector<Place> places = collectPlaces(document);
        OperationUPtr operation;
        switch (below(8))
        {
        case 0:
            operation = makeListOperation(document);
            break;
        case 1:
        case 2:
        case 3:
            operation = places.empty() ? nullptr : makeTextOperation(places[below(places.size())]);
            break;
        case 4:
            operation = places.empty() ? nullptr : makePropertyOperation(places[below(places.size())]);
            break;
        case 5:
            operation = makeMapOperation(document);
            break;
        case 6:
            operation = makeLineOperation<RowTag>(document._table._rows, document._table._columns);
            break;
        default:
            operation = makeLineOperation<ColumnTag>(document._table._columns, document._table._rows);
        }
        if (operation)
        {
            return operation;
        }
    }
}

void RandomTreeOperations::collectPlaces(std::vector<Place>& places, const OperationNodeAddress& address,
                                         const TreeElement& element) const
{
    places.push_back(Place{address, &element});
    for (unsigned long index = 0; index < element._text.size(); ++index)
    {
        if (element._text[index]._isLive)
        {
            collectPlaces(places, textAddress(address).appendItems(NodeAddressing::AddressInList(index)),
                          element._text[index]._element);
        }
    }
}

std::vector<RandomTreeOperations::Place> RandomTreeOperations::collectPlaces(const TreeDocument& document) const
{
    std::vector<Place> places;
    for (unsigned long slot = 0; slot < document._list.size(); ++slot)
    {
        if (document._list[slot]._isLive)
        {
            collectPlaces(places, listElementAddress(slot), document._list[slot]._element);
        }
    }
    for (const auto& entry : document._map)
    {
        collectPlaces(places, mapElementAddress(entry.first), entry.second);
    }
    const TreeTable& table = document._table;
    for (unsigned long row = 0; row < table._rows.size(); ++row)
    {
        for (unsigned long column = 0; column < table._columns.size(); ++column)
        {
            const auto cell = table._cells.find({table._rows[row]._identity, table._columns[column]._identity});
            if (cell != table._cells.end())
            {
                collectPlaces(places, cellAddress(row, column), cell->second);
            }
        }
    }
    return places;
}

std::vector<TreeElement> RandomTreeOperations::makeElements(unsigned long count)
{
    std::vector<TreeElement> elements;
    while (elements.size() < count)
    {
        elements.push_back(makeElement(_nextName++));
    }
    return elements;
}

/// `single` takes an operation on one range and makes it one of the list's kind.
template<class Single>
OperationUPtr RandomTreeOperations::makeSlotsOperation(const TreeText& text, const Single& single)
{
    const auto make = [&](auto tag, std::vector<TreeElement> elements, unsigned long begin)
    {
        const Range range = Range::fromCount(begin, elements.size());
        return single(ListModificationOperation<decltype(tag)>(OperationNodeAddress(), 0,
                                                               makeElementItems(std::move(elements)), range));
    };
    if (text.empty() || below(2) == 0)
    {
        return make(InsertTag(), makeElements(1 + below(2)), below(text.size() + 1));
    }
    const unsigned long begin = below(text.size());
    if (below(4) == 0)
    {
        return single(ListMoveOperation(OperationNodeAddress(), 0, Range::fromCount(begin, 1),
                                        static_cast<long>(below(text.size())) - static_cast<long>(begin)));
    }
    std::vector<TreeElement> elements;
    for (unsigned long index = begin; index < text.size() && text[index]._isLive && elements.size() < 2; ++index)
    {
        elements.push_back(text[index]._element);
    }
    return elements.empty() ? nullptr : make(MarkAsRemovedTag(), std::move(elements), begin);
}

namespace
{

/// Makes an operation again on another node. The operations above are made without a node, for both kinds of list.
template<class Target>
struct Placed
{
    template<class T>
    OperationUPtr operator()(T operation) const
    {
        if constexpr (std::is_same_v<T, ListMoveOperation>)
        {
            return Target()(ListMoveOperation(_address, _nodeType, operation.getRange(), operation.getOffset()));
        }
        else
        {
            return Target()(T(_address, _nodeType, operation.getData(), operation.getRange()));
        }
    }

    OperationNodeAddress _address;
    unsigned long _nodeType;
};

} // namespace

OperationUPtr RandomTreeOperations::makeListOperation(const TreeDocument& document)
{
    return makeSlotsOperation(document._list, Placed<SingleRange>{listAddress(), ElementListType});
}

OperationUPtr RandomTreeOperations::makeTextOperation(const Place& place)
{
    return makeSlotsOperation(place._element->_text, Placed<Multirange>{textAddress(place._address), ElementTextType});
}

OperationUPtr RandomTreeOperations::makePropertyOperation(const Place& place)
{
    const auto make = [&](unsigned long property, auto oldValue, auto newValue)
    {
        using Value = SimpleDataValue<decltype(oldValue)>;
        return SetPropertyOperation::makeNewSetPropertyOperation(place._address, ElementType, property,
                                                                 std::make_unique<Value>(std::move(oldValue)),
                                                                 std::make_unique<Value>(std::move(newValue)));
    };
    switch (below(5))
    {
    case 0:
    {
        TreeText text;
        for (TreeElement& element : makeElements(below(3)))
        {
            text.push_back(TreeSlot{element._name, true, element});
        }
        return make(WholeTextProperty, place._element->_text, std::move(text));
    }
    case 1:
    case 2:
        return make(WholeProperty, place._element->_whole, static_cast<int>(below(100)));
    default:
        PairValue value = place._element->_pair;
        (below(2) == 0 ? value.first : value.second) = static_cast<int>(below(100));
        return make(PairProperty, place._element->_pair, value);
    }
}

OperationUPtr RandomTreeOperations::makeMapOperation(const TreeDocument& document)
{
    const std::string key(1, static_cast<char>('a' + below(4)));
    const auto entry = document._map.find(key);
    if (entry == document._map.end())
    {
        return std::make_unique<MapInsertOrRemoveOperation<MapInsertTag>>(
            mapAddress(), ElementMapType, makeKey(key), makeSharedConst<ElementValue>(makeElements(1).front()));
    }
    return std::make_unique<MapInsertOrRemoveOperation<MapRemoveTag>>(mapAddress(), ElementMapType, makeKey(key),
                                                                      nullptr);
}

template<class Tag>
OperationUPtr RandomTreeOperations::makeLineOperation(const std::vector<TreeLine>& lines,
                                                      const std::vector<TreeLine>& crossing)
{
    using Operation = TableRowOrColumnOperation<Tag>;
    const auto make = [](typename Operation::NestedOperation nested)
    { return std::make_unique<Operation>(tableAddress(), CellTableType, std::move(nested)); };
    if (lines.empty() || below(3) == 0)
    {
        RowOrColumn inserted;
        inserted.setProps(makeSharedConst<SimpleDataValue<PairValue>>(PairValue(_nextName++, 0)));
        for (unsigned long index = 0; index < crossing.size(); ++index)
        {
            if (crossing[index]._isLive && below(2) == 0)
            {
                inserted.getCells().emplace_back(index, makeSharedConst<ElementValue>(makeElements(1).front()), false);
            }
        }
        return make(TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>(
            below(lines.size() + 1), makeSharedConst<RowOrColumn>(std::move(inserted))));
    }
    const unsigned long index = below(lines.size());
    if (below(4) == 0)
    {
        return make(RowOrColumnMoveOperation(index, static_cast<long>(below(lines.size())) - static_cast<long>(index)));
    }
    if (!lines[index]._isLive)
    {
        return nullptr;
    }
    if (below(2) == 0)
    {
        return make(TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>(index, nullptr));
    }
    return make(SetRowOrColumnPropertyOperation(index, RowProperty, makeSharedConst<IntValue>(lines[index]._property),
                                                makeSharedConst<IntValue>(static_cast<int>(below(100)))));
}

} // namespace Zem::CollaborationEngine::Testing
