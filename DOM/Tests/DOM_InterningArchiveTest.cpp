#include "DOM_InterningArchive.h"
#include "DOM_Blocks.h"
#include "DOM_DocumentJson.h"
#include "DOM_FieldChanges.h"
#include "DOM_Json.h"
#include "DOM_Runs.h"
#include "DOM_TestDocuments.h"

#include "Util_Cast.h"
#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

template<class T>
std::string toPlainJson(const T& value)
{
    return Zem::toJson<T>(value);
}

template<class Style>
SharedStyleConstIPtr<Style> makeShared(const Style& style)
{
    return SharedStyleConstIPtr<Style>(new SharedStyle<Style>(style));
}

RunPropsConstPtr makeRunProps(float fontSize)
{
    auto props = std::make_shared<RunProps>();
    props->_fontSize = fontSize;
    return props;
}

/// Parent 0 is none.
RunStyle makeRunStyle(RunPropsConstPtr props, unsigned char parent = 0)
{
    RunStyle style;
    style.setRunProps(std::move(props));
    style.setParentUUID(UUID(UUID::Bytes{parent}));
    return style;
}

CellStyle makeCellStyle(unsigned char parent)
{
    CellStyle style;
    style.setParentUUID(UUID(UUID::Bytes{parent}));
    return style;
}

/// A paragraph with a tab run of each style.
Document makeDocumentOfRuns(const std::vector<SharedStyleConstIPtr<RunStyle>>& styles)
{
    auto paragraph = std::make_unique<Paragraph>();
    for (const SharedStyleConstIPtr<RunStyle>& style : styles)
    {
        paragraph->getRuns().push_back(std::make_unique<TabRun>());
        paragraph->getRuns().back()->getSharedStyle() = style;
    }
    Document document;
    document.getTextWithTombstones().getBlocks().push_back(std::move(paragraph));
    return document;
}

void expectEqualJson(const Document& left, const Document& right)
{
    ASSERT_TRUE(left == right);
    EXPECT_NE(toPlainJson(left), toPlainJson(right)) << "There is nothing to make equal.";
    EXPECT_EQ(toJson(left), toJson(right));
    EXPECT_EQ(toJson(left.getTextWithTombstones()), toJson(right.getTextWithTombstones()));
    EXPECT_TRUE(fromJson(toJson(left)) == right);
    EXPECT_EQ(toJson(left), toJson(fromJson(toJson(left))));
}

// Each class of pointer.

template<class Style>
SharedStyleConstIPtr<Style> makeOther(const SharedStyleConstIPtr<Style>& style)
{
    return makeShared(makeChanged(style->get()));
}

template<class Bundle>
std::shared_ptr<const Bundle> makeOther(const std::shared_ptr<const Bundle>& bundle)
{
    return std::make_shared<const Bundle>(makeChanged(*bundle));
}

template<class Pointer>
class WrittenPointers : public testing::Test
{
public:
    using Pointers = std::vector<Pointer>;

    static std::string write(const Pointers& pointers)
    {
        return Zem::toJson<Pointers, JsonDetails::InterningOutputArchive>(pointers);
    }

    static std::string writePlainly(const Pointers& pointers)
    {
        return Zem::toJson<Pointers>(pointers);
    }
};

template<class List>
struct TestTypes;

template<class... Types>
struct TestTypes<TypeList<Types...>>
{
    using Type = testing::Types<Types...>;
};

TYPED_TEST_SUITE(WrittenPointers, TestTypes<SharedPointers>::Type);

} // namespace

TYPED_TEST(WrittenPointers, AreOneIfTheirContentsAreEqual)
{
    TypeParam first;
    change(first);
    TypeParam equal;
    change(equal);
    const TypeParam other = makeOther(first);
    ASSERT_NE(first.get(), equal.get());
    ASSERT_TRUE(areDeeplyEqual(first, equal));

    EXPECT_EQ(TestFixture::writePlainly({first, first, first}), TestFixture::write({first, equal, first}));
    EXPECT_EQ(TestFixture::writePlainly({first, other, first, other}),
              TestFixture::write({first, other, equal, other}));
    EXPECT_NE(TestFixture::writePlainly({first, first}), TestFixture::writePlainly({first, equal}));
}

