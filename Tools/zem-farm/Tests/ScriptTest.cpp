#include "Script.h"

#include <gtest/gtest.h>

namespace ZemFarm
{

namespace
{

using Zem::CollaborationSession::DocumentKind;

/// Every kind of step, with numbers where it has some.
Script makeWholeScript()
{
    Script script;
    script._setup._kind = DocumentKind::Presentation;
    script._setup._documentSeed = 4711;
    script._setup._documentSize = 3;
    script._setup._checkpointInterval = 64;
    script._steps = {{StepKind::Join, 1, "", 1},      {StepKind::Join, 2, "", 0},       {StepKind::Do, 1, "type", 815},
                     {StepKind::Select, 2, "", 4},    {StepKind::Send, 1, "", 0},       {StepKind::ToServer, 1, "", 1},
                     {StepKind::ToClient, 2, "", 20}, {StepKind::Disconnect, 1, "", 0}, {StepKind::Reconnect, 1, "", 0},
                     {StepKind::Leave, 2, "", 0},     {StepKind::Bad, 0, "", 5},        {StepKind::Settle, 0, "", 0}};
    return script;
}

constexpr const char* wholeText = R"(kind presentation
document 4711 3
checkpoint 64
client 1 join 1
client 2 join 0
client 1 do type 815
client 2 select 4
client 1 send
client 1 to-server 1
client 2 to-client 20
client 1 disconnect
client 1 reconnect
client 2 leave
bad 5
settle
)";

void expectBad(const std::string& text, const std::string& message)
{
    try
    {
        parseScript(text);
        ADD_FAILURE() << "no script: " << text;
    }
    catch (const BadScript& error)
    {
        EXPECT_EQ(message, error.what());
    }
}

TEST(Script, IsPrintedAStepALine)
{
    EXPECT_EQ(wholeText, print(makeWholeScript()));
}

TEST(Script, IsReadAsItWasPrinted)
{
    EXPECT_EQ(makeWholeScript(), parseScript(print(makeWholeScript())));
    for (const DocumentKind kind : {DocumentKind::Text, DocumentKind::Workbook, DocumentKind::Presentation})
    {
        Script script;
        script._setup._kind = kind;
        EXPECT_EQ(script, parseScript(print(script)));
    }
}

TEST(Script, MayHaveCommentsBlankLinesAndOtherLineEnds)
{
    Script script;
    script._setup._kind = DocumentKind::Workbook;
    script._steps = {{StepKind::Send, 7, "", 0}, Step()};
    EXPECT_EQ(script, parseScript("# a session\r\n\r\nkind workbook # of cells\r\n  client  7\tsend\r\n\n#\nsettle#"));
}

TEST(Script, MayHaveTheKindAloneInFrontOfTheSteps)
{
    EXPECT_EQ(Script(), parseScript("kind text"));
}

TEST(Script, NamesTheLineThatItDoesntUnderstand)
{
    expectBad("kind text\n\nclient 1 jump", "line 3: there is no step \"jump\"");
    expectBad("kind text\njoin 1", "line 2: there is no step \"join\"");
    expectBad("kind text\nclient 1 settle", "line 2: there is no step \"settle\"");
    expectBad("kind text\nclient 1", "line 2: there is no step \"\"");
    expectBad("kind book", "line 1: there is no kind of document \"book\"");
    expectBad("kind text\nclient 1 do sing 5", "line 2: nothing makes operations by the name \"sing\"");
    expectBad("kind text\nclient one send", "line 2: a number was expected, not \"one\"");
    expectBad("kind text\nclient -1 send", "line 2: a number was expected, not \"-1\"");
    expectBad("kind text\nclient 1 select", "line 2: a number was expected, not \"\"");
    expectBad("document 12345678901234567890 1", "line 1: a number was expected, not \"12345678901234567890\"");
    expectBad("document 1", "line 1: a number was expected, not \"\"");
    expectBad("kind text\nbad 5 6", "line 2: nothing was expected behind the step, not \"6\"");
    expectBad("kind text text", "line 1: nothing was expected behind the step, not \"text\"");
}

TEST(Script, RefusesWhatNoSessionHas)
{
    expectBad("kind text\nclient 0 send", "line 2: clients are counted from 1 on");
    expectBad("kind text\ndocument 1 1001", "line 2: a document begins with 1000 blocks at most");
    EXPECT_EQ(1000U, parseScript("kind text\ndocument 1 1000")._setup._documentSize);
}

TEST(Script, HasItsSetupInFrontOfItsSteps)
{
    expectBad("kind text\nsettle\ncheckpoints 1", "line 3: there is no step \"checkpoints\"");
    expectBad("kind text\nsettle\ncheckpoint 1", "line 3: \"checkpoint\" must stand in front of all steps");
    expectBad("settle\nkind text", "line 2: \"kind\" must stand in front of all steps");
}

TEST(Script, TellsTheKindOfDocument)
{
    expectBad("", "no line tells the kind of document");
    expectBad("document 1 2\nsettle", "no line tells the kind of document");
}

} // namespace

} // namespace ZemFarm
