#include "Util_CallableRef.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

using namespace Zem;

namespace
{

int twice(int number)
{
    return 2 * number;
}

int callWithFive(CallableRef<int(int)> callable)
{
    return callable(5);
}

} // namespace

TEST(CallableRef, CallsWhatItRefersTo)
{
    int sum = 0;
    const auto add = [&](int number) { return sum += number; };
    EXPECT_EQ(5, callWithFive(add));
    EXPECT_EQ(10, callWithFive(add));
    EXPECT_EQ(10, sum);
}

TEST(CallableRef, RefersToTheCallableItselfNotToACopy)
{
    auto counter = [count = 0](int) mutable { return ++count; };
    EXPECT_EQ(1, callWithFive(counter));
    EXPECT_EQ(2, callWithFive(counter));
    EXPECT_EQ(3, counter(0));
}

TEST(CallableRef, TakesFunctionsAndPointersToThem)
{
    int (*const pointer)(int) = &twice;
    EXPECT_EQ(10, callWithFive(twice));
    EXPECT_EQ(10, callWithFive(pointer));
}

TEST(CallableRef, HandsOnReferencesAndWhatOnlyMoves)
{
    const auto take = [](int& target, std::unique_ptr<int> source) { target = *source; };
    const CallableRef<void(int&, std::unique_ptr<int>)> callable(take);
    int target = 0;
    callable(target, std::make_unique<int>(7));
    EXPECT_EQ(7, target);
}

TEST(CallableRef, ACopyRefersToTheSameCallable)
{
    int calls = 0;
    const auto count = [&] { ++calls; };
    const CallableRef<void()> original(count);
    const CallableRef<void()> copy = original;
    original();
    copy();
    EXPECT_EQ(2, calls);
}