TYPED_TEST(WrittenPointers, AreNullOnlyIfNullMeansTheSame)
{
    using Object = std::remove_const_t<typename TypeParam::element_type>;
    TypeParam byDefault;
    if constexpr (ComparisonDetails::HasObjectForNull<Object>)
    {
        byDefault.reset(new Object(Object::getObjectForNull().get()));
    }
    else
    {
        byDefault = std::make_shared<const Object>();
    }
    const bool isNull = areDeeplyEqual(byDefault, TypeParam());
    EXPECT_EQ(isNull, TestFixture::write({byDefault, nullptr}) == TestFixture::write({nullptr, byDefault}));
    EXPECT_EQ(TestFixture::writePlainly({isNull ? nullptr : byDefault, nullptr}),
              TestFixture::write({byDefault, nullptr}));
    EXPECT_NE(TestFixture::writePlainly({nullptr}), TestFixture::writePlainly({byDefault}));
}

// Documents that share otherwise.

TEST(EqualJson, ShowsNotWhichElementsShareTheirStyle)
{
    const auto shared = makeShared(makeRunStyle(makeRunProps(10)));
    const auto other = makeShared(makeRunStyle(makeRunProps(11)));
    const auto makeEqual = [&] { return makeShared(makeRunStyle(makeRunProps(10))); };
    expectEqualJson(makeDocumentOfRuns({shared, shared, other, shared}),
                    makeDocumentOfRuns({makeEqual(), makeEqual(), other, makeEqual()}));
    expectEqualJson(makeDocumentOfRuns({shared, makeEqual(), shared}),
                    makeDocumentOfRuns({shared, shared, makeEqual()}));
}

TEST(EqualJson, ShowsNotWhichStylesShareTheirProperties)
{
    const RunPropsConstPtr props = makeRunProps(10);
    expectEqualJson(
        makeDocumentOfRuns({makeShared(makeRunStyle(props, 1)), makeShared(makeRunStyle(props, 2))}),
        makeDocumentOfRuns({makeShared(makeRunStyle(makeRunProps(10), 1)), makeShared(makeRunStyle(props, 2))}));
}

TEST(EqualJson, ShowsNotWhichPartsOfADocumentShareTheirProperties)
{
    const auto make = [](const RunPropsConstPtr& ofDefaults, const RunPropsConstPtr& ofChange)
    {
        RunStyle style = makeRunStyle(makeRunProps(10));
        style.setTrackedRunProps(std::make_shared<const TrackedObject<RunPropsConstPtr>>(ofChange, boost::none));
        Document document = makeDocumentOfRuns({makeShared(style)});
        document.getStyles().setDefaultRunProps(ofDefaults);
        return document;
    };
    const RunPropsConstPtr props = makeRunProps(20);
    const Document shared = make(props, props);
    const Document apart = make(makeRunProps(20), makeRunProps(20));
    ASSERT_TRUE(shared == apart);
    EXPECT_NE(toPlainJson(shared), toPlainJson(apart));
    EXPECT_EQ(toJson(shared), toJson(apart));
}

TEST(EqualJson, ShowsNotWhetherADefaultStyleIsNull)
{
    Document none = makeDocumentOfRuns({nullptr, makeShared(makeRunStyle(makeRunProps(10))), nullptr});
    Document byDefault = none;
    auto& paragraph = cast<Paragraph>(*byDefault.getTextWithTombstones().getBlocks().front());
    paragraph.getSharedStyle() = makeShared(ParagraphStyle());
    paragraph.getSharedParaMarkStyle() = makeShared(RunStyle());
    paragraph.getRuns().front()->getSharedStyle() = paragraph.getSharedParaMarkStyle();
    paragraph.getRuns().back()->getSharedStyle() = makeShared(RunStyle());
    expectEqualJson(none, byDefault);
    expectEqualJson(byDefault, none);
}

TEST(EqualJson, TellsApartWhatDiffers)
{
    const auto style = makeShared(makeRunStyle(makeRunProps(10)));
    const auto other = makeShared(makeRunStyle(makeRunProps(11)));
    // No properties are something else than default ones.
    const auto withProps = makeShared(makeRunStyle(std::make_shared<const RunProps>()));
    const std::array documents{makeDocumentOfRuns({style, style}),   makeDocumentOfRuns({style, other}),
                               makeDocumentOfRuns({other, style}),   makeDocumentOfRuns({style, nullptr}),
                               makeDocumentOfRuns({nullptr, style}), makeDocumentOfRuns({style, withProps})};
    for (const Document& left : documents)
    {
        for (const Document& right : documents)
        {
            EXPECT_EQ(&left == &right, toJson(left) == toJson(right));
        }
    }
}

