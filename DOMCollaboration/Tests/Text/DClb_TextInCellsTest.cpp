#include "DClb_DocumentOperationExecutor.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DClb_NodeTypes.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "TS_Assertions.h"
#include "TS_MirrorObserver.h"
#include "TS_TextCase.h"
#include "Text/DClb_TextContents.h"

#include "DOM_Blocks.h"
#include "DOM_Document.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

namespace
{

using namespace CollaborationEngine;
using TestSupport::insert;
using TestSupport::makeText;
using TestSupport::mark;

constexpr unsigned long textType = static_cast<unsigned long>(OperationDOMNodeType::TextWithTombstones);

SharedConstPtr<DOM::Block> makeField(DOM::FieldBlock::FieldInfo info)
{
    auto field = std::make_shared<DOM::FieldBlock>();
    field->getFieldInfo() = std::move(info);
    return SharedConstPtr<DOM::Block>(std::shared_ptr<DOM::Block>(std::move(field)));
}

/// A text document whose only block is a table of three rows and three columns.
class TextInCells : public testing::Test
{
protected:
    TextInCells()
    {
        _document.getTextWithTombstones().getBlocks().push_back(std::make_unique<DOM::Table>(3, 3));
    }

    DOM::Table& getTable()
    {
        return static_cast<DOM::Table&>(*_document.getTextWithTombstones().getBlocks().front());
    }

    /// The address of the text of a cell, by slots of rows and columns.
    static OperationNodeAddress makeAddress(unsigned long row, unsigned long column)
    {
        using Chunk = OperationNodeAddress::FixedChunk;
        return OperationNodeAddress{Chunk(textType), NodeAddressing::AddressInList(0),
                                    Chunk(static_cast<unsigned long>(OperationDOMNodeType::CellCollection)),
                                    NodeAddressing::AddressInTable(RowIndex(row), ColumnIndex(column)),
                                    Chunk(textType)};
    }

    OperationUPtr atCell(OperationUPtr operation, unsigned long row, unsigned long column)
    {
        cast<HierarchicalOperation>(*operation).setNodeAddress(makeAddress(row, column));
        return operation;
    }

    static OperationUPtr insertBlock(SharedConstPtr<DOM::Block> block)
    {
        std::vector<ListModificationOperation<InsertTag>> nested;
        nested.emplace_back(makeAddress(1, 1), textType,
                            makeSharedConst<TextWithTombstonesItems>(TextWithTombstonesElementVector{std::move(block)}),
                            IndexRange<unsigned long>(0, 1));
        return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>>(std::move(nested));
    }

    /// Executes, and returns what really happened, printed; or "as it stands".
    std::string execute(Operation& operation)
    {
        OperationUPtr changedOp;
        return _executor.executeAndChangeIfNeeded(operation, changedOp) ? TestSupport::print(*changedOp)
                                                                        : "as it stands";
    }

    void setText(unsigned long row, unsigned long column, std::string_view notation)
    {
        getTable().getOrCreateCell(RowIndex(row), ColumnIndex(column)).getTextWithTombstones() = makeText(notation);
    }

    const DOM::Cell* getCell(unsigned long row, unsigned long column)
    {
        return getTable().getCell(RowIndex(row), ColumnIndex(column));
    }

    DOM::Document _document;
    std::shared_ptr<ExecutorNotificationObserver> _observer = makeEmptyExecutorNotificationObserver();
    std::shared_ptr<TextDocumentAdapter> _adapter = std::make_shared<TextDocumentAdapter>(_document);
    DocumentOperationExecutor _executor{_adapter, std::make_shared<DocumentOperationTransformer>(), _observer};
};

} // namespace

TEST_F(TextInCells, AnInsertionBringsTheCellIntoBeingAndItsReversalTakesItAway)
{
    const DOM::Document before = _document;
    OperationUPtr operation = atCell(insert(0, "{|ab}"), 1, 1);
    EXPECT_EQ("as it stands", execute(*operation));
    ASSERT_TRUE(getCell(1, 1));
    EXPECT_EQ("{|ab}", TestSupport::print(getCell(1, 1)->getTextWithTombstones()));
    _executor.reverse(*operation);
    EXPECT_FALSE(getCell(1, 1));
    EXPECT_TRUE(before == _document);
}

