#include "CE_DataValue.h"

#include <gtest/gtest.h>

#include <string>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

/// A null pointer to it stands for the only one.
struct WithNull
{
    static const WithNull& getObjectForNull()
    {
        static const WithNull object;
        return object;
    }

    friend bool operator==(const WithNull&, const WithNull&) = default;
};

} // namespace

TEST(DataValue, ReadingAnotherTypeFails)
{
    SimpleDataValue<int> value(1);
    const DataValue& constValue = value;
    DataValue& mutableValue = value;
    EXPECT_THROW(getSimpleDataValue<long>(constValue), std::bad_cast);
    EXPECT_THROW(getSimpleDataValue<std::string>(mutableValue), std::bad_cast);
    EXPECT_EQ(getSimpleDataValue<int>(constValue), 1);
}

TEST(DataValue, ValuesOfOtherTypesAreUnequal)
{
    const SimpleDataValue<int> number(1);
    const SimpleDataValue<long> longNumber(1);
    EXPECT_FALSE(number.isDeeplyEqual(longNumber));
    EXPECT_TRUE(number.isDeeplyEqual(SimpleDataValue<int>(1)));
}

TEST(DataValue, EqualityGoesThroughOwningPointers)
{
    const SimpleDataValue<std::unique_ptr<int>> one(std::make_unique<int>(1));
    EXPECT_TRUE(one.isDeeplyEqual(SimpleDataValue<std::unique_ptr<int>>(std::make_unique<int>(1))));
    EXPECT_FALSE(one.isDeeplyEqual(SimpleDataValue<std::unique_ptr<int>>(std::make_unique<int>(2))));
    EXPECT_FALSE(one.isDeeplyEqual(SimpleDataValue<std::unique_ptr<int>>()));
}

TEST(DataValue, CloneOfAReferenceHoldsACopy)
{
    std::string text = "before";
    const SimpleDataValue<std::reference_wrapper<const std::string>> reference{std::cref(text)};
    std::unique_ptr<DataValue> clone;
    reference.cloneTo(clone);
    text = "after";
    EXPECT_EQ(getSimpleDataValue<std::string>(*clone), "before");
    EXPECT_EQ(reference.getValue().get(), "after");
}

TEST(DataValue, SharedCloneOfAReferenceOutlivesWhatThatRefersTo)
{
    std::shared_ptr<DataValue> clone;
    {
        const std::string text = "gone";
        SimpleDataValue<std::reference_wrapper<const std::string>>{std::cref(text)}.cloneTo(clone);
    }
    EXPECT_EQ(getSimpleDataValue<std::string>(*clone), "gone");
}

TEST(DataValue, ReferenceIsReadAsTheReferenceThatItHolds)
{
    using Reference = std::reference_wrapper<const std::string>;
    const std::string text = "one";
    const std::string other = "other";
    SimpleDataValue<Reference> value{std::cref(text)};
    const DataValue& constValue = value;
    EXPECT_EQ(&getSimpleDataValue<Reference>(constValue).get(), &text);
    DataValue& mutableValue = value;
    getSimpleDataValue<Reference>(mutableValue) = std::cref(other);
    EXPECT_EQ(&getSimpleDataValue<Reference>(constValue).get(), &other);
    EXPECT_THROW(getSimpleDataValue<std::string>(constValue), std::bad_cast);
}

TEST(DataValue, ExactlyOneNullIsUnequalEvenWhereNullStandsForAnObject)
{
    using Pointer = std::shared_ptr<const WithNull>;
    const SimpleDataValue<Pointer> null;
    const SimpleDataValue<Pointer> likeNull(std::make_shared<const WithNull>());
    EXPECT_FALSE(null.isDeeplyEqual(likeNull));
    EXPECT_FALSE(likeNull.isDeeplyEqual(null));
    EXPECT_TRUE(null.isDeeplyEqual(SimpleDataValue<Pointer>()));
    EXPECT_TRUE(likeNull.isDeeplyEqual(SimpleDataValue<Pointer>(std::make_shared<const WithNull>())));
}

} // namespace Zem::CollaborationEngine::Testing
