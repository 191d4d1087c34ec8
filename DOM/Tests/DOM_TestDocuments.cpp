#include "DOM_TestDocuments.h"
#include "DOM_Blocks.h"
#include "DOM_NumberingRef.h"
#include "DOM_Runs.h"
#include "DOM_SetToSharedStyle.h"

#include <utility>

namespace Zem::DOM::Tests
{

namespace
{

SharedStyleConstIPtr<RunStyle> makeRunStyle(const SharedObjectFactory& factory, const std::string& fontName)
{
    RunProps props;
    props._fontName = fontName;
    props._color = ThemeColor{ThemeColorSlot::Accent2, 0.5f};
    RunStyle style;
    style.setRunProps(std::make_shared<const RunProps>(props));
    style.setHyperlink(std::make_shared<const Hyperlink>("https://example.org/"));
    style.setTrackedAction(
        std::make_shared<const TrackedObject<TrackChangesType>>(TrackChangesType::Insertion, boost::none));
    style.getCommentUUIDs().push_back(UUID());
    return factory.create(style);
}

Runs makeRuns(const SharedObjectFactory& factory)
{
    Runs runs;
    runs.push_back(std::make_unique<TextRun>("Gr\xC3\xBC\xC3\x9F"
                                             "e, \"quoted\"\n"));
    runs.push_back(std::make_unique<TabRun>());
    runs.push_back(std::make_unique<BreakRun>(BreakType::Column));
    runs.push_back(std::make_unique<DrawingRun>());
    runs.push_back(std::make_unique<BookmarkRun>("mark", BookmarkEdge::End));
    runs.push_back(std::make_unique<FieldRun>(FieldType::Date, "yyyy"));
    runs.push_back(std::make_unique<AnchorRun>(UUID()));
    for (const auto& run : runs)
    {
        run->getSharedStyle() = makeRunStyle(factory, "Serif");
    }
    runs.push_back(std::make_unique<TextRun>("plain"));
    return runs;
}

std::unique_ptr<Block> makeRichParagraph(const SharedObjectFactory& factory)
{
    auto paragraph = std::make_unique<Paragraph>();
    paragraph->getRuns() = makeRuns(factory);
    ParaProps props;
    props._alignment = ParagraphAlignment::Justify;
    props._tabStops = std::vector<TabStop>{TabStop{72, TabAlignment::Decimal, TabLeader::Dots}};
    ParagraphStyle style;
    style.setParaProps(std::make_shared<const ParaProps>(props));
    paragraph->getSharedStyle() = factory.create(style);
    paragraph->getSharedParaMarkStyle() = makeRunStyle(factory, "Sans");
    paragraph->getNumRef() = std::make_unique<NumberingRef>(NumberingRef{UUID(), 2, 7ul});
    return paragraph;
}

std::unique_ptr<Table> makeTable(const SharedObjectFactory& factory)
{
    auto table = std::make_unique<Table>(4, 3);
    table->setName("Sheet1");
    table->getOrCreateCell(RowIndex(1), ColumnIndex(2))
        .getTextWithTombstones()
        .getBlocks()
        .push_back(makeParagraph("in a cell"));
    CellStyle cellStyle;
    cellStyle.setParentUUID(UUID(UUID::Bytes{1}));
    table->getOrCreateCell(RowIndex(0), ColumnIndex(0)).getSharedStyle() = factory.create(cellStyle);
    RowStyle rowStyle;
    rowStyle.setDefaultCellStyle(factory.create(cellStyle));
    table->setSharedStyle(factory.create(rowStyle), RowIndex(2));
    table->replaceRowWithTombstone(CollaborationUtils::IndexIncludingTombstones(3));
    return table;
}

void addStyles(Styles& styles, const SharedObjectFactory& factory)
{
    NamedTextStyle textStyle;
    textStyle.setName(PredefinedStyleName::Heading1);
    textStyle.getNumRef() = std::make_unique<NumberingRef>();
    styles.getTextStyles().insert(std::move(textStyle));
    NamedTableStyle tableStyle;
    tableStyle.setName(std::string("Striped"));
    CellStyle cellStyle;
    cellStyle.setParentUUID(UUID(UUID::Bytes{1}));
    tableStyle.getPartStyles()._headerRows = factory.create(cellStyle);
    styles.getTableStyles().insert(std::move(tableStyle));
    styles.setDefaultRunProps(std::make_shared<const RunProps>());
}

void addCollections(Document& document)
{
    Comment comment;
    comment.getBlocks().push_back(makeParagraph("a comment"));
    document.getComments().insert(std::move(comment));
    Note note;
    note.getBlocks().push_back(makeParagraph("a note"));
    note.setExtent(Size2D<float>{10, 20});
    document.getNotes().insert(std::move(note));
    HeaderFooterPair pair;
    pair.getHeader().getBlocks().push_back(makeParagraph("a header"));
    pair.setFooterPageNumber(PageNumber());
    document.getHeadersFooters().insert(std::move(pair));
    NumberedList list;
    list.getLevels().resize(3);
    document.getNumLists().insert(std::move(list));
    document.getScripts().insertScript("main", "print(1)");
}

} // namespace

std::unique_ptr<Block> makeParagraph(const std::string& text)
{
    auto paragraph = std::make_unique<Paragraph>();
    paragraph->getRuns().push_back(std::make_unique<TextRun>(text));
    return paragraph;
}

TextWithTombstones makeText(const SharedObjectFactory& factory)
{
    TextWithTombstones text;
    text.getBlocks().push_back(makeRichParagraph(factory));
    text.getBlocks().push_back(makeTable(factory));
    text.getBlocks().push_back(std::make_unique<SectionTag>());
    auto shape = std::make_unique<Shape>();
    shape->setGeometry(ShapeGeometry::Ellipse);
    shape->getTextWithTombstones().getBlocks().push_back(makeParagraph("in a shape"));
    text.getBlocks().push_back(std::move(shape));
    text.getBlocks().push_back(std::make_unique<FieldBlock>(FieldBlock::FieldInfo(Formula("SUM(A1:A2)"))));
    text.getTombstones().replaceWithTombstone(CollaborationUtils::IndexIncludingTombstones(3));
    text.getTombstones().replaceWithTombstone(CollaborationUtils::IndexIncludingTombstones(7));
    return text;
}

Document makeDocument()
{
    Document document;
    document.getTextWithTombstones() = makeText(document.getSharedObjectFactory());
    addStyles(document.getStyles(), document.getSharedObjectFactory());
    addCollections(document);
    document.getDefaultSectionProps()._columnsCount = static_cast<unsigned char>(2);
    Theme theme;
    theme._name = "Autumn";
    document.setTheme(theme);
    document.setChangesTrackingEnabled(true);
    document.setTimeZone(TimeZone(-300));
    return document;
}

} // namespace Zem::DOM::Tests
