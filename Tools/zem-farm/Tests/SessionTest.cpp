#include "Session.h"

#include "Spoiling.h"

#include <gtest/gtest.h>

namespace ZemFarm
{

namespace
{

using Zem::CollaborationSession::DocumentKind;
using Zem::CollaborationSession::Selection;

class ASession : public testing::Test
{
protected:
    ASession()
    {
        for (unsigned long client = 1; client <= 3; ++client)
        {
            _session.apply({StepKind::Join, client, "", 1});
        }
        _session.apply({StepKind::Do, 1, "type", 4711});
        _session.apply({StepKind::Select, 2, "", 5});
        _session.apply(Step());
    }

    const Participant& getParticipant(unsigned long client)
    {
        return *_session.getParticipants().at(client);
    }

    /// Expects that the next comparison fails.
    void expectFailure(const std::string& kind, const std::string& message)
    {
        try
        {
            _session.apply(Step());
            ADD_FAILURE() << "nothing was found";
        }
        catch (const Failure& failure)
        {
            EXPECT_EQ(kind, failure.getKind());
            EXPECT_EQ(message, std::string(failure.what()).substr(0, message.size()));
        }
    }

    Session _session{ZemFarm::Setup()};
};

TEST_F(ASession, AgreesAsLongAsNobodySpoilsIt)
{
    EXPECT_NO_THROW(_session.apply(Step()));
    EXPECT_EQ(2U, _session.getRoundsCount());
}

TEST_F(ASession, FindsTheClientWhoseDocumentDiffers)
{
    spoilDocument(getParticipant(2));
    expectFailure("documents differ", "client 2 differs from the server: JSON at byte ");
}

TEST_F(ASession, FindsTheDocumentOfTheLastClient)
{
    spoilDocument(getParticipant(3));
    expectFailure("documents differ", "client 3 differs from the server: JSON at byte ");
}

TEST_F(ASession, FindsAnOwnSelectionThatTheServerHasOtherwise)
{
    auto& selection = const_cast<Selection&>(*_session.getParticipants().at(2)->getClient().findOwnSelection());
    selection.setSelectionMode(Zem::DOMCollaboration::SelectionMode::Objects);
    expectFailure("own selections differ",
                  "client 2 differs from what the server has of it: the selection of the server's client 2 (");
}

TEST_F(ASession, FindsASelectionOfAnotherThatTheServerHasOtherwise)
{
    auto& selections = const_cast<Zem::CollaborationSession::Selections&>(
        _session.getParticipants().at(3)->getClient().getSelections());
    ASSERT_EQ(1U, selections.size());
    selections.clear();
    expectFailure("selections differ",
                  "client 3 differs from the server: the selection of the server's client 2 (none in place of ");
}

TEST_F(ASession, FindsAnUnsoundDocument)
{
    // Equal everywhere, and yet wrong.
    const auto breakIt = [](const Zem::DOM::Document& document)
    {
        auto& text = const_cast<Zem::DOM::TextWithTombstones&>(document.getTextWithTombstones());
        text.getTombstones() =
            Zem::CollaborationUtils::TombstonesStorage({{Zem::CollaborationUtils::IndexIncludingTombstones(5000),
                                                         Zem::CollaborationUtils::IndexIncludingTombstones(5001)}});
    };
    breakIt(_session.getDocument());
    expectFailure("unsound", "the document of the server is unsound: ");
}

TEST_F(ASession, FindsAnIndexThatCountsWrong)
{
    smuggleParagraph(_session.getDocument());
    for (unsigned long client = 1; client <= 3; ++client)
    {
        smuggleParagraph(getParticipant(client).getDocument());
    }
    try
    {
        _session.apply(Step());
        ADD_FAILURE() << "nothing was found";
    }
    catch (const Failure& failure)
    {
        EXPECT_EQ(0U, std::string(failure.what()).find("\"settle\" failed: ")) << failure.what();
    }
}

TEST_F(ASession, FindsALegalOperationThatWasRejected)
{
    addSmugglingGenerators();
    const Step sending{StepKind::Send, 1, "", 0};
    for (const Step& step : {Step{StepKind::Do, 1, "smuggle", 1}, sending, Step{StepKind::ToServer, 1, "", 1},
                             Step{StepKind::ToClient, 1, "", 1}, Step{StepKind::Do, 1, "drop", 1}})
    {
        _session.apply(step);
    }
    EXPECT_EQ(1U, getTotal(_session.getTally()._rejected));
    EXPECT_EQ(1U, getTotal(_session.getTally()._refused));
    expectFailure("refused: " + _session.getTally()._rejected.begin()->second._sentence,
                  "an action that was legal where it was made was refused: fits no document: ");
}

TEST_F(ASession, FindsALegalOperationThatItsClientRefused)
{
    addSmugglingGenerators();
    // What comes in is an edit of the text, for which what is pending there is taken back and executed again.
    for (const Step& step :
         {Step{StepKind::Do, 2, "type", 1}, Step{StepKind::Send, 2, "", 0}, Step{StepKind::ToServer, 2, "", 1},
          Step{StepKind::Do, 1, "smuggle", 1}, Step{StepKind::Do, 1, "drop", 1}, Step{StepKind::ToClient, 1, "", 1}})
    {
        _session.apply(step);
    }
    EXPECT_EQ(0U, getTotal(_session.getTally()._rejected));
    ASSERT_EQ(1U, getTotal(_session.getTally()._refused));
    expectFailure("refused: " + _session.getTally()._refused.begin()->second._sentence,
                  "an action that was legal where it was made was refused: fits no document: ");
}

TEST_F(ASession, FindsAnOperationThatWasRejectedAfterItsAuthorLeft)
{
    addSmugglingGenerators();
    for (const Step& step : {Step{StepKind::Do, 1, "smuggle", 1}, Step{StepKind::Send, 1, "", 0},
                             Step{StepKind::ToServer, 1, "", 1}, Step{StepKind::Leave, 1, "", 0}})
    {
        _session.apply(step);
    }
    EXPECT_EQ(0U, getTotal(_session.getTally()._refused));
    expectFailure("refused: " + _session.getTally()._rejected.begin()->second._sentence,
                  "an action that was legal where it was made was refused: fits no document: ");
}

TEST_F(ASession, FindsADocumentThatWasMadeAgainForNothing)
{
    addStumblingGenerator();
    _session.apply({StepKind::Bad, 0, "", 1});
    EXPECT_NO_THROW(_session.apply(Step()));
    _session.apply({StepKind::Do, 2, "stumble", 1});
    EXPECT_EQ(1U, _session.getTally()._remadeByClientsCount);
    expectFailure("made again", "documents were made again for nothing: ");
}

TEST_F(ASession, TellsWhichStepFailedInOneLine)
{
    addFailingGenerator();
    try
    {
        _session.apply({StepKind::Do, 3, "refuse", 7});
        ADD_FAILURE() << "the step didn't fail";
    }
    catch (const Failure& failure)
    {
        EXPECT_EQ("it fits\nno document", failure.getKind());
        EXPECT_STREQ("\"client 3 do refuse 7\" failed: it fits no document", failure.what());
    }
}

TEST_F(ASession, PassesOverWhatCantBeDone)
{
    const unsigned long operationsCount = _session.getOperationsCount();
    for (const Step& step :
         {Step{StepKind::Do, 9, "type", 1}, Step{StepKind::Select, 9, "", 1}, Step{StepKind::Leave, 9, "", 0},
          Step{StepKind::Join, 1, "", 1}, Step{StepKind::Reconnect, 1, "", 0}, Step{StepKind::ToClient, 1, "", 50}})
    {
        EXPECT_NO_THROW(_session.apply(step)) << print(step);
    }
    EXPECT_NO_THROW(_session.apply({StepKind::Disconnect, 1, "", 0}));
    EXPECT_NO_THROW(_session.apply({StepKind::Disconnect, 1, "", 0}));
    EXPECT_NO_THROW(_session.apply({StepKind::Send, 1, "", 0}));
    EXPECT_EQ(operationsCount, _session.getOperationsCount());
    EXPECT_EQ(3U, _session.getParticipants().size());
}

TEST_F(ASession, LosesWhatIsUnderWayWhenAConnectionBreaks)
{
    const unsigned long operationsCount = _session.getTally()._executedCount;
    _session.apply({StepKind::Do, 1, "script", 1});
    _session.apply({StepKind::Send, 1, "", 0});
    EXPECT_EQ(1U, getParticipant(1).getBatchesCount());
    _session.apply({StepKind::Disconnect, 1, "", 0});
    EXPECT_EQ(0U, getParticipant(1).getBatchesCount());
    EXPECT_FALSE(getParticipant(1).isConnected());
    _session.apply({StepKind::ToServer, 1, "", 5});
    EXPECT_EQ(0U, getParticipant(2).getMessagesCount());

    _session.apply(Step());
    EXPECT_TRUE(getParticipant(1).isConnected());
    EXPECT_EQ(1U, _session.getTally()._reconnectsCount);
    EXPECT_EQ(operationsCount + 2, _session.getTally()._executedCount);
}

TEST_F(ASession, LetsMessagesTravelLate)
{
    _session.apply({StepKind::Do, 1, "script", 1});
    _session.apply({StepKind::Send, 1, "", 0});
    EXPECT_EQ(0U, getParticipant(2).getMessagesCount());
    _session.apply({StepKind::ToServer, 1, "", 1});
    EXPECT_EQ(1U, getParticipant(2).getMessagesCount());
    EXPECT_EQ(1U, getParticipant(3).getMessagesCount());
    _session.apply({StepKind::ToClient, 2, "", 1});
    EXPECT_EQ(0U, getParticipant(2).getMessagesCount());
    EXPECT_EQ(1U, getParticipant(3).getMessagesCount());
}

TEST_F(ASession, CountsThoseThatJoinLateAndThoseThatLeave)
{
    EXPECT_EQ(3U, _session.getTally()._joinsCount);
    EXPECT_EQ(0U, _session.getTally()._lateJoinsCount);
    _session.apply({StepKind::Join, 4, "", 0});
    _session.apply({StepKind::Leave, 1, "", 0});
    _session.apply(Step());
    EXPECT_EQ(4U, _session.getTally()._joinsCount);
    EXPECT_EQ(1U, _session.getTally()._lateJoinsCount);
    EXPECT_EQ(1U, _session.getTally()._leavesCount);
    EXPECT_EQ(3U, _session.getParticipants().size());
}

TEST_F(ASession, HasEveryBadOperationRejected)
{
    for (unsigned long seed = 0; seed < 50; ++seed)
    {
        ASSERT_NO_THROW(_session.apply({StepKind::Bad, 0, "", seed})) << seed;
        _session.apply({StepKind::Do, 1 + seed % 3, "type", seed});
    }
    _session.apply(Step());
    EXPECT_EQ(50U, _session.getTally()._badCount);
    EXPECT_EQ(0U, getTotal(_session.getTally()._rejected));
}

} // namespace

} // namespace ZemFarm