// Tables.

namespace
{

using CellStyleMaker = std::function<SharedStyleConstIPtr<CellStyle>()>;

/// Puts a style in each place of a table where one can stand. The identities of the table's parts stay.
void setStyles(Table& table, const CellStyleMaker& makeStyle)
{
    RowStyle rowStyle;
    rowStyle.setDefaultCellStyle(makeStyle());
    table.setSharedStyle(makeShared(rowStyle), RowIndex(1));
    ColumnStyle columnStyle;
    columnStyle.setDefaultCellStyle(makeStyle());
    table.setSharedStyle(makeShared(columnStyle), ColumnIndex(2));
    Cell& cell = table.getOrCreateCell(RowIndex(0), ColumnIndex(0));
    cell.getSharedStyle() = makeStyle();
    PivotTable pivotTable = *cell.getPivotTable();
    pivotTable.setCalculatedValues({PivotTableValue(Blocks(), makeStyle())});
    table.setPivotTable(RowIndex(0), ColumnIndex(0), std::make_unique<PivotTable>(pivotTable));
    Condition condition;
    condition._style = makeStyle();
    table.getConditionalFormats().getElements().front()->setConditions({condition});
}

Table makeTable()
{
    Table table(3, 3);
    table.setPivotTable(RowIndex(0), ColumnIndex(0), std::make_unique<PivotTable>(Size2D<unsigned>{1, 1}));
    table.getConditionalFormats().getElements().push_back(std::make_unique<ConditionalFormat>());
    return table;
}

void expectEqualTableJson(const Table& left, const Table& right)
{
    ASSERT_TRUE(left == right);
    EXPECT_NE(toPlainJson(left), toPlainJson(right)) << "There is nothing to make equal.";
    EXPECT_EQ(toJson(left), toJson(right));
    EXPECT_TRUE(tableFromJson(toJson(left)) == right);
    EXPECT_EQ(toJson(left), toJson(tableFromJson(toJson(left))));
}

TextWithTombstones& getCellText(Table& table)
{
    return table.getOrCreateCell(RowIndex(0), ColumnIndex(0)).getTextWithTombstones();
}

} // namespace

TEST(EqualJsonOfTables, ShowsNotWhichElementsShareTheirStyle)
{
    Table shared = makeTable();
    const auto style = makeShared(makeCellStyle(1));
    setStyles(shared, [&] { return style; });
    Table apart = shared;
    setStyles(apart, [] { return makeShared(makeCellStyle(1)); });
    expectEqualTableJson(shared, apart);
}

TEST(EqualJsonOfTables, ShowsNotWhetherADefaultStyleIsNull)
{
    Table none = makeTable();
    setStyles(none, [] { return nullptr; });
    Table byDefault = none;
    setStyles(byDefault, [] { return makeShared(CellStyle()); });
    byDefault.getSharedStyle() = makeShared(TableStyle());
    expectEqualTableJson(none, byDefault);
}

TEST(EqualJsonOfTables, LeavesOutLinesOfADefaultStyle)
{
    const Table none(3, 3);
    Table byDefault = none;
    byDefault.setSharedStyle(makeShared(RowStyle()), RowIndex(2));
    byDefault.setSharedStyle(makeShared(ColumnStyle()), ColumnIndex(0));
    expectEqualTableJson(none, byDefault);
    const std::string lines = R"("_rowStyles":[],"_columnStyles":[])";
    EXPECT_NE(std::string::npos, toJson(byDefault).find(lines));
    EXPECT_EQ(std::string::npos, toPlainJson(byDefault).find(lines));
}

TEST(EqualJsonOfTables, ShowsNotWhetherACellWithoutContentHasAText)
{
    Table none(1, 1);
    none.getOrCreateCell(RowIndex(0), ColumnIndex(0));
    Table empty = none;
    ASSERT_TRUE(getCellText(empty).getBlocks().empty());
    expectEqualTableJson(none, empty);
}

