// The value types of tables, one by one. What all of them must do is in DOM_ValueTypeTest.h.

#include "DOM_ValueTypeTest.h"

#include "DOM_Cell.h"
#include "DOM_ChartSpace.h"
#include "DOM_ConditionalFormat.h"
#include "DOM_DefaultCellProps.h"
#include "DOM_Frame.h"
#include "DOM_HeaderRowsCols.h"
#include "DOM_Image.h"
#include "DOM_PivotTable.h"
#include "DOM_RowColumnStyle.h"
#include "DOM_TableFilterInfo.h"
#include "DOM_TableSettings.h"
#include "DOM_TableStyle.h"

#include "Util_BaseRuntimeError.h"

namespace Zem::DOM::Tests
{

using StyleTypes = ::testing::Types<CellBorders, CellMargins, CellProps, CellStyle, RowHeightImpl, RowProps,
                                    ColumnProps, RowStyle, ColumnStyle, TableBorders, TableProps, TableStyle>;
INSTANTIATE_TYPED_TEST_SUITE_P(TableStyles, ValueType, StyleTypes);

using PivotTypes =
    ::testing::Types<PivotTableField, PivotTableCategoryInfo, ValueField, PivotTableValue, FieldCache, PivotTable>;
INSTANTIATE_TYPED_TEST_SUITE_P(PivotTables, ValueType, PivotTypes);

using FrameTypes = ::testing::Types<TextAnchor, AbsoluteAnchor, CellCorner, OneCellAnchor, TwoCellAnchor, ChartSeries,
                                    ChartAxis, ChartSpace, ImageCrop, Image, Frame>;
INSTANTIATE_TYPED_TEST_SUITE_P(Frames, ValueType, FrameTypes);

using TablePropertyTypes = ::testing::Types<CellMergeProps, HeaderRowsCols, GroupingProps, TableSettings, ColumnFilter,
                                            TableFilterInfo, Condition, ConditionalFormat>;
INSTANTIATE_TYPED_TEST_SUITE_P(TableProperties, ValueType, TablePropertyTypes);

TEST(CellMergeProps, TravelsAsTwoCounts)
{
    EXPECT_EQ(R"({"_capturedRowsCount":2,"_capturedColsCount":3})", toJson(CellMergeProps(2, 3)));
    EXPECT_TRUE(CellMergeProps(2, 3) != CellMergeProps(2, 4));
    EXPECT_TRUE(CellMergeProps(2, 3) != CellMergeProps());
}

TEST(CellMergeProps, AreAMergeWhereTheyCaptureAnything)
{
    EXPECT_FALSE(CellMergeProps().isMerge());
    EXPECT_TRUE(CellMergeProps(1, 0).isMerge());
    EXPECT_TRUE(CellMergeProps(0, 1).isMerge());
}

TEST(TableSettings, TravelsWithItsGroupingApart)
{
    EXPECT_EQ(R"({"_showZeroValue":true,"_groupingProps":{"_isSummaryBelow":true,"_isSummaryRight":true}})",
              toJson(TableSettings()));
}

TEST(RowProps, TravelsUnderItsKeys)
{
    RowProps props;
    props._isHidden = true;
    props._height = RowHeightImpl{12.5F, RowHeightRule::AtLeast};
    EXPECT_EQ(R"({"_isHidden":{"value":1},"_height":{"hasValue":true,"value":{)"
              R"("_value":{"hasValue":true,"value":12.5},"_rule":{"hasValue":true,"value":1}}},)"
              R"("_groupingLevel":{"hasValue":false},"_hasPageBreakBefore":{"value":-1}})",
              toJson(props));
}

TEST(ColumnProps, TravelsUnderItsKeys)
{
    ColumnProps props;
    props._width = 20.0F;
    props._groupingLevel = static_cast<unsigned char>(3);
    EXPECT_EQ(R"({"_isHidden":{"value":-1},"_isBestFit":{"value":-1},"_width":{"hasValue":true,"value":20.0},)"
              R"("_groupingLevel":{"hasValue":true,"value":3},"_hasPageBreakBefore":{"value":-1}})",
              toJson(props));
}

TEST(RowColumnStyle, TravelsUnderItsKeys)
{
    const std::string text = toJson(RowStyle());
    EXPECT_EQ(R"({"_defaultCellStyle":{"id":0},"_props":{"ptr_wrapper":{"id":0}},"_parentUUID":)" + toJson(UUID()) +
                  "}",
              text);
}

TEST(PivotTable, TravelsUnderItsKeysInOrder)
{
    PivotTable pivotTable(Size2D<unsigned>{3, 4});
    pivotTable.setRows({PivotTableCategoryInfo{PivotFieldID(7), PivotSortOrder::Descending, false}});
    const std::string text = toJson(pivotTable);
    std::size_t position = 0;
    for (const std::string key : {"value0", "_range", "_rows", "_columns", "_values", "_fields", "_fieldCache",
                                  "_layoutType", "_calculatedValues", "_size"})
    {
        position = text.find("\"" + key + "\":", position);
        ASSERT_NE(std::string::npos, position) << key << " in " << text;
    }
    EXPECT_NE(std::string::npos,
              text.find(R"("_rows":[{"_fieldID":{"_value":7},"_sortOrder":2,"_showTotals":false}])"));
    EXPECT_NE(std::string::npos, text.find(R"("_size":{"value0":3,"value1":4})"));
    EXPECT_NE(std::string::npos, text.find(R"("_fieldCache":{"value0":{"_uuid":)"));
}

TEST(PivotTable, TravelsWithItsValuesAndFields)
{
    EXPECT_EQ(R"({"_fieldName":"a","_nameAlias":"b","_fieldID":{"_value":3}})",
              toJson(PivotTableField{"a", "b", PivotFieldID(3)}));
    const ValueField field(PivotFieldID(2), PivotFunction::Average);
    EXPECT_EQ(R"({"value0":)" + toJson(static_cast<const UUIDable&>(field)) +
                  R"(,"_fieldID":{"_value":2},"_function":3})",
              toJson(field));
    FieldCache cache;
    cache.getFieldValueCache()[PivotFieldID(5)].emplace_back();
    EXPECT_NE(
        std::string::npos,
        toJson(cache).find(R"("_fieldValueCache":[{"key":{"_value":5},"value":[{"_blocks":[],"_style":{"id":0}}]}])"));
}

TEST(PivotTable, RefusesNullBlocks)
{
    EXPECT_THROW(fromJson<PivotTableValue>(R"({"_blocks":[{"polymorphic_id":0}],"_style":{"id":0}})"),
                 BaseRuntimeError);
}

TEST(PivotTable, RefusesANumberThatIsNoFunction)
{
    EXPECT_THROW(
        fromJson<ValueField>(R"({"value0":)" + toJson(UUIDable()) + R"(,"_fieldID":{"_value":2},"_function":9})"),
        cereal::Exception);
}

TEST(Anchors, TravelByTheirOrder)
{
    EXPECT_EQ(0, Anchor(TextAnchor()).which());
    EXPECT_EQ(1, Anchor(AbsoluteAnchor()).which());
    EXPECT_EQ(2, Anchor(OneCellAnchor()).which());
    EXPECT_EQ(3, Anchor(TwoCellAnchor()).which());
}

TEST(TableProps, AreVisibleUnlessHidden)
{
    TableProps props;
    EXPECT_TRUE(props.isVisible());
    props._isVisible = true;
    EXPECT_TRUE(props.isVisible());
    props._isVisible = false;
    EXPECT_FALSE(props.isVisible());
}

TEST(ConditionalFormat, KeepsWhatIsSet)
{
    ConditionalFormat format;
    EXPECT_FALSE(format.getStopCalculateConditions());
    format.setStopCalculateConditions(true);
    EXPECT_TRUE(format.getStopCalculateConditions());
}

TEST(Frame, HoldsEveryKindOfObject)
{
    Frame frame;
    EXPECT_EQ(nullptr, frame.getGraphicalObject());
    EXPECT_TRUE(fromJson<Frame>(toJson(frame)) == frame);
    auto chart = std::make_unique<ChartSpace>();
    chart->_title = "Sales";
    frame.setGraphicalObject(std::move(chart));
    const Frame copy = frame;
    EXPECT_NE(frame.getGraphicalObject(), copy.getGraphicalObject());
    EXPECT_TRUE(copy == frame);
    EXPECT_TRUE(fromJson<Frame>(toJson(frame)) == frame);
    EXPECT_NE(std::string::npos, toJson(frame).find("\"polymorphic_name\":\"Zem::DOM::ChartSpace\""));
    frame.setGraphicalObject(std::make_unique<Image>());
    EXPECT_FALSE(copy == frame);
    EXPECT_TRUE(fromJson<Frame>(toJson(frame)) == frame);
    EXPECT_NE(std::string::npos, toJson(frame).find("\"polymorphic_name\":\"Zem::DOM::Image\""));
    frame.setGraphicalObject(nullptr);
    frame.setExtent(Size2D<float>{10, 20});
    EXPECT_TRUE(fromJson<Frame>(toJson(frame)) == frame);
}

TEST(Frame, RefusesAnObjectOfAnUnknownClass)
{
    Frame frame;
    frame.setGraphicalObject(std::make_unique<Image>());
    std::string text = toJson(frame);
    text.replace(text.find("DOM::Image"), 10, "DOM::Table");
    EXPECT_THROW(fromJson<Frame>(text), cereal::Exception);
}

TEST(ChartSpace, TravelsAloneWithoutItsName)
{
    auto chart = std::make_unique<ChartSpace>();
    chart->_type = ChartType::Pie;
    const std::string text = toJson(chart);
    EXPECT_EQ(0u, text.find(R"({"polymorphic_id":1073741824,"ptr_wrapper":{"valid":1,"data":)"));
    EXPECT_TRUE(*fromJson<std::unique_ptr<ChartSpace>>(text) == *chart);
}

TEST(ChartSpace, ClonesAsWhatItIs)
{
    ChartSpace chart;
    chart._series.emplace_back();
    std::shared_ptr<GraphicalObject> shared;
    chart.cloneTo(shared);
    EXPECT_EQ(GraphicalObjectKind::Chart, shared->getKind());
    EXPECT_TRUE(*shared == chart);
    EXPECT_FALSE(*shared == Image());
}

TEST(DefaultCellProps, DifferByTheKindOfDocument)
{
    EXPECT_TRUE(getWorksheetDefaultCellProps()->_textOverflow == CellTextOverflow::Spill);
    EXPECT_TRUE(getWordDefaultCellProps()->_textOverflow == CellTextOverflow::Wrap);
    EXPECT_FALSE(*getDefaultCellProps() == *getWordDefaultCellProps());
    EXPECT_FALSE(*getDefaultCellProps() == *getWorksheetDefaultCellProps());
    EXPECT_FALSE(*getWordDefaultCellProps() == *getWorksheetDefaultCellProps());
}

TEST(DefaultCellProps, LeaveNothingToInherit)
{
    const auto expectSet = [](const auto& field) { EXPECT_TRUE(static_cast<bool>(field)); };
    for (const CellPropsConstPtr& props :
         {getDefaultCellProps(), getWordDefaultCellProps(), getWorksheetDefaultCellProps()})
    {
        forEachField<CellProps>(
            [&](const auto& row)
            {
                const auto& value = (*props).*(row._member);
                if constexpr (!HasFields<std::remove_cvref_t<decltype(value)>>)
                {
                    expectSet(value);
                }
            });
        forEachField<CellBorders>([&](const auto& row) { expectSet(props->_borders.*(row._member)); });
        forEachField<CellMargins>([&](const auto& row) { expectSet(props->_margins.*(row._member)); });
    }
}

} // namespace Zem::DOM::Tests
