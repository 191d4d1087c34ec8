#include "CS_UndoSearch.h"

#include "CS_NodeOperations.h"

#include "DClb_DocumentOperationTransformer.h"
#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;
using namespace NodeOperations;

/// A table is removed; who doesn't know that removes a word in one of its cells, in a state that somebody else has
/// edited, too.
class RemovalInsideARemovedTable : public testing::Test
{
protected:
    static constexpr std::size_t tableRemover = 0;
    static constexpr std::size_t wordRemover = 1;
    static constexpr std::size_t formatter = 2;

    RemovalInsideARemovedTable()
    {
        execute(formatter, inText(getCellText(0, 0), TestSupport::insert(0, "{|word}")));
        _session.settle();
        execute(formatter, set<PropertyId::RunPropertyId>(
                               getCellText(0, 0).appendItems(NodeAddressing::AddressInList(1)),
                               OperationDOMNodeType::Run, std::shared_ptr<DOM::RunProps>(), makeRunProps(20)));
        _session[formatter].send();
        _tableRemoval = execute(tableRemover, TestSupport::mark(0, 1));
        _session[tableRemover].send();
        _wordRemoval = execute(wordRemover, inText(getCellText(0, 0), TestSupport::mark(1, 6)));
        _session.settle();
    }

    Operation::Id execute(std::size_t who, OperationUPtr operation)
    {
        _session[who].execute(*operation);
        return operation->getID().value();
    }

    const DOM::TextWithTombstones* findCellText()
    {
        const auto& blocks = _session.getServer().getDocument().getTextWithTombstones().getBlocks();
        const auto* table = cast<DOM::Table>(blocks.front().get());
        return table ? &table->getCell(RowIndex(0), ColumnIndex(0))->getTextWithTombstones() : nullptr;
    }

    float getFontSize()
    {
        const auto& paragraph = cast<DOM::Paragraph>(*findCellText()->getBlocks().front());
        return paragraph.getRuns().front()->getSharedStyle()->get().getRunProps()->_fontSize.value_or(0);
    }

    ManyNodesSession _session{3};
    Operation::Id _tableRemoval = 0;
    Operation::Id _wordRemoval = 0;
};

// Its undo used to bring the word back as its author had seen it, without what others had done to it.
TEST_F(RemovalInsideARemovedTable, IsUndoneFromWhereItTookEffect)
{
    EXPECT_TRUE(_session[tableRemover].undo(_tableRemoval));
    _session.settle();
    ASSERT_NE(findCellText(), nullptr);
    EXPECT_EQ(TestSupport::print(*findCellText()), "{[.....]}");
    EXPECT_TRUE(_session[wordRemover].undo(_wordRemoval));
    _session.settle();
    EXPECT_EQ(TestSupport::print(*findCellText()), "{|word}");
    EXPECT_EQ(getFontSize(), 20);
}

TEST_F(RemovalInsideARemovedTable, IsUndoneWhileTheTableIsStillAway)
{
    EXPECT_TRUE(_session[wordRemover].undo(_wordRemoval));
    _session.settle();
    EXPECT_EQ(findCellText(), nullptr);
    EXPECT_TRUE(_session[tableRemover].undo(_tableRemoval));
    _session.settle();
    ASSERT_NE(findCellText(), nullptr);
    EXPECT_EQ(TestSupport::print(*findCellText()), "{|word}");
}

/// Operations of a history that no document takes.
class UndoSearchTest : public testing::Test
{
protected:
    static OperationUPtr makeUnit(OperationUPtr restoring, OperationUPtr broughtAlong, OperationUPtr next)
    {
        std::vector<OperationUPtr> parts;
        parts.push_back(std::move(restoring));
        parts.push_back(std::move(broughtAlong));
        parts.push_back(std::move(next));
        return std::make_unique<CompositeOperation>(std::move(parts), CompositeKind::Restoring);
    }

    static OperationUPtr withID(OperationUPtr operation, Operation::Id id)
    {
        operation->setIDIfNeeded(id);
        return operation;
    }

    static std::string printUndo(const UndoSearch& search)
    {
        const OperationUPtr undo = search.makeUndo();
        return undo ? TestSupport::print(*undo) : "none";
    }

    DOMCollaboration::DocumentOperationTransformer _transformer;
    UndoSearch _search{_transformer, 7};
};

TEST_F(UndoSearchTest, FindsTheOwnOperationAlone)
{
    _search.pass(*withID(TestSupport::insert(2, "a"), 7), false);
    EXPECT_EQ(printUndo(_search), "none");
    _search.pass(*withID(TestSupport::insert(3, "b"), 6), true);
    EXPECT_EQ(printUndo(_search), "none");
    _search.pass(*withID(TestSupport::insert(4, "c"), 7), true);
    EXPECT_EQ(printUndo(_search), "mark 4:c");
    _search.pass(*TestSupport::insert(0, "xy"), false);
    EXPECT_EQ(printUndo(_search), "mark 6:c");
}

TEST_F(UndoSearchTest, BeginsAgainWhereTheOperationIsBroughtAlong)
{
    _search.pass(*withID(TestSupport::insert(4, "c"), 7), true);
    _search.pass(*TestSupport::insert(0, "xy"), false);
    _search.pass(
        *makeUnit(TestSupport::restore(1, "r"), withID(TestSupport::insert(8, "c"), 7), TestSupport::insert(3, "z")),
        false);
    EXPECT_EQ(printUndo(_search), "mark 9:c");
    _search.pass(*TestSupport::insert(0, "v"), false);
    EXPECT_EQ(printUndo(_search), "mark 10:c");
}

TEST_F(UndoSearchTest, TakesPiecesTogetherAndLooksIntoUnitsInUnits)
{
    _search.pass(*withID(TestSupport::mark(4, 6), 7), true);
    OperationUPtr inner = makeUnit(TestSupport::restore(1, "r"), withID(TestSupport::mark(8, 9), 7),
                                   withID(TestSupport::mark(12, 13), 7));
    _search.pass(*makeUnit(TestSupport::restore(2, "s"), std::move(inner), TestSupport::insert(3, "z")), false);
    EXPECT_EQ(printUndo(_search), "restore 13:. 9:.");
}

} // namespace

} // namespace Zem::CollaborationSession
