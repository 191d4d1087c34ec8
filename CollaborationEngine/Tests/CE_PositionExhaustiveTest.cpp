// Positions on and in all elements of small lists, maps and tables, across all operations.

#include "Position.h"
#include "TreeExhaustive.h"

#include "Util_Cast.h"

#include <algorithm>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

/// Where each live element of a document stands, by its name, and the ends of all lists and texts.
class Places
{
public:
    explicit Places(const TreeDocument& document)
    {
        addText(document._list, listAddress());
        for (const auto& entry : document._map)
        {
            addElement(entry.first, entry.second, mapElementAddress(entry.first));
        }
        for (unsigned long rowIndex = 0; rowIndex < document._table._rows.size(); ++rowIndex)
        {
            addRow(document._table, rowIndex);
        }
    }

    const std::map<std::string, OperationNodeAddress>& getElements() const
    {
        return _elements;
    }

    std::vector<OperationNodeAddress> getAll() const
    {
        std::vector<OperationNodeAddress> all = _ends;
        for (const auto& element : _elements)
        {
            all.push_back(element.second);
        }
        return all;
    }

private:
    void addElement(const std::string& name, const TreeElement& element, const OperationNodeAddress& address)
    {
        _elements.emplace(name, address);
        addText(element._text, textAddress(address));
    }

    void addText(const TreeText& text, const OperationNodeAddress& address)
    {
        const auto makePlace = [&](unsigned long index)
        { return OperationNodeAddress(address).appendItems(NodeAddressing::AddressInList(index)); };
        for (unsigned long index = 0; index < text.size(); ++index)
        {
            if (text[index]._isLive)
            {
                addElement(std::to_string(text[index]._identity), text[index]._element, makePlace(index));
            }
        }
        _ends.push_back(makePlace(text.size()));
    }

    void addRow(const TreeTable& table, unsigned long rowIndex)
    {
        for (unsigned long columnIndex = 0; columnIndex < table._columns.size(); ++columnIndex)
        {
            const auto cell =
                table._cells.find({table._rows[rowIndex]._identity, table._columns[columnIndex]._identity});
            if (cell != table._cells.end())
            {
                addElement(std::to_string(cell->first.first) + "," + std::to_string(cell->first.second), cell->second,
                           cellAddress(rowIndex, columnIndex));
            }
        }
    }

    std::map<std::string, OperationNodeAddress> _elements;
    std::vector<OperationNodeAddress> _ends;
};

/// Whether an operation replaces a text in which the address lies. A position goes to the beginning of the new one
/// then, and doesn't come back.
bool replacesTextAround(const Operation& operation, const OperationNodeAddress& address)
{
    if (const auto* composite = cast<CompositeOperation>(&operation))
    {
        return std::any_of(composite->getParts().begin(), composite->getParts().end(),
                           [&](const OperationUPtr& part) { return replacesTextAround(*part, address); });
    }
    const auto* setting = cast<SetPropertyOperation>(&operation);
    return setting && setting->getPropertyID() == WholeTextProperty &&
           setting->getNodeAddress().getSize() < address.getSize() && setting->getNodeAddress().isPrefixOf(address);
}

class PositionExhaustive : public TreeExhaustive
{
protected:
    /// Calls `check` for each operation behind each history, with the document there.
    template<class Check>
    void forEachOperation(const Check& check)
    {
        forEachHistory(
            [&](const TreeDocument& state, const Operations& history)
            {
                for (const Candidate& candidate : makeCandidates(state, history, 1000))
                {
                    SCOPED_TRACE(describe(*candidate._operation));
                    check(state, *candidate._operation);
                }
            });
    }

    std::unique_ptr<PositionTransformer> _positions = makeTreePositionTransformer();
};

} // namespace

TEST_P(PositionExhaustive, IncludingAndExcludingAnyOperationGivesThePositionBack)
{
    forEachOperation(
        [&](const TreeDocument& state, const Operation& operation)
        {
            for (const OperationNodeAddress& place : Places(state).getAll())
            {
                for (const bool sticks : {false, true})
                {
                    ++_casesCount;
                    Position position(place, sticks);
                    _positions->include(operation, position);
                    _positions->exclude(operation, position);
                    EXPECT_TRUE(position.getAddress() == place || replacesTextAround(operation, place));
                    EXPECT_TRUE(position.getRevertedInsertOperations().empty());
                }
            }
        });
}

TEST_P(PositionExhaustive, PositionStaysOnItsElementWhileThatLives)
{
    forEachOperation(
        [&](const TreeDocument& state, Operation& operation)
        {
            const Places before(state);
            const Places after(applied(state, operation));
            for (const auto& element : before.getElements())
            {
                const auto expected = after.getElements().find(element.first);
                if (expected == after.getElements().end())
                {
                    continue;
                }
                ++_casesCount;
                Position position(element.second, false);
                _positions->include(operation, position);
                EXPECT_TRUE(position.getAddress() == expected->second) << element.first;
            }
        });
}

INSTANTIATE_TEST_SUITE_P(Trees, PositionExhaustive,
                         testing::Values(TreePart::List, TreePart::Map, TreePart::Table, TreePart::TallTable),
                         &getName);

} // namespace Zem::CollaborationEngine::Testing
