#include "DClb_PropertyDataMergers.h"

#include "DClb_PropertyValues.h"

#include "DOM_SharedObjectFactory.h"

#include <gtest/gtest.h>

#include <set>

namespace Zem::DOMCollaboration
{

using namespace CollaborationEngine;

namespace
{

const std::set<PropertyId> specialisedIds{PropertyId::RunPropertyId,      PropertyId::RunTrackedPropsId,
                                          PropertyId::TrackedActionId,    PropertyId::ParaPropertyId,
                                          PropertyId::ParaTrackedPropsId, PropertyId::ParagraphRunPropertyId,
                                          PropertyId::CellStyleId,        PropertyId::RowStyleId,
                                          PropertyId::ColumnStyleId,      PropertyId::DocumentTimeZoneId};

/// What the merger of the property makes of four values.
template<PropertyId id>
PropertyValueType<id> merge(const PropertyValueType<id>& value, const PropertyValueType<id>& replacement,
                            const PropertyValueType<id>& expected, const PropertyValueType<id>& actual)
{
    using Value = MapPropertyIdToSimpleDataValue<id>;
    const auto merged = makeSetPropertyDataMerger()->getMergedValue(convertPropertyId(id), Value(value),
                                                                    Value(replacement), Value(expected), Value(actual));
    return getSimpleDataValue<PropertyValueType<id>>(*merged);
}

DOM::RunPropsConstPtr makeRunProps(boost::optional<float> size, boost::optional<DOM::FontWeight> weight)
{
    auto props = std::make_shared<DOM::RunProps>();
    props->_fontSize = size;
    props->_weight = weight;
    return props;
}

template<class Props>
void expectDefaultProps(const std::shared_ptr<const Props>& props)
{
    ASSERT_TRUE(props);
    EXPECT_TRUE(*props == Props());
}

template<PropertyId id>
void expectNullsGiveDefaultProps()
{
    expectDefaultProps(merge<id>(nullptr, nullptr, nullptr, nullptr));
}

/// `Style` is that of a cell, row or column.
template<PropertyId id, class Style>
void expectVeryStyles()
{
    const DOM::SharedObjectFactory factory;
    Style withParent;
    withParent.setParentUUID(UUID::generate());
    const auto value = factory.create(Style());
    const auto replacement = factory.create(withParent);
    const DOM::SharedStyleConstIPtr<Style> equalToValue(new DOM::SharedStyle<Style>{Style()});

    EXPECT_EQ(value, merge<id>(value, replacement, value, replacement));
    EXPECT_EQ(replacement, merge<id>(value, replacement, value, value));
    EXPECT_EQ(replacement, merge<id>(value, replacement, value, equalToValue)) << "styles compare by content";
    EXPECT_EQ(replacement, merge<id>(value, replacement, nullptr, nullptr));
    EXPECT_EQ(value, merge<id>(value, replacement, nullptr, replacement));
    EXPECT_EQ(nullptr, merge<id>(nullptr, replacement, value, replacement));
}

/// The winner set null to a default style, the other null to another one.
template<PropertyId id, class Style>
void expectDefaultStyleToStand()
{
    const DOM::SharedObjectFactory factory;
    Style withParent;
    withParent.setParentUUID(UUID::generate());
    const auto byDefault = factory.create(Style());
    const auto other = factory.create(withParent);

    EXPECT_EQ(byDefault, merge<id>(byDefault, other, nullptr, byDefault));
    EXPECT_EQ(nullptr, merge<id>(nullptr, other, byDefault, nullptr));
}

} // namespace

TEST(PropertyDataMergers, EachIdFrom34To74HasOneAndNoOther)
{
    const auto mergers = makeSetPropertyDataMerger();
    EXPECT_FALSE(mergers->findDataMerger(33));
    EXPECT_FALSE(mergers->findDataMerger(75));
    unsigned long simpleCount = 0;
    for (unsigned long id = 34; id <= 74; ++id)
    {
        const DataMerger* merger = mergers->findDataMerger(id);
        ASSERT_TRUE(merger) << id;
        const bool isSimple = cast<SimpleDataMerger>(merger) != nullptr;
        EXPECT_NE(specialisedIds.count(static_cast<PropertyId>(id)) != 0, isSimple) << id;
        simpleCount += isSimple;
    }
    EXPECT_EQ(31u, simpleCount);
}

TEST(PropertyDataMergers, FirstAndLastIdHaveASimpleMerger)
{
    const auto mergers = makeSetPropertyDataMerger();
    EXPECT_TRUE(cast<SimpleDataMerger>(mergers->findDataMerger(34)));
    EXPECT_TRUE(cast<SimpleDataMerger>(mergers->findDataMerger(74)));
}

TEST(PropertyDataMergers, EachCallMakesNewMergers)
{
    const auto first = makeSetPropertyDataMerger();
    const auto second = makeSetPropertyDataMerger();
    for (unsigned long id = 34; id <= 74; ++id)
    {
        EXPECT_NE(first->findDataMerger(id), second->findDataMerger(id)) << id;
    }
}

TEST(PropertyDataMergers, TimeZoneIsReplacedIfItWasAsExpected)
{
    constexpr PropertyId id = PropertyId::DocumentTimeZoneId;
    const DOM::TimeZone value(60);
    const DOM::TimeZone replacement(120);
    EXPECT_TRUE(replacement == merge<id>(value, replacement, DOM::TimeZone(0), DOM::TimeZone(0)));
    EXPECT_TRUE(value == merge<id>(value, replacement, DOM::TimeZone(0), DOM::TimeZone(30)));
}

TEST(PropertyDataMergers, FieldsAreMergedOneByOne)
{
    // The winner set the size from 9 to 12 and left the weight; the other made the text bold.
    const auto old = makeRunProps(9.f, boost::none);
    const auto value = makeRunProps(12.f, boost::none);
    const auto replacement = makeRunProps(9.f, DOM::FontWeight::Bold);
    const auto merged = merge<PropertyId::RunPropertyId>(value, replacement, old, value);
    EXPECT_TRUE(*makeRunProps(12.f, DOM::FontWeight::Bold) == *merged);
    EXPECT_TRUE(*merged == *merge<PropertyId::ParagraphRunPropertyId>(value, replacement, old, value));
    EXPECT_TRUE(*makeRunProps(12.f, boost::none) == *value) << "the arguments stay as they are";
}

TEST(PropertyDataMergers, EqualExpectationsTakeTheReplacement)
{
    const auto replacement = makeRunProps(9.f, DOM::FontWeight::Bold);
    const auto merged = merge<PropertyId::RunPropertyId>(
        makeRunProps(12.f, boost::none), replacement, makeRunProps(1.f, boost::none), makeRunProps(1.f, boost::none));
    EXPECT_TRUE(*replacement == *merged);
    EXPECT_NE(replacement, merged);
}

TEST(PropertyDataMergers, FourNullsGiveDefaultProps)
{
    expectNullsGiveDefaultProps<PropertyId::RunPropertyId>();
    expectNullsGiveDefaultProps<PropertyId::RunTrackedPropsId>();
    expectNullsGiveDefaultProps<PropertyId::TrackedActionId>();
    expectNullsGiveDefaultProps<PropertyId::ParaPropertyId>();
    expectNullsGiveDefaultProps<PropertyId::ParaTrackedPropsId>();
    expectNullsGiveDefaultProps<PropertyId::ParagraphRunPropertyId>();
}

TEST(PropertyDataMergers, ANullValueIsDefaultPropsChangedFieldByField)
{
    // The weight was as expected, so that it becomes the other's; the size wasn't.
    const auto merged = merge<PropertyId::RunPropertyId>(nullptr, makeRunProps(9.f, DOM::FontWeight::Bold),
                                                         makeRunProps(8.f, boost::none), nullptr);
    EXPECT_TRUE(*makeRunProps(boost::none, DOM::FontWeight::Bold) == *merged);
}

TEST(PropertyDataMergers, ANullReplacementIsDefaultProps)
{
    expectDefaultProps(merge<PropertyId::RunPropertyId>(makeRunProps(9.f, boost::none), nullptr, nullptr, nullptr));
}

TEST(PropertyDataMergers, SharedStylesAreTakenAsTheyAreNotCopied)
{
    expectVeryStyles<PropertyId::CellStyleId, DOM::CellStyle>();
    expectVeryStyles<PropertyId::RowStyleId, DOM::RowStyle>();
    expectVeryStyles<PropertyId::ColumnStyleId, DOM::ColumnStyle>();
}

TEST(PropertyDataMergers, SettingNullToADefaultStyleIsAChange)
{
    expectDefaultStyleToStand<PropertyId::CellStyleId, DOM::CellStyle>();
    expectDefaultStyleToStand<PropertyId::RowStyleId, DOM::RowStyle>();
    expectDefaultStyleToStand<PropertyId::ColumnStyleId, DOM::ColumnStyle>();
}

TEST(PropertyDataMergers, AValueOfANullStyleIsUnequalToThatOfADefaultOne)
{
    using Value = MapPropertyIdToSimpleDataValue<PropertyId::CellStyleId>;
    const auto byDefault = DOM::SharedObjectFactory().create(DOM::CellStyle());
    EXPECT_FALSE(Value(nullptr) == Value(byDefault));
    EXPECT_TRUE(Value(byDefault) == Value(DOM::SharedObjectFactory().create(DOM::CellStyle())));
    EXPECT_TRUE(areDeeplyEqual(byDefault, DOM::SharedStyleConstIPtr<DOM::CellStyle>()))
        << "documents take them for one";
}

TEST(PropertyDataMergers, AValueOfAnotherTypeIsABadCast)
{
    const auto mergers = makeSetPropertyDataMerger();
    const SimpleDataValue<DOM::TimeZone> right;
    const SimpleDataValue<char> wrong;
    const unsigned long id = convertPropertyId(PropertyId::DocumentTimeZoneId);
    EXPECT_THROW(mergers->getMergedValue(id, wrong, right, right, right), std::bad_cast);
    EXPECT_THROW(mergers->getMergedValue(id, right, wrong, right, right), std::bad_cast);
    EXPECT_THROW(mergers->getMergedValue(id, right, right, wrong, right), std::bad_cast);
    EXPECT_THROW(mergers->getMergedValue(id, right, right, right, wrong), std::bad_cast);
}

TEST(PropertyId, NumbersRunFrom34To74WithoutTheReservedOne)
{
    std::vector<unsigned long> numbers;
#define ZEM_PUSH_NUMBER(number, name, ...) numbers.push_back(convertPropertyId(PropertyId::name));
    ZEM_PROPERTIES(ZEM_PUSH_NUMBER)
#undef ZEM_PUSH_NUMBER
    std::vector<unsigned long> expected;
    for (unsigned long number = 34; number <= 74; ++number)
    {
        if (number != 66)
        {
            expected.push_back(number);
        }
    }
    EXPECT_EQ(expected, numbers);
}

} // namespace Zem::DOMCollaboration
