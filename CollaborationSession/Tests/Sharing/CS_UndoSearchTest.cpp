#include "Sharing/CS_UndoSearch.h"

#include "Sharing/CS_NodeOperations.h"
#include "Sharing/CS_SectionColumns.h"
#include "Sharing/CS_SettlingTransformer.h"

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

    ActionID execute(std::size_t who, OperationUPtr operation)
    {
        _session[who].execute(*operation);
        return _session[who].getClient().getLastAction();
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
    ActionID _tableRemoval = 0;
    ActionID _wordRemoval = 0;
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

    /// In something that was removed.
    static OperationUPtr shadow(OperationUPtr operation, Operation::Id id)
    {
        Shadows shadows;
        shadows._deadPlaces.emplace_back();
        return withID(std::make_unique<ShadowedOperation>(dynamicUPtrCheckedCast<AtomicOperation>(std::move(operation)),
                                                          std::move(shadows)),
                      id);
    }

    static std::string print(const Operation& operation)
    {
        if (const auto* shadowed = cast<ShadowedOperation>(&operation))
        {
            return "shadowed " + TestSupport::print(shadowed->getOriginal());
        }
        const auto* composite = cast<CompositeOperation>(&operation);
        if (!composite)
        {
            return TestSupport::print(operation);
        }
        std::string parts;
        for (const OperationUPtr& part : composite->getParts())
        {
            parts += print(*part) + "; ";
        }
        return parts;
    }

    static std::string printUndo(const UndoSearch& search)
    {
        return print(*search.makeUndo());
    }

    SettlingTransformer _transformer;
};

TEST_F(UndoSearchTest, BringsTheUndoPastWhatCameLater)
{
    UndoSearch search(_transformer, withID(TestSupport::insert(4, "c"), 7));
    EXPECT_EQ(printUndo(search), "mark 4:c");
    search.pass(TestSupport::insert(0, "xy"));
    EXPECT_EQ(printUndo(search), "mark 6:c");
}

TEST_F(UndoSearchTest, BeginsAgainWhereTheOperationIsBroughtAlong)
{
    UndoSearch search(_transformer, shadow(TestSupport::insert(4, "c"), 7));
    EXPECT_EQ(printUndo(search), "shadowed mark 4:c");
    search.pass(TestSupport::insert(0, "xy"));
    search.pass(
        makeUnit(TestSupport::restore(1, "r"), withID(TestSupport::insert(8, "c"), 7), TestSupport::insert(3, "z")));
    EXPECT_EQ(printUndo(search), "mark 9:c");
    search.pass(TestSupport::insert(0, "v"));
    EXPECT_EQ(printUndo(search), "mark 10:c");
}

TEST_F(UndoSearchTest, TakesPiecesTogetherAndLooksIntoUnitsInOtherOperations)
{
    UndoSearch search(_transformer, shadow(TestSupport::mark(4, 6), 7));
    OperationUPtr inner = makeUnit(TestSupport::restore(1, "r"), withID(TestSupport::mark(8, 9), 7),
                                   withID(TestSupport::mark(12, 13), 7));
    std::vector<OperationUPtr> parts;
    parts.push_back(TestSupport::insert(0, "w"));
    parts.push_back(makeUnit(TestSupport::restore(2, "s"), std::move(inner), TestSupport::insert(3, "z")));
    parts.push_back(TestSupport::insert(0, "v"));
    search.pass(std::make_shared<CompositeOperation>(std::move(parts)));
    EXPECT_EQ(printUndo(search), "restore 14:. 10:.");
}

TEST_F(UndoSearchTest, GoesOnWithWhatTookEffectAtOnceOrCameBackInPart)
{
    OperationUPtr whole = makeUnit(shadow(TestSupport::insert(1, "a"), 8), shadow(TestSupport::insert(2, "b"), 9),
                                   shadow(TestSupport::insert(3, "c"), 10));
    UndoSearch search(_transformer, withID(std::move(whole), 7));
    const std::string undoOfAll = printUndo(search);
    search.pass(makeUnit(TestSupport::restore(9, "r"), withID(TestSupport::insert(21, "a"), 8),
                         withID(TestSupport::insert(22, "b"), 9)));
    EXPECT_EQ(printUndo(search), undoOfAll);

    UndoSearch live(_transformer, withID(TestSupport::insert(4, "c"), 7));
    live.pass(
        makeUnit(TestSupport::restore(9, "r"), withID(TestSupport::insert(21, "c"), 7), TestSupport::insert(30, "d")));
    EXPECT_EQ(printUndo(live), "mark 4:c");
}

// Of two settings of a section the later stands; an undo changes only what nobody has set since.
TEST_F(UndoSearchTest, UndoOfASettingLeavesALaterOne)
{
    UndoSearch search(_transformer, withID(std::make_unique<SetPropertyOperation>(setSectionColumns(5, 2)), 7));
    search.pass(std::make_shared<SetPropertyOperation>(setSectionColumns(5, 3)));
    const auto undo = search.makeUndo();
    const auto& setting = cast<SetPropertyOperation>(*undo);
    EXPECT_TRUE(setting.getNewValue() == setSectionColumns(5, 3).getNewValue());
}

} // namespace

} // namespace Zem::CollaborationSession
