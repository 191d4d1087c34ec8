#include "CE_DataValue.h"

#include <gtest/gtest.h>

#include <string>

namespace Zem::CollaborationEngine::Testing
{

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
    EXPECT_EQ(reference.getValue(), "after");
}

} // namespace Zem::CollaborationEngine::Testing
