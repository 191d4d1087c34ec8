#include "DOM_RebaseProperty.h"
#include "DOM_FieldChanges.h"

#include <gtest/gtest.h>

namespace Zem::DOM::Tests
{

namespace
{

template<class T>
class RebaseProperty : public ::testing::Test
{
protected:
    using Ptr = std::shared_ptr<T>;
    using ConstPtr = std::shared_ptr<const T>;

    static ConstPtr rebase(const ConstPtr& value, const ConstPtr& replacement, const ConstPtr& expected,
                           const ConstPtr& actual)
    {
        Ptr merged = value ? std::make_shared<T>(*value) : nullptr;
        rebaseProperty(merged, replacement, expected, actual);
        return merged;
    }
};

using RebasedTypes = ::testing::Types<RunProps, ParaProps, TrackedRunProps, TrackedParaProps, TrackedAction>;
TYPED_TEST_SUITE(RebaseProperty, RebasedTypes);

RunPropsConstPtr makeProps(boost::optional<float> fontSize, boost::optional<FontWeight> weight = boost::none)
{
    RunProps props;
    props._fontSize = fontSize;
    props._weight = weight;
    return std::make_shared<const RunProps>(props);
}

} // namespace

TYPED_TEST(RebaseProperty, GivesADefaultObjectForFourNulls)
{
    const auto merged = this->rebase(nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(merged);
    EXPECT_TRUE(*merged == TypeParam());
}

TYPED_TEST(RebaseProperty, GivesADefaultObjectForANullReplacement)
{
    const auto changed = std::make_shared<const TypeParam>(makeChanged(TypeParam()));
    const auto merged = this->rebase(changed, nullptr, changed, changed);
    ASSERT_TRUE(merged);
    EXPECT_TRUE(*merged == TypeParam());
}

TYPED_TEST(RebaseProperty, TakesACopyOfTheReplacementWhenExpectedIsActual)
{
    const auto value = std::make_shared<const TypeParam>();
    const auto replacement = std::make_shared<const TypeParam>(makeChanged(TypeParam()));
    const auto merged = this->rebase(value, replacement, value, std::make_shared<const TypeParam>(*value));
    EXPECT_TRUE(*merged == *replacement);
    EXPECT_NE(replacement, merged);
}

TYPED_TEST(RebaseProperty, GivesAnObjectForANullValue)
{
    const auto actual = std::make_shared<const TypeParam>(makeChanged(TypeParam()));
    EXPECT_TRUE(this->rebase(nullptr, nullptr, nullptr, actual));
    EXPECT_TRUE(this->rebase(nullptr, actual, actual, nullptr));
}

template<class T>
class RebaseWithoutNesting : public RebaseProperty<T>
{
};

using TypesWithoutNesting = ::testing::Types<RunProps, ParaProps, TrackedAction>;
TYPED_TEST_SUITE(RebaseWithoutNesting, TypesWithoutNesting);

TYPED_TEST(RebaseWithoutNesting, KeepsTheValueWhereExpectedAndActualDifferInAll)
{
    const auto actual = std::make_shared<const TypeParam>(makeChanged(TypeParam()));
    const auto value = std::make_shared<const TypeParam>(makeChanged(*actual));
    EXPECT_TRUE(*this->rebase(value, nullptr, nullptr, actual) == *value);
    EXPECT_TRUE(*this->rebase(value, nullptr, actual, nullptr) == *value);
}

TYPED_TEST(RebaseWithoutNesting, CountsANullValueAsTheDefault)
{
    const auto actual = std::make_shared<const TypeParam>(makeChanged(TypeParam()));
    EXPECT_TRUE(*this->rebase(nullptr, actual, nullptr, actual) == TypeParam());
}

template<class T>
class RebaseFields : public ::testing::Test
{
};

using FieldwiseTypes = ::testing::Types<RunProps, ParaProps>;
TYPED_TEST_SUITE(RebaseFields, FieldwiseTypes);

TYPED_TEST(RebaseFields, TakesExactlyTheFieldsInWhichExpectedAndActualAgree)
{
    const TypeParam expected = makeChanged(TypeParam());
    const TypeParam value = makeChanged(expected);
    const TypeParam replacement = makeChanged(value);
    forEachFieldChanged(expected,
                        [&](const char* name, const TypeParam& actual)
                        {
                            TypeParam merged = value;
                            rebaseProperty(merged, replacement, expected, actual);
                            forEachField<TypeParam>(
                                [&](const auto& row)
                                {
                                    const TypeParam& source = row._name == std::string(name) ? value : replacement;
                                    EXPECT_TRUE(areDeeplyEqual(merged.*(row._member), source.*(row._member)))
                                        << name << ' ' << row._name;
                                });
                        });
}

TYPED_TEST(RebaseFields, CountsANullExpectedAsNoFieldSet)
{
    const TypeParam actual = makeChanged(TypeParam());
    forEachFieldChanged(TypeParam(),
                        [&](const char* name, const TypeParam& oneField)
                        {
                            const auto constOneField = std::make_shared<const TypeParam>(oneField);
                            const auto replacement = std::make_shared<const TypeParam>(actual);
                            auto merged = std::make_shared<TypeParam>();
                            const std::shared_ptr<const TypeParam> null;
                            rebaseProperty(merged, replacement, null, constOneField);
                            TypeParam wanted = actual;
                            forEachField<TypeParam>(
                                [&](const auto& row)
                                {
                                    if (row._name == std::string(name))
                                    {
                                        wanted.*(row._member) = TypeParam().*(row._member);
                                    }
                                });
                            EXPECT_TRUE(*merged == wanted) << name;
                        });
}

TEST(RebaseTracked, MergesThePropertiesFromBeforeFieldByField)
{
    const TrackedRunProps expected(makeProps(10.0f, FontWeight::Bold));
    const TrackedRunProps actual(makeProps(10.0f, FontWeight::Light));
    const TrackedRunProps replacement(makeProps(20.0f, FontWeight::Thin));
    TrackedRunProps merged(makeProps(30.0f, FontWeight::Black));
    rebaseProperty(merged, replacement, expected, actual);
    EXPECT_TRUE(merged == TrackedRunProps(makeProps(20.0f, FontWeight::Black)));
}

TEST(RebaseTracked, SharesTheReplacementsPropertiesWhenExpectedIsActual)
{
    const TrackedRunProps replacement(makeProps(20.0f));
    TrackedRunProps merged(makeProps(30.0f));
    rebaseProperty(merged, replacement, TrackedRunProps(makeProps(1.0f)), TrackedRunProps(makeProps(1.0f)));
    EXPECT_EQ(replacement._value, merged._value);
}

TEST(RebaseTracked, LeavesTheReplacementsPropertiesAlone)
{
    const TrackedRunProps value(makeProps(30.0f));
    TrackedRunProps merged = value;
    rebaseProperty(merged, TrackedRunProps(makeProps(20.0f, FontWeight::Thin)), TrackedRunProps(makeProps(1.0f)),
                   TrackedRunProps(makeProps(2.0f)));
    EXPECT_TRUE(*merged._value == *makeProps(30.0f, FontWeight::Thin));
    EXPECT_TRUE(*value._value == *makeProps(30.0f));
}

TEST(RebaseTracked, MergesTheInfoAsOne)
{
    const auto makeTracked = [](const char* name)
    {
        TrackChangesInfo info;
        info._userInfo = UserInfo(name, "mail");
        return TrackedRunProps(nullptr, info);
    };
    TrackedRunProps merged = makeTracked("value");
    rebaseProperty(merged, makeTracked("replacement"), makeTracked("a"), makeTracked("b"));
    EXPECT_TRUE(merged == makeTracked("value"));
    rebaseProperty(merged, makeTracked("replacement"), makeTracked("a"), makeTracked("a"));
    EXPECT_TRUE(merged == makeTracked("replacement"));
}

TEST(RebaseAction, KeepsAnActionTogetherWithItsAuthor)
{
    const auto makeAction = [](TrackChangesType type, const char* name)
    {
        TrackChangesInfo info;
        info._userInfo = UserInfo(name, "mail");
        return std::make_shared<TrackedAction>(type, info);
    };
    auto merged = makeAction(TrackChangesType::Deletion, "value");
    rebaseProperty(merged, makeAction(TrackChangesType::Insertion, "replacement"),
                   makeAction(TrackChangesType::MoveFrom, "same"), makeAction(TrackChangesType::MoveTo, "same"));
    EXPECT_TRUE(*merged == *makeAction(TrackChangesType::Deletion, "value"));
}

} // namespace Zem::DOM::Tests
