#include "CasesCount.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

constexpr unsigned long fewestCases = 1000000;

unsigned long casesCount = 0;

bool isRunOfAllTests()
{
    const std::string filter = testing::GTEST_FLAG(filter);
    return filter == "*" || filter.front() == '-';
}

class CasesEnvironment final : public testing::Environment
{
public:
    void TearDown() override
    {
        std::cout << "  " << casesCount << " cases in all\n";
        if (isRunOfAllTests())
        {
            EXPECT_GE(casesCount, fewestCases);
        }
    }
};

const testing::Environment* const casesEnvironment = testing::AddGlobalTestEnvironment(new CasesEnvironment);

} // namespace

void countCases(unsigned long count)
{
    casesCount += count;
}

} // namespace Zem::CollaborationEngine::Testing