TEST_F(TextInCells, AnInsertionThatFailsBringsNoCellIntoBeing)
{
    const DOM::Document before = _document;
    OperationUPtr noByte = atCell(insert(0, "{|a}"), 1, 1);
    auto& insertion = cast<ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>>(*noByte);
    TextWithTombstonesElementVector elements = TestSupport::makeElements("{|");
    elements.emplace_back(static_cast<short>(200));
    elements.emplace_back(ParagraphMark());
    insertion.getNestedOperations().front().setData(makeSharedConst<TextWithTombstonesItems>(std::move(elements)));
    EXPECT_THROW(execute(*noByte), BadNumCastError);
    EXPECT_ASSERTION(execute(*atCell(insert(3, "{|a}"), 1, 1)), "Unexpected type in the source variant");
    EXPECT_FALSE(getCell(1, 1));
    EXPECT_TRUE(before == _document);
}

TEST_F(TextInCells, AMarkingOfAnEmptyCellFailsAndBringsNoneIntoBeing)
{
    const DOM::Document before = _document;
    EXPECT_ASSERTION(execute(*atCell(mark(0, 1), 1, 1)), "Unexpected type in the source variant");
    EXPECT_TRUE(before == _document);
}

TEST_F(TextInCells, TheReversalKeepsACellThatHasAPivotTable)
{
    OperationUPtr operation = atCell(insert(0, "{|ab}"), 1, 1);
    EXPECT_EQ("as it stands", execute(*operation));
    getTable().setPivotTable(RowIndex(1), ColumnIndex(1), std::make_unique<DOM::PivotTable>());
    _executor.reverse(*operation);
    EXPECT_TRUE(getCell(1, 1));
}

TEST_F(TextInCells, ACellThatAMarkingEmptiesStays)
{
    setText(1, 1, "{|ab}");
    EXPECT_EQ("as it stands", execute(*atCell(mark(0, 5), 1, 1)));
    ASSERT_TRUE(getCell(1, 1));
    EXPECT_EQ("[.....]", TestSupport::print(getCell(1, 1)->getTextWithTombstones()));
}

TEST_F(TextInCells, AFormulaOrValueGoesIntoAnEmptyCellOnly)
{
    for (const DOM::FieldBlock::FieldInfo& info :
         {DOM::FieldBlock::FieldInfo(DOM::Formula()), DOM::FieldBlock::FieldInfo(DOM::ArrayFormulaShift(1, 0)),
          DOM::FieldBlock::FieldInfo(DOM::BlockValue<FloatNumber>()),
          DOM::FieldBlock::FieldInfo(DOM::BlockValue<DOM::FormulaErrorType>()),
          DOM::FieldBlock::FieldInfo(DOM::BlockValue<bool>())})
    {
        SCOPED_TRACE(info.which());
        EXPECT_EQ(BlocksContentType::FormulaOrData, getContentType(*makeField(info)));
        OperationUPtr operation = insertBlock(makeField(info));
        EXPECT_EQ("as it stands", execute(*operation));
        EXPECT_EQ("empty", execute(*atCell(insert(1, "{|x}"), 1, 1)));
        EXPECT_EQ("empty", execute(*insertBlock(makeField(info))));
        _executor.reverse(*operation);
        setText(1, 1, "{|ab}");
        EXPECT_EQ("empty", execute(*operation));
        getTable().removeCell(RowIndex(1), ColumnIndex(1));
    }
}

TEST_F(TextInCells, ATableOfContentsIsRichText)
{
    EXPECT_EQ(BlocksContentType::RichText, getContentType(*makeField(DOM::TableOfContentsInfo())));
    setText(1, 1, "{|ab}");
    EXPECT_EQ("as it stands", execute(*insertBlock(makeField(DOM::TableOfContentsInfo()))));
}

TEST_F(TextInCells, NothingGoesIntoACellThatIsMergedAway)
{
    getTable().setMergeProps(RowIndex(0), ColumnIndex(0), 1, 1);
    EXPECT_EQ("empty", execute(*atCell(insert(0, "{|ab}"), 1, 1)));
    EXPECT_FALSE(getCell(1, 1));
    EXPECT_EQ("as it stands", execute(*atCell(insert(0, "{|ab}"), 0, 0)));
}

TEST_F(TextInCells, NothingGoesIntoACellThatAPivotTableCovers)
{
    getTable().setPivotTable(RowIndex(0), ColumnIndex(0), std::make_unique<DOM::PivotTable>(Size2D<unsigned>{2, 2}));
    EXPECT_EQ("empty", execute(*atCell(insert(0, "{|ab}"), 1, 1)));
    EXPECT_EQ("empty", execute(*atCell(insert(0, "{|ab}"), 0, 0)));
    EXPECT_FALSE(getCell(1, 1));
    EXPECT_EQ("as it stands", execute(*atCell(insert(0, "{|ab}"), 2, 2)));
}

