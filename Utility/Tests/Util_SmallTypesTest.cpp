/// The types that hold or refer to one value.

#include "Util_BoolOpt.h"
#include "Util_CheckedPtr.h"
#include "Util_Lazy.h"
#include "Util_ReadonlyVector.h"
#include "Util_SharedConstPtr.h"
#include "Util_UUIDable.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

using namespace Zem;

TEST(BoolOpt, HasNoValueAtFirst)
{
    const BoolOpt none;
    EXPECT_FALSE(static_cast<bool>(none));
    EXPECT_ASSERTION(static_cast<void>(*none), "_value != noValue");
    EXPECT_EQ(none, BoolOpt(boost::none));
}

TEST(BoolOpt, AsksForAValueNotForWhatItIs)
{
    const BoolOpt no = false;
    EXPECT_TRUE(static_cast<bool>(no));
    EXPECT_FALSE(*no);
    EXPECT_TRUE(*BoolOpt(true));
}

TEST(BoolOpt, IsAssignedABoolAndNone)
{
    BoolOpt value;
    value = true;
    EXPECT_EQ(BoolOpt(true), value);
    value = false;
    EXPECT_EQ(BoolOpt(false), value);
    EXPECT_NE(BoolOpt(), value);
    value = boost::none;
    EXPECT_EQ(BoolOpt(), value);
    EXPECT_EQ(1U, sizeof(BoolOpt));
}

TEST(BoolOpt, HashesApart)
{
    EXPECT_NE(hash_value(BoolOpt()), hash_value(BoolOpt(false)));
    EXPECT_NE(hash_value(BoolOpt(true)), hash_value(BoolOpt(false)));
}

TEST(CheckedPtr, AssertsOnNullOnly)
{
    std::pair<int, int> value{1, 2};
    const CheckedPtr<std::pair<int, int>> pointer = &value;
    EXPECT_TRUE(static_cast<bool>(pointer));
    EXPECT_EQ(2, pointer->second);
    EXPECT_EQ(&value, &*pointer);
    EXPECT_EQ(&value, pointer.get());

    const CheckedPtr<std::pair<int, int>> null;
    EXPECT_FALSE(static_cast<bool>(null));
    EXPECT_EQ(nullptr, null.get());
    EXPECT_ASSERTION(static_cast<void>(*null), "plainPtr");
    EXPECT_ASSERTION(static_cast<void>(null->first), "plainPtr");
    EXPECT_NE(pointer, null);
}

TEST(Lazy, WorksItsValueOutOnceAndOnlyWhenAsked)
{
    int calls = 0;
    Lazy<std::unique_ptr<int>> lazy(
        [&]
        {
            ++calls;
            return std::make_unique<int>(3);
        });
    EXPECT_EQ(0, calls);
    EXPECT_EQ(3, *lazy.get());
    *lazy.get() = 4;
    EXPECT_EQ(4, *lazy.get());
    EXPECT_EQ(1, calls);
}

TEST(ReadonlyVector, ShowsOwningPointersAsConstReferences)
{
    std::vector<std::unique_ptr<int>> pointers;
    pointers.push_back(std::make_unique<int>(1));
    pointers.push_back(std::make_unique<int>(2));
    const ReadonlyVector view(pointers);
    static_assert(std::is_same_v<const int&, decltype(view[0])>);
    EXPECT_EQ(2U, view.size());
    EXPECT_FALSE(view.empty());
    EXPECT_EQ(pointers[1].get(), &view[1]);

    std::vector<const int*> seen;
    for (const int& element : view)
    {
        seen.push_back(&element);
    }
    EXPECT_EQ((std::vector<const int*>{pointers[0].get(), pointers[1].get()}), seen);
    auto iterator = view.begin();
    EXPECT_EQ(1, *iterator++);
    EXPECT_EQ(2, *iterator);
}

TEST(ReadonlyVector, SeesLaterChangesOfTheVector)
{
    std::vector<std::unique_ptr<int>> pointers;
    const ReadonlyVector view(pointers);
    EXPECT_TRUE(view.empty());
    EXPECT_EQ(view.begin(), view.end());
    pointers.push_back(std::make_unique<int>(1));
    EXPECT_EQ(1U, view.size());
}

TEST(ReadonlyVector, AssertsOnNullElementsAndOnIndicesBehindTheEnd)
{
    const std::vector<std::unique_ptr<int>> pointers(1);
    const ReadonlyVector view(pointers);
    EXPECT_ASSERTION(view[0], "plainPtr");
    EXPECT_ASSERTION(*view.begin(), "plainPtr");
    EXPECT_ASSERTION(view[1], "index < size()");
}

TEST(SharedConstPtr, SharesAnObjectThatNobodyChanges)
{
    const SharedConstPtr<int> pointer = makeSharedConst<int>(5);
    const SharedConstPtr<int> copy = pointer;
    static_assert(std::is_same_v<const int&, decltype(*pointer)>);
    EXPECT_EQ(5, *pointer);
    EXPECT_EQ(pointer.get(), copy.get());
    EXPECT_EQ(2, copy.getShared().use_count());
    EXPECT_EQ(pointer, copy);
    EXPECT_NE(pointer, makeSharedConst<int>(5));
}

TEST(SharedConstPtr, TakesOtherPointersOver)
{
    struct Base
    {
        virtual ~Base() = default;
    };
    struct Derived : Base
    {
    };
    auto unique = std::make_unique<Derived>();
    Derived* const address = unique.get();
    const SharedConstPtr<Derived> derived = std::move(unique);
    const SharedConstPtr<Base> base = derived;
    EXPECT_EQ(address, base.get());
    EXPECT_EQ(address, SharedConstPtr<Base>(derived.getShared()).get());
    static_assert(!std::is_convertible_v<std::shared_ptr<Base>, SharedConstPtr<Derived>>);
}

TEST(SharedConstPtr, AssertsOnNullOnly)
{
    const SharedConstPtr<std::pair<int, int>> null = nullptr;
    EXPECT_FALSE(static_cast<bool>(null));
    EXPECT_EQ(nullptr, null.get());
    EXPECT_EQ(null, (SharedConstPtr<std::pair<int, int>>()));
    EXPECT_ASSERTION(static_cast<void>(*null), "plainPtr");
    EXPECT_ASSERTION(static_cast<void>(null->first), "plainPtr");
}

TEST(UUIDable, AFreshOneHasAnIdentityOfItsOwnAndACopyThatOfItsOriginal)
{
    const UUIDable original;
    const UUIDable copy = original;
    EXPECT_FALSE(original.getUUID().isNil());
    EXPECT_EQ(original.getUUID(), copy.getUUID());
    EXPECT_NE(original.getUUID(), UUIDable().getUUID());
    EXPECT_TRUE(UUIDable(UUID()).getUUID().isNil());
}
