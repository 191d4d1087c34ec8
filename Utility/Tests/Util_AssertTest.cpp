#include "Util_Assert.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <string>
#include <type_traits>

using namespace Zem;

namespace
{

void failWithoutHandler()
{
    setAssertionHandler(nullptr);
    setAssertionPrinting(true);
    const int answer = 41;
    ZEM_ASSERT(answer == 42);
}

void failWithHandlerThatReturns()
{
    setAssertionHandler([](const char*, int, const char*) {});
    ZEM_FAIL("This can't be");
}

void failSilently()
{
    setAssertionHandler(nullptr);
    setAssertionPrinting(false);
    ZEM_FAIL("This can't be");
}

/// Puts the handler back that the tests run with.
class HandlerGuard
{
public:
    explicit HandlerGuard(AssertionHandler handler)
        : _previous(setAssertionHandler(handler))
    {
    }

    ~HandlerGuard()
    {
        setAssertionHandler(_previous);
    }

    AssertionHandler getPrevious() const
    {
        return _previous;
    }

private:
    AssertionHandler _previous;
};

} // namespace

TEST(Assert, HoldsItsPeaceWhenTheConditionHolds)
{
    EXPECT_NO_THROW(ZEM_ASSERT(true));
    EXPECT_NO_THROW(ZEM_ASSERT_MESSAGE(true, "not said"));
}

TEST(Assert, TheTextOfTheConditionIsTheMessage)
{
    const int count = 0;
    EXPECT_ASSERTION(ZEM_ASSERT(count > 0), "count > 0");
    EXPECT_ASSERTION(ZEM_ASSERT(std::is_same<int, long>::value), "std::is_same<int, long>::value");
    EXPECT_ASSERTION(ZEM_ASSERT(count > 0 && //
                                count < 9),
                     "count > 0 && count < 9");
}

TEST(Assert, AMessageOfItsOwnStandsInPlaceOfTheCondition)
{
    EXPECT_ASSERTION(ZEM_ASSERT_MESSAGE(1 > 2, "One is too small"), "One is too small");
    EXPECT_ASSERTION(ZEM_FAIL("Unreachable"), "Unreachable");
    EXPECT_ASSERTION(doFailAssert("file.cpp", 7, "condition"), "condition");
    EXPECT_ASSERTION(doFailAssert("file.cpp", 7, "condition", "message"), "message");
}

TEST(Assert, AConditionIsEvaluatedOnce)
{
    int evaluations = 0;
    ZEM_ASSERT(++evaluations > 0);
    ZEM_ASSERT_MESSAGE(++evaluations > 0, "message");
    EXPECT_EQ(2, evaluations);
}

TEST(Assert, AFailureTellsItsPlace)
{
    const int line = __LINE__ + 3;
    try
    {
        ZEM_ASSERT(false);
        FAIL();
    }
    catch (const AssertionFailure& failure)
    {
        EXPECT_NE(std::string::npos, failure.getFile().find("Util_AssertTest.cpp"));
        EXPECT_EQ(line, failure.getLine());
    }
}

TEST(Assert, AHandlerIsGivenPlaceAndMessage)
{
    static std::string told;
    const HandlerGuard guard(
        [](const char* file, int line, const char* message)
        {
            told = std::string(file) + ':' + std::to_string(line) + ' ' + message;
            throwAssertionFailure(file, line, message);
        });
    EXPECT_EQ(&throwAssertionFailure, guard.getPrevious());
    EXPECT_THROW(doFailAssert("here.cpp", 12, "condition"), AssertionFailure);
    EXPECT_EQ("here.cpp:12 condition", told);
}

TEST(AssertDeathTest, AbortsWithoutAHandler)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(failWithoutHandler(), testing::KilledBySignal(SIGABRT),
                "Util_AssertTest\\.cpp:[0-9]+: assertion failed: answer == 42");
}

TEST(AssertDeathTest, AbortsWhenTheHandlerReturns)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(failWithHandlerThatReturns(), testing::KilledBySignal(SIGABRT), "");
}

TEST(AssertDeathTest, PrintsNothingWhenPrintingIsOff)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(failSilently(), testing::KilledBySignal(SIGABRT), "^$");
}

TEST(Assert, TellsWhetherPrintingWasOn)
{
    EXPECT_FALSE(setAssertionPrinting(false));
    EXPECT_FALSE(setAssertionPrinting(true));
    EXPECT_TRUE(setAssertionPrinting(false));
}

TEST(Assert, DerefPtrAsksForAPointerThatIsNotNull)
{
    int value = 5;
    int* const null = nullptr;
    EXPECT_EQ(&value, &derefPtr(&value));
    EXPECT_EQ(7, derefPtr(std::make_unique<int>(7)));
    EXPECT_ASSERTION(derefPtr(null), "plainPtr");
    EXPECT_ASSERTION(derefPtr(std::shared_ptr<int>()), "plainPtr");
}

TEST(Assert, DerefPtrTellsThePlaceOfItsCaller)
{
    const std::unique_ptr<int> null;
    const int line = __LINE__ + 3;
    try
    {
        derefPtr(null);
        FAIL();
    }
    catch (const AssertionFailure& failure)
    {
        EXPECT_EQ(line, failure.getLine());
    }
}
