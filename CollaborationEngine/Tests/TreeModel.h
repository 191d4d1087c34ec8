#pragma once

/// A small document with every kind of node: a list, a map and a table of elements; each element has properties and a
/// text of further elements. What is dead keeps its identity alone, so that only operations can bring its content back.

#include "CE_BaseOperationExecutor.h"
#include "CE_HierarchicalOperationTransformer.h"
#include "CE_ItemsCollection.h"
#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_PositionTransformer.h"
#include "CE_SetPropertyDataMerger.h"
#include "CE_SetPropertyOperation.h"
#include "CE_TableOperation.h"

#include <map>
#include <string>
#include <vector>

namespace Zem::CollaborationEngine::Testing
{

/// The node types, which are the numbers of the fixed chunks that lead to the nodes as well.
enum TreeNodeType : unsigned long
{
    ElementListType = 1,
    ElementTextType = 2,
    ElementType = 3,
    ElementMapType = 4,
    CellTableType = 6
};

/// The text of an element as a property has the number of the node type of that text.
enum TreeProperty : unsigned long
{
    WholeTextProperty = ElementTextType,
    WholeProperty = 10,
    PairProperty = 11,
    RowProperty = 12
};

struct TreeElement;
struct TreeSlot;

using TreeText = std::vector<TreeSlot>;
using PairValue = std::pair<int, int>;

struct TreeElement
{
    friend bool operator==(const TreeElement&, const TreeElement&);

    int _name = 0;
    int _whole = 0;
    PairValue _pair{0, 0};
    TreeText _text;
};

struct TreeSlot
{
    friend bool operator==(const TreeSlot&, const TreeSlot&);

    int _identity = 0;
    bool _isLive = true;
    TreeElement _element;
};

struct TreeLine
{
    friend bool operator==(const TreeLine&, const TreeLine&) = default;

    int _identity = 0;
    bool _isLive = true;
    int _property = 0;
};

struct TreeTable
{
    friend bool operator==(const TreeTable&, const TreeTable&) = default;

    std::vector<TreeLine> _rows;
    std::vector<TreeLine> _columns;
    /// By the identities of row and column.
    std::map<std::pair<int, int>, TreeElement> _cells;
};

struct TreeDocument
{
    friend bool operator==(const TreeDocument&, const TreeDocument&) = default;

    TreeText _list;
    std::map<std::string, TreeElement> _map;
    TreeTable _table;
};

std::string toString(const TreeDocument& document);

using ElementValue = SimpleDataValue<TreeElement>;
using ElementItems = SimpleItemsCollection<std::vector<TreeElement>>;
using IntValue = SimpleDataValue<int>;
using KeyValue = NodeAddressing::SimpleValueMapKey<std::string>;

/// Carries operations out by the letter, and fails an assertion where one isn't legal.
class TreeExecutor final : public AtomicOperationExecutor
{
public:
    explicit TreeExecutor(TreeDocument& document)
        : _document(document)
    {
    }

    bool executeAndChangeIfNeeded(AtomicOperation& operation, OperationUPtr& changedOp) override;
    void reverse(AtomicOperation& operation) override;

private:
    TreeDocument& _document;
};

std::shared_ptr<HierarchicalOperationTransformer> makeTreeTransformer();
std::unique_ptr<PositionTransformer> makeTreePositionTransformer();

/// Takes the first field from one value and the second from another, as the rule of mergers says.
class PairMerger final : public DataMerger
{
public:
    std::unique_ptr<DataValue> getMergedValue(const DataValue& value, const DataValue& replacement,
                                              const DataValue& expected, const DataValue& actual) const override;
};

OperationNodeAddress listAddress();
OperationNodeAddress listElementAddress(unsigned long slot);
OperationNodeAddress mapAddress();
OperationNodeAddress mapElementAddress(const std::string& key);
OperationNodeAddress tableAddress();
OperationNodeAddress cellAddress(unsigned long row, unsigned long column);
OperationNodeAddress textAddress(OperationNodeAddress element);

TreeElement makeElement(int name);
SharedConstPtr<ItemsCollection> makeElementItems(std::vector<TreeElement> elements);
SharedConstPtr<NodeAddressing::MapKey> makeKey(const std::string& key);

/// A document with some of everything, and live and dead places in it.
TreeDocument makeTreeDocument();

} // namespace Zem::CollaborationEngine::Testing
