#include "Farm.h"

#include "Program.h"
#include "Spoiling.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace ZemFarm
{

namespace
{

using Zem::CollaborationSession::DocumentKind;

Options makeOptions(unsigned long clientsCount, unsigned long operationsCount, unsigned long seed)
{
    Options options;
    options._clientsCount = clientsCount;
    options._operationsCount = operationsCount;
    options._seed = seed;
    return options;
}

Options readWords(const std::string& line)
{
    std::istringstream stream("zem-farm " + line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
    {
        words.push_back(word);
    }
    std::vector<const char*> arguments;
    for (const std::string& word : words)
    {
        arguments.push_back(word.c_str());
    }
    return readOptions(static_cast<int>(arguments.size()), arguments.data());
}

void expectEqual(const Plan& first, const Plan& second)
{
    EXPECT_EQ(first._kind, second._kind);
    EXPECT_EQ(first._clientsCount, second._clientsCount);
    EXPECT_EQ(first._operationsCount, second._operationsCount);
    EXPECT_EQ(first._seed, second._seed);
}

TEST(Plans, AreAsTheOptionsSayInTheFirstSession)
{
    const Plan plan = makePlan(makeOptions(32, 60000, 7), 0, 60000);
    expectEqual({DocumentKind::Text, 32, 500, 7}, plan);
    Options options = makeOptions(3, 20, 8);
    options._kind = DocumentKind::Workbook;
    expectEqual({DocumentKind::Workbook, 3, 20, 8}, makePlan(options, 0, 20));
}

TEST(Plans, TakeAllKindsInTurnUpToTheGreatestNumberOfClients)
{
    const Options options = makeOptions(32, 1000000, 7);
    unsigned long greatest = 0;
    unsigned long smallest = ~0UL;
    for (unsigned long number = 0; number < 3000; ++number)
    {
        const Plan plan = makePlan(options, number, 1000000);
        EXPECT_EQ(static_cast<DocumentKind>(number % 3), plan._kind);
        EXPECT_GE(plan._operationsCount, 200U);
        EXPECT_LE(plan._operationsCount, 500U);
        greatest = std::max(greatest, plan._clientsCount);
        smallest = std::min(smallest, plan._clientsCount);
    }
    EXPECT_EQ(32U, greatest);
    EXPECT_EQ(2U, smallest);
}

TEST(Plans, DoNoMoreThanIsLeft)
{
    EXPECT_EQ(3U, makePlan(makeOptions(8, 1000, 1), 5, 3)._operationsCount);
}

TEST(Plans, AreDoneAgainByTheOptionsThatAreTold)
{
    for (unsigned long number = 0; number < 100; ++number)
    {
        const Plan plan = makePlan(makeOptions(32, 60000, 7), number, 60000 - number);
        const Options again = readWords(printCommand(plan));
        expectEqual(plan, makePlan(again, 0, again._operationsCount));
    }
}

/// A session of each kind: what it came to, and the script that does it again.
TEST(Drivers, DoTheSameForTheSameSeed)
{
    for (const DocumentKind kind : {DocumentKind::Text, DocumentKind::Workbook, DocumentKind::Presentation})
    {
        SCOPED_TRACE(getName(kind));
        const Plan plan{kind, 5, 150, 4};
        Driver first(plan);
        first.run();
        Driver second(plan);
        second.run();
        EXPECT_EQ(print(first.getScript()), print(second.getScript()));
        EXPECT_EQ(format(first.getTally(), 0), format(second.getTally(), 0));

        Driver other({kind, 5, 150, 5});
        other.run();
        EXPECT_NE(print(first.getScript()), print(other.getScript()));
    }
}

TEST(Drivers, WriteDownWhatPlaysTheSessionAgain)
{
    Driver driver({DocumentKind::Presentation, 4, 200, 2});
    driver.run();
    const Script script = parseScript(print(driver.getScript()));
    Session session(script._setup);
    for (const Step& step : script._steps)
    {
        session.apply(step);
    }
    EXPECT_EQ(format(driver.getTally(), 0), format(session.getTally(), 0));
}

/// How many clients came when something had been done, and did something themselves later.
unsigned long countActiveLateJoiners(const Script& script)
{
    unsigned long count = 0;
    bool hasBegun = false;
    for (auto step = script._steps.begin(); step != script._steps.end(); ++step)
    {
        const auto isByJoiner = [&](const Step& other)
        { return other._kind == StepKind::Do && other._client == step->_client; };
        hasBegun = hasBegun || step->_kind == StepKind::Do;
        const bool isLateJoin = hasBegun && step->_kind == StepKind::Join;
        count += isLateJoin && std::any_of(step, script._steps.end(), isByJoiner) ? 1 : 0;
    }
    return count;
}

TEST(Drivers, LetClientsComeLateGoAndReconnect)
{
    Tally tally;
    unsigned long activeLateJoinersCount = 0;
    for (unsigned long seed = 0; seed < 3; ++seed)
    {
        Driver driver({DocumentKind::Text, 10, 300, seed});
        driver.run();
        tally.add(driver.getTally());
        activeLateJoinersCount += countActiveLateJoiners(driver.getScript());
    }
    EXPECT_GT(activeLateJoinersCount, 0U);
    EXPECT_EQ(3U, tally._sessionsCount);
    EXPECT_EQ(30U, tally._joinsCount);
    EXPECT_GE(tally._operationsCount, 900U);
    for (const unsigned long count :
         {tally._lateJoinsCount, tally._leavesCount, tally._reconnectsCount, tally._selectionsCount,
          tally._transformedCount, tally._badCount, tally._rebasedCount, tally._shadowedCount})
    {
        EXPECT_GT(count, 0U) << format(tally, 1);
    }
    EXPECT_GT(tally._roundsCount, 3 * 4U);
}

TEST(ATable, NamesEveryCount)
{
    Tally tally;
    tally._operationsCount = 4000;
    tally._operationsByGenerator["type"] = 3990;
    tally._transformedCount = 31;
    tally._changedCount = 32;
    tally._shadowedCount = 33;
    tally._badCount = 34;
    tally._rejected = {{RefusalReason::NotTaken, {1, "a"}}, {RefusalReason::TargetRemoved, {2, "b"}}};
    tally._refused = {{RefusalReason::NotTaken, {5, "a"}}};
    tally._remadeAtServerCount = 37;
    tally._remadeByClientsCount = 38;
    tally._replayedCount = 39;
    tally._lateJoinsCount = 35;
    tally._reconnectsCount = 36;
    std::istringstream lines(format(tally, 2));
    std::map<std::string, std::string> table;
    std::size_t width = 0;
    for (std::string line; std::getline(lines, line);)
    {
        width = width == 0 ? line.size() : width;
        EXPECT_EQ(width, line.size()) << line;
        const std::size_t count = line.find_last_of(' ') + 1;
        const std::size_t end = line.find_last_not_of(' ', count - 1) + 1;
        table[line.substr(0, end)] = line.substr(count);
    }
    EXPECT_EQ("4000", table["operations"]);
    EXPECT_EQ("3990", table["  type"]);
    EXPECT_EQ("0", table["  undo-any"]);
    EXPECT_EQ("31", table["transformed at the server"]);
    EXPECT_EQ("32", table["changed at the server"]);
    EXPECT_EQ("33", table["shadowed at the server"]);
    EXPECT_EQ("34", table["bad on purpose, and rejected"]);
    EXPECT_EQ("3", table["refused at the server"]);
    EXPECT_EQ("2", table["  target removed"]);
    EXPECT_EQ("5", table["refused, as authors learnt"]);
    EXPECT_EQ("35", table["  joined late"]);
    EXPECT_EQ("36", table["reconnects"]);
    EXPECT_EQ("37", table["made again at the server"]);
    EXPECT_EQ("38", table["made again by clients"]);
    EXPECT_EQ("39", table["replayed to make documents again"]);
    EXPECT_EQ("2000", table["operations per second"]);
}

TEST(ATable, LooksTheSameHoweverLongItTook)
{
    Tally tally;
    tally._operationsCount = 123456;
    const auto dropSpeed = [](const std::string& table)
    { return table.substr(0, table.find("operations per second")); };
    EXPECT_EQ(dropSpeed(format(tally, 100000)), dropSpeed(format(tally, 0.001)));
}

TEST(ATally, AddsUp)
{
    Tally tally;
    unsigned long last = 0;
    for (unsigned long* count : {&tally._sessionsCount,
                                 &tally._joinsCount,
                                 &tally._lateJoinsCount,
                                 &tally._leavesCount,
                                 &tally._reconnectsCount,
                                 &tally._roundsCount,
                                 &tally._selectionsCount,
                                 &tally._operationsCount,
                                 &tally._declinedCount,
                                 &tally._transformedCount,
                                 &tally._changedCount,
                                 &tally._shadowedCount,
                                 &tally._badCount,
                                 &tally._remadeAtServerCount,
                                 &tally._remadeByClientsCount,
                                 &tally._replayedCount,
                                 &tally._rebasedCount,
                                 &tally._executedCount,
                                 &tally._besidePendingCount,
                                 &tally._operationsByGenerator["type"],
                                 &tally._rejected[RefusalReason::NotTaken]._count,
                                 &tally._refused[RefusalReason::NotTaken]._count,
                                 &tally._refused[RefusalReason::TargetRemoved]._count})
    {
        *count = ++last;
    }
    Tally twice = tally;
    twice.add(tally);
    std::istringstream lines(format(tally, 0));
    std::istringstream doubledLines(format(twice, 0));
    unsigned long sum = 0;
    for (std::string line, doubled; std::getline(lines, line) && std::getline(doubledLines, doubled);)
    {
        const auto readCount = [](const std::string& row) { return std::stoul(row.substr(row.find_last_of(' '))); };
        EXPECT_EQ(2 * readCount(line), readCount(doubled)) << doubled;
        sum += readCount(line);
    }
    // Each count stands in the table once, and of the refused ones the sum as well.
    EXPECT_EQ(last * (last + 1) / 2 + (last - 2) + (last - 1) + last, sum);
}

/// Scripts with a generator that spoils documents.
class AFailingRun : public testing::Test
{
protected:
    AFailingRun()
    {
        addSpoilingGenerator();
    }

    static Script makeScript()
    {
        return parseScript(R"(kind text
document 4711 3
client 1 join 1
client 2 join 1
client 1 do type 4
settle
client 2 do erase 5
client 1 send
client 1 do spoil 1
client 2 do paste 9
settle
)");
    }

    static constexpr const char* shrunkScript = R"(kind text
document 4711 0
checkpoint 16
client 1 join 1
client 1 do spoil 1
settle
)";
};

TEST_F(AFailingRun, TellsWhatFailedInOneLine)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(runScript(makeScript(), false));
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_EQ(0U, errors.find("zem-farm: client 1 differs from the server: JSON at byte ")) << errors;
    EXPECT_EQ(errors.size() - 1, errors.find('\n')) << errors;
    EXPECT_EQ("", testing::internal::GetCapturedStdout());
}

TEST_F(AFailingRun, PrintsTheShortestScriptIfItIsAsked)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(runScript(makeScript(), true));
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_EQ(errors.size() - 1, errors.find('\n')) << errors;
    const std::string printed = testing::internal::GetCapturedStdout();
    EXPECT_EQ(std::string(shrunkScript), printed.substr(0, printed.find('#'))) << printed;
    EXPECT_NE(std::string::npos, printed.find("\n# client 1 differs from the server: ")) << printed;
}

TEST_F(AFailingRun, ShrinksToTheSameFailureWithTheSmallestDocument)
{
    const Script shrunk = shrink(makeScript());
    const Script expected = parseScript(shrunkScript);
    EXPECT_EQ(expected._setup, shrunk._setup);
    // The last step stands for itself.
    EXPECT_EQ(print(Script{expected._setup, {expected._steps[0], expected._steps[1]}}), print(shrunk));
}

TEST_F(AFailingRun, ExitsWith1)
{
    const std::string fileName =
        (std::filesystem::temp_directory_path() / ("zem-farm-failing-" + std::to_string(getpid()))).string();
    std::ofstream(fileName) << print(makeScript());
    const std::array<const char*, 3> arguments = {"zem-farm", "--script", fileName.c_str()};
    testing::internal::CaptureStderr();
    EXPECT_EQ(1, runProgram(static_cast<int>(arguments.size()), arguments.data()));
    EXPECT_NE("", testing::internal::GetCapturedStderr());
    std::filesystem::remove(fileName);
}

TEST_F(AFailingRun, IsNotShrunkWhereNothingFails)
{
    EXPECT_THROW(shrink(parseScript("kind text\nsettle")), std::runtime_error);
}

} // namespace

} // namespace ZemFarm