TEST(EqualJsonOfTables, KeepsATextOfTombstonesAlone)
{
    using Place = CollaborationUtils::IndexIncludingTombstones;
    Table none(1, 1);
    none.getOrCreateCell(RowIndex(0), ColumnIndex(0));
    Table withTombstone = none;
    getCellText(withTombstone).getTombstones() = CollaborationUtils::TombstonesStorage({{Place(0), Place(1)}});
    EXPECT_NE(toJson(none), toJson(withTombstone));
    EXPECT_TRUE(tableFromJson(toJson(withTombstone)) == withTombstone);
}

// Numbers.

TEST(EqualJson, HasNoSignsOfZeros)
{
    const auto make = [](float zero)
    {
        auto props = std::make_shared<RunProps>();
        props->_color = ThemeColor{ThemeColorSlot::Accent1, zero};
        RunStyle style;
        style.setRunProps(std::move(props));
        Document document = makeDocumentOfRuns({makeShared(style)});
        auto shape = std::make_unique<Shape>();
        shape->setSize(Size2D<float>{zero, zero});
        shape->getTextWithTombstones().getBlocks().push_back(makeParagraph("[-0.0,-0.0]"));
        document.getTextWithTombstones().getBlocks().push_back(std::move(shape));
        return document;
    };
    expectEqualJson(make(0.0F), make(-0.0F));
    EXPECT_NE(toJson(make(0.5F)), toJson(make(-0.5F)));
    EXPECT_NE(std::string::npos, toJson(make(-0.0F)).find(R"("[-0.0,-0.0]")"));
}

// Whole documents.

TEST(EqualJson, OfADocumentWithEverythingIsReadAndWrittenAlike)
{
    const Document document = makeDocument();
    const std::string json = toJson(document);
    EXPECT_EQ(json, toJson(Document(document)));
    EXPECT_EQ(json, toJson(fromJson(json)));
    EXPECT_EQ(json, toJson(Zem::fromJson<Document>(toPlainJson(document))));
}

namespace
{

/// Makes documents of given contents, whose elements share their styles at random.
class RandomSharing
{
public:
    explicit RandomSharing(unsigned long seed)
        : _random(seed)
    {
        // Three objects of each content; 0 is the default one.
        for (unsigned char content = 0; content < contentsCount; ++content)
        {
            for (int count = 0; count < 3; ++count)
            {
                _styles[content].push_back(makeShared(content == 0 ? RunStyle() : makeStyle(content)));
            }
        }
        _styles.front().front() = nullptr;
    }

    Document make(const std::vector<unsigned char>& contents)
    {
        std::vector<SharedStyleConstIPtr<RunStyle>> styles;
        for (const unsigned char content : contents)
        {
            styles.push_back(_styles[content][pick(3)]);
        }
        return makeDocumentOfRuns(styles);
    }

    static constexpr unsigned char contentsCount = 5;

private:
    /// Two and two have equal properties.
    RunStyle makeStyle(unsigned char content)
    {
        const RunPropsConstPtr& shared = _props[content % 2];
        return makeRunStyle(pick(2) == 0 ? shared : std::make_shared<const RunProps>(*shared), content);
    }

    unsigned long pick(unsigned long count)
    {
        return std::uniform_int_distribution<unsigned long>(0, count - 1)(_random);
    }

    std::mt19937_64 _random;
    std::array<RunPropsConstPtr, 2> _props{makeRunProps(10), makeRunProps(11)};
    std::array<std::vector<SharedStyleConstIPtr<RunStyle>>, contentsCount> _styles;
};

} // namespace

TEST(EqualJson, IsThatOfEqualDocumentsAndOfNoOthers)
{
    std::mt19937_64 random(7);
    const auto pick = [&](unsigned char count)
    { return static_cast<unsigned char>(std::uniform_int_distribution<int>(0, count - 1)(random)); };
    int equalCount = 0;
    for (unsigned long seed = 0; seed < 200; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::vector<unsigned char> contents(8);
        for (unsigned char& content : contents)
        {
            content = pick(RandomSharing::contentsCount);
        }
        const Document left = RandomSharing(2 * seed).make(contents);
        contents[pick(8)] = pick(RandomSharing::contentsCount);
        const Document right = RandomSharing(2 * seed + 1).make(contents);
        EXPECT_EQ(left == right, toJson(left) == toJson(right));
        equalCount += left == right ? 1 : 0;
    }
    EXPECT_GT(equalCount, 0);
    EXPECT_LT(equalCount, 200);
}

} // namespace Zem::DOM::Tests