TEST_F(TextInCells, EveryCellOnTheWayMustBeAccessible)
{
    DOM::Blocks& blocks = getTable().getOrCreateCell(RowIndex(1), ColumnIndex(1)).getTextWithTombstones().getBlocks();
    blocks.push_back(std::make_unique<DOM::Table>(2, 2));
    auto& inner = static_cast<DOM::Table&>(*blocks.back());
    const auto executeAt = [&](unsigned long row, unsigned long column)
    {
        OperationUPtr operation = insert(0, "{}");
        OperationNodeAddress address = makeAddress(1, 1);
        const OperationNodeAddress belowText = makeAddress(row, column);
        for (unsigned long index = 1; index < belowText.getSize(); ++index)
        {
            address.appendItems(belowText.getItem(index));
        }
        cast<HierarchicalOperation>(*operation).setNodeAddress(address);
        return execute(*operation);
    };
    inner.setMergeProps(RowIndex(0), ColumnIndex(0), 0, 1);
    EXPECT_EQ("empty", executeAt(0, 1));
    EXPECT_EQ("as it stands", executeAt(1, 1));
    getTable().setMergeProps(RowIndex(0), ColumnIndex(0), 1, 1);
    EXPECT_EQ("empty", executeAt(1, 0));
}

TEST_F(TextInCells, MarkingDoesNotAskWhetherTheCellIsAccessible)
{
    setText(1, 1, "{|ab}");
    getTable().setMergeProps(RowIndex(0), ColumnIndex(0), 1, 1);
    EXPECT_EQ("as it stands", execute(*atCell(mark(2, 3), 1, 1)));
    EXPECT_EQ("{|[.]b}", TestSupport::print(getCell(1, 1)->getTextWithTombstones()));
    OperationUPtr restoring = atCell(TestSupport::restore(2, "a"), 1, 1);
    EXPECT_EQ("empty", execute(*restoring));
}

TEST_F(TextInCells, OperationsOnARemovedRowFail)
{
    getTable().replaceRowWithTombstone(CollaborationUtils::IndexIncludingTombstones(1));
    OperationUPtr changedOp;
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(*atCell(insert(0, "{|ab}"), 1, 1), changedOp), "opt");
}

TEST_F(TextInCells, AStepOfTheWrongKindIntoTheCellsFails)
{
    OperationUPtr operation = insert(0, "{|ab}");
    OperationNodeAddress address = makeAddress(1, 1).getTrimmedAtEnd(2);
    address.appendItems(NodeAddressing::AddressInList(0));
    cast<HierarchicalOperation>(*operation).setNodeAddress(address);
    OperationUPtr changedOp;
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(*operation, changedOp), "castAddress");
}

TEST_F(TextInCells, AStepIntoATableThatIsNoneFails)
{
    OperationUPtr operation = insert(0, "{|ab}");
    cast<HierarchicalOperation>(*operation)
        .setNodeAddress(OperationNodeAddress{NodeAddressing::AddressInTable(RowIndex(0), ColumnIndex(0))});
    OperationUPtr changedOp;
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(*operation, changedOp), "currentTable");
}

TEST_F(TextInCells, AnAddressThatLeadsNowhereOrToNoTextFails)
{
    OperationUPtr operation = insert(0, "{|ab}");
    OperationUPtr changedOp;
    cast<HierarchicalOperation>(*operation).setNodeAddress(makeAddress(1, 1).getTrimmedAtEnd(1));
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(*operation, changedOp), "!isPtrNull(dest)");
    cast<HierarchicalOperation>(*operation).setNodeAddress(OperationNodeAddress{NodeAddressing::AddressInList(7)});
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(*operation, changedOp),
                     "There is no element corresponding to the passed address");
}

TEST_F(TextInCells, FormulasOutsideOfCellsFail)
{
    OperationUPtr operation = insertBlock(makeField(DOM::Formula()));
    cast<HierarchicalOperation>(*operation).setNodeAddress(TestSupport::getTextAddress());
    OperationUPtr changedOp;
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(*operation, changedOp),
                     "textWithTombstonesInfo.contentType != BlocksContentType::FormulaOrData && typeOfAddedData != "
                     "BlocksContentType::FormulaOrData");
    _document.getTextWithTombstones().getBlocks().insert(_document.getTextWithTombstones().getBlocks().begin(),
                                                         cloneToUnique<DOM::Block>(*makeField(DOM::Formula())));
    EXPECT_ASSERTION(_executor.executeAndChangeIfNeeded(*insert(0, "{}"), changedOp),
                     "contentType != BlocksContentType::FormulaOrData || isInCell");
}

} // namespace Zem::DOMCollaboration
