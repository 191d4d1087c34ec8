#include "Editing/CS_Looks.h"

#include "Editing/CS_InvalidEditError.h"
#include "Editing/CS_LookChange.h"

#include "DClb_PropertyValues.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationSession
{

namespace
{

using CollaborationEngine::DataValue;
using CollaborationEngine::getSimpleDataValue;
using DOM::FontSlant;
using DOM::FontWeight;
using DOM::ParaProps;
using DOM::RunProps;
using DOMCollaboration::MapPropertyIdToSimpleDataValue;
using DOMCollaboration::PropertyId;
using Comments = std::vector<UUID>;
using Value = LookChange::Value;

template<PropertyId id>
Value makeValue(DOMCollaboration::PropertyValueType<id> value)
{
    return makeSharedConst<MapPropertyIdToSimpleDataValue<id>>(std::move(value));
}

Value makeRunValue(boost::optional<FontWeight> weight, boost::optional<FontSlant> slant)
{
    auto props = std::make_shared<RunProps>();
    props->_weight = weight;
    props->_slant = slant;
    return makeValue<PropertyId::RunPropertyId>(std::move(props));
}

const Value nullRunValue = makeValue<PropertyId::RunPropertyId>(nullptr);

Value makeComments(std::string_view names)
{
    Comments comments;
    for (const char name : names)
    {
        comments.push_back(makeComment(name));
    }
    return makeValue<PropertyId::CommentUUIDsId>(std::move(comments));
}

/// Applies a change, and checks that it holds afterwards.
Value apply(const LookChange& change, const Value& current)
{
    Value value = change.apply(*current);
    EXPECT_TRUE(change.holds(*value));
    return value;
}

void expectError(const std::string& message, CallableRef<void()> work)
{
    try
    {
        work();
        ADD_FAILURE() << "no error: " << message;
    }
    catch (const InvalidEditError& error)
    {
        EXPECT_EQ(message, error.what());
    }
}

TEST(LookChange, SetsItsFieldAndNoOther)
{
    const LookChange bold = makeBold();
    EXPECT_EQ(PropertyId::RunPropertyId, bold.getPropertyId());
    EXPECT_TRUE(*makeRunValue(FontWeight::Bold, FontSlant::Italic) ==
                *apply(bold, makeRunValue(FontWeight::Light, FontSlant::Italic)));
    EXPECT_TRUE(*makeRunValue(FontWeight::Bold, boost::none) == *apply(bold, nullRunValue));
    EXPECT_FALSE(bold.holds(*nullRunValue));
    EXPECT_FALSE(bold.holds(*makeRunValue(FontWeight::Light, FontSlant::Italic)));
    EXPECT_TRUE(bold.holds(*makeRunValue(FontWeight::Bold, FontSlant::Italic)));
}

TEST(LookChange, ClearsAField)
{
    const LookChange clear = LookChange::clearField(&RunProps::_weight);
    EXPECT_TRUE(*makeRunValue(boost::none, FontSlant::Italic) ==
                *apply(clear, makeRunValue(FontWeight::Bold, FontSlant::Italic)));
    EXPECT_TRUE(*nullRunValue == *apply(clear, makeRunValue(FontWeight::Bold, boost::none)));
    EXPECT_TRUE(clear.holds(*nullRunValue));
    EXPECT_TRUE(clear.holds(*makeRunValue(boost::none, FontSlant::Italic)));
}

TEST(LookChange, KnowsTheFieldsOfParagraphs)
{
    const LookChange centred = LookChange::setField(&ParaProps::_alignment, DOM::ParagraphAlignment::Center);
    EXPECT_EQ(PropertyId::ParaPropertyId, centred.getPropertyId());
    EXPECT_EQ(std::vector<std::string_view>{"_alignment"}, centred.getFieldNames());
    const Value value = apply(centred, makeValue<PropertyId::ParaPropertyId>(nullptr));
    EXPECT_TRUE(getSimpleDataValue<DOM::ParaPropsConstPtr>(*value)->_alignment == DOM::ParagraphAlignment::Center);

    const LookChange runs = LookChange::setField(PropertyId::ParagraphRunPropertyId, &RunProps::_fontName, "Antiqua");
    EXPECT_EQ(PropertyId::ParagraphRunPropertyId, runs.getPropertyId());
    EXPECT_EQ("Antiqua", *getSimpleDataValue<DOM::RunPropsConstPtr>(*apply(runs, nullRunValue))->_fontName);
    const LookChange hidden = LookChange::setField(&RunProps::_isHidden, true);
    EXPECT_TRUE(*getSimpleDataValue<DOM::RunPropsConstPtr>(*apply(hidden, nullRunValue))->_isHidden);
}

TEST(LookChange, OfABundleSetsTheFieldsThatHaveAValue)
{
    const LookChange both =
        LookChange::setProperty(PropertyId::RunPropertyId, makeRunValue(FontWeight::Bold, FontSlant::Italic));
    EXPECT_EQ((std::vector<std::string_view>{"_weight", "_slant"}), both.getFieldNames());
    auto props = std::make_shared<RunProps>();
    props->_fontSize = 12.f;
    const Value value = apply(both, makeValue<PropertyId::RunPropertyId>(props));
    const auto& applied = getSimpleDataValue<DOM::RunPropsConstPtr>(*value);
    EXPECT_EQ(12.f, *applied->_fontSize);
    EXPECT_EQ(FontWeight::Bold, *applied->_weight);
}

TEST(LookChange, OfABundleWithoutFieldsClearsAll)
{
    const LookChange clear = LookChange::setProperty(PropertyId::RunPropertyId, nullRunValue);
    EXPECT_TRUE(*nullRunValue == *apply(clear, makeRunValue(FontWeight::Bold, FontSlant::Italic)));
    const Value empty = makeRunValue(boost::none, boost::none);
    const LookChange emptied = LookChange::setProperty(PropertyId::RunPropertyId, empty);
    EXPECT_TRUE(*empty == *apply(emptied, makeRunValue(FontWeight::Bold, FontSlant::Italic)));
    EXPECT_FALSE(emptied.holds(*nullRunValue));
    EXPECT_FALSE(emptied == clear);
}

TEST(LookChange, PropertyThatIsNoBundleIsOneField)
{
    const LookChange link = LookChange::setLink(makeLink("there"));
    EXPECT_EQ(PropertyId::HyperlinkId, link.getPropertyId());
    EXPECT_TRUE(link.getFieldNames().empty());
    const Value there = makeValue<PropertyId::HyperlinkId>(makeLink("there"));
    EXPECT_TRUE(*there == *apply(link, makeValue<PropertyId::HyperlinkId>(makeLink("here"))));
    EXPECT_FALSE(link.holds(*makeValue<PropertyId::HyperlinkId>(nullptr)));
    EXPECT_TRUE(LookChange::setLink(nullptr).holds(*makeValue<PropertyId::HyperlinkId>(nullptr)));
}

TEST(LookChange, CommentsJoinThoseThatAreThere)
{
    EXPECT_TRUE(*makeComments("abc") == *apply(LookChange::addComment(makeComment('b')), makeComments("ac")));
    EXPECT_TRUE(*makeComments("ac") == *apply(LookChange::removeComment(makeComment('b')), makeComments("abc")));
    EXPECT_TRUE(*makeComments("a") == *apply(LookChange::addComment(makeComment('a')), makeComments("")));
    EXPECT_TRUE(LookChange::addComment(makeComment('a')).holds(*makeComments("cab")));
    EXPECT_TRUE(LookChange::removeComment(makeComment('a')).holds(*makeComments("b")));
}

TEST(LookChange, CommentsAreTheSameInWhicheverOrderTheyCame)
{
    const LookChange first = LookChange::addComment(makeComment('a'));
    const LookChange second = LookChange::addComment(makeComment('b'));
    const Value none = makeComments("");
    EXPECT_TRUE(*apply(second, apply(first, none)) == *apply(first, apply(second, none)));
}

TEST(LookChange, ReversalSetsItsFieldsBackAndNoOther)
{
    const Value old = makeRunValue(FontWeight::Light, boost::none);
    const Value now = makeRunValue(FontWeight::Bold, FontSlant::Italic);
    EXPECT_TRUE(*makeRunValue(FontWeight::Light, FontSlant::Italic) == *apply(makeBold().makeReversal(old), now));
    EXPECT_TRUE(*makeRunValue(boost::none, FontSlant::Italic) == *apply(makeBold().makeReversal(nullRunValue), now));
    const Value empty = makeRunValue(boost::none, boost::none);
    for (const Value& value : {nullRunValue, empty, old})
    {
        EXPECT_TRUE(*value == *apply(makeBold().makeReversal(value), apply(makeBold(), value)));
    }
    const LookChange add = LookChange::addComment(makeComment('a'));
    EXPECT_TRUE(LookChange::removeComment(makeComment('a')) == add.makeReversal(makeComments("b")));
    EXPECT_TRUE(add == add.makeReversal(makeComments("ab")));
}

TEST(LookChange, FieldsOfTwoChangesMeet)
{
    const LookChange both =
        LookChange::setProperty(PropertyId::RunPropertyId, makeRunValue(FontWeight::Bold, FontSlant::Italic));
    EXPECT_TRUE(both.setsSameFieldAs(makeBold()));
    EXPECT_FALSE(makeItalic().setsSameFieldAs(makeBold()));
    EXPECT_FALSE(makeBold().setsSameFieldAs(
        LookChange::setField(PropertyId::ParagraphRunPropertyId, &RunProps::_weight, FontWeight::Bold)));
    EXPECT_TRUE(makeBold() == both.getPartAlsoSetBy(LookChange::clearField(&RunProps::_weight)));
    EXPECT_TRUE(makeItalic() == both.getPartNotSetBy(LookChange::clearField(&RunProps::_weight)));
    EXPECT_TRUE(both == both.getPartNotSetBy(LookChange::setLink(nullptr)));
    EXPECT_FALSE(makeBold().getPartNotSetBy(both));
    EXPECT_FALSE(makeBold().getPartAlsoSetBy(makeItalic()));
}

TEST(LookChange, DifferentCommentsAreDifferentFields)
{
    const LookChange add = LookChange::addComment(makeComment('a'));
    const LookChange all = LookChange::setProperty(PropertyId::CommentUUIDsId, makeComments("ab"));
    EXPECT_TRUE(add.setsSameFieldAs(LookChange::removeComment(makeComment('a'))));
    EXPECT_FALSE(add.setsSameFieldAs(LookChange::removeComment(makeComment('b'))));
    EXPECT_TRUE(add.setsSameFieldAs(all));
    EXPECT_TRUE(all.setsSameFieldAs(add));
    EXPECT_FALSE(add.getPartNotSetBy(all));
    EXPECT_TRUE(add == add.getPartNotSetBy(LookChange::addComment(makeComment('b'))));
}

TEST(LookChange, IsMadeAgainFromWhatItTells)
{
    const LookChange both =
        LookChange::setProperty(PropertyId::RunPropertyId, makeRunValue(FontWeight::Bold, FontSlant::Italic));
    const auto names = both.getFieldNames();
    const LookFields fields =
        LookChange::findFields(both.getPropertyId(), std::vector<std::string>(names.begin(), names.end()));
    EXPECT_EQ(both.getFields(), fields);
    EXPECT_TRUE(both == LookChange::setFields(both.getPropertyId(), fields, both.getValue()));
    const LookChange link = LookChange::setLink(makeLink("there"));
    EXPECT_EQ(link.getFields(), LookChange::findFields(PropertyId::HyperlinkId, {}));
}

TEST(LookChange, KeepsOfAValueOnlyItsFields)
{
    const LookFields weight = makeBold().getFields();
    EXPECT_TRUE(makeBold() == LookChange::setFields(PropertyId::RunPropertyId, weight,
                                                    makeRunValue(FontWeight::Bold, FontSlant::Italic)));
}

TEST(LookChange, RefusesWhatDoesntFit)
{
    expectError("Property 52 isn't one of a paragraph",
                [] { LookChange::setProperty(PropertyId::ExtentId, nullRunValue); });
    expectError("The value isn't of the type of the property",
                [] { LookChange::setProperty(PropertyId::HyperlinkId, nullRunValue); });
    expectError("The value isn't of the type of the property",
                [] { LookChange::setField(PropertyId::ParaPropertyId, &RunProps::_weight, FontWeight::Bold); });
    expectError("Property 35 hasn't the fields to set",
                [] { LookChange::setFields(PropertyId::RunPropertyId, LookFields(), nullRunValue); });
    expectError("Property 35 hasn't the fields to set",
                [] { LookChange::setFields(PropertyId::RunPropertyId, LookFields().set(21), nullRunValue); });
    expectError("Property 35 has no field \"_alignment\"",
                [] {
                    LookChange::findFields(PropertyId::RunPropertyId, {"_weight", "_alignment"});
                });
}

} // namespace

} // namespace Zem::CollaborationSession
