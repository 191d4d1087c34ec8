#include "TS_Assertions.h"
#include "TS_TextCase.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

namespace Zem::TestSupport
{

using CollaborationUtils::IndexIncludingTombstones;

TEST(TextInsertion, BytesInARunChangeTheStringAlone)
{
    TextCase("{|abcd}").after(insert(4, "xy")).is("{|abxycd}").isUnchanged();
}

TEST(TextInsertion, BytesBehindTheLastByteOrTheTagGoIntoTheRun)
{
    TextCase("{|ab}").after(insert(4, "x")).is("{|abx}").isUnchanged();
    TextCase("{|ab}").after(insert(2, "x")).is("{|xab}").isUnchanged();
}

TEST(TextInsertion, BytesWithATombstoneInFrontLandOnTheLiveIndexOfTheirNeighbour)
{
    TextCase("{|a[b]c}").after(insert(3, "x")).is("{|ax[b]c}").isUnchanged();
    TextCase("{|a[b]c}").after(insert(4, "x")).is("{|a[b]xc}").isUnchanged();
}

TEST(TextInsertion, TheSlotInsideAStretchOfTombstonesBecomesLive)
{
    TextCase textCase("{|a[bc]d}");
    textCase.after(insert(4, "x")).is("{|a[b]x[c]d}").isUnchanged();
    EXPECT_TRUE(textCase.getText().getTombstones().convertIndex(IndexIncludingTombstones(4)));
}

TEST(TextInsertion, NestedInsertionsWithOnlyTombstonesBetweenThemKeepTheirOwnSlots)
{
    TextCase("{|a[bc]d}").after(insert({{5, "y"}, {3, "x"}})).is("{|ax[bc]yd}").isUnchanged();
    TextCase("{|a[bc]d}").after(insert({{5, "pq"}, {4, "n"}, {3, "xyz"}})).is("{|axyz[b]n[c]pqd}").isUnchanged();
}

TEST(TextInsertion, TwoPlacesOfOneRunTakeTheirPiecesTogether)
{
    TextCase("{|abcd}").after(insert({{5, "y"}, {3, "x"}})).is("{|axbcyd}").isUnchanged();
}

TEST(TextInsertion, ARunInsideARunTakesTheTailOfThatRun)
{
    TextCase("{|abcd}").after(insert(4, "|xy")).is("{|ab|xycd}").isUnchanged();
}

TEST(TextInsertion, BytesAndARunInsideARunLeaveTheBytesInFront)
{
    TextCase("{|abcd}").after(insert(4, "x|y")).is("{|abx|ycd}").isUnchanged();
    TextCase("{|abcd}").after(insert(2, "x|y")).is("{|x|yabcd}").isUnchanged();
}

TEST(TextInsertion, AMarkAndAParagraphInsideARunSplitTheParagraph)
{
    TextCase("{|abcd|ef}").after(insert(4, "}{|x")).is("{|ab}{|xcd|ef}").isUnchanged();
}

TEST(TextInsertion, BytesAndASplitBetweenTheTagOfARunAndItsFirstByteLeaveTheBytesInTheRun)
{
    TextCase("{|abcd~}").after(insert(2, "x}{|y")).is("{|x}{|yabcd~}").isUnchanged();
}

TEST(TextInsertion, ASplitBetweenRunsMovesTheRunsBehindItWhole)
{
    TextCase("{|ab|cd~}").after(insert(4, "}{")).is("{|ab}{|cd~}").isUnchanged();
    TextCase("{|ab~|cd}").after(insert(4, "}{")).is("{|ab}{~|cd}").isUnchanged();
}

TEST(TextInsertion, ASplitAtTheEndOfAParagraphAddsAnEmptyOne)
{
    TextCase("{|ab}").after(insert(4, "}{")).is("{|ab}{}").isUnchanged();
}

TEST(TextInsertion, AParagraphAndAMarkAtATagAddAnEmptyParagraphInFront)
{
    TextCase("{|ab}").after(insert(0, "{}")).is("{}{|ab}").isUnchanged();
    TextCase("{}{|ab}").after(insert(2, "{}")).is("{}{}{|ab}").isUnchanged();
}

TEST(TextInsertion, SeveralParagraphsAndBlocksComeAtOnce)
{
    TextCase("{|abcd}").after(insert(4, "|x}#${|yz}{|w")).is("{|ab|x}#${|yz}{|wcd}").isUnchanged();
}

TEST(TextInsertion, AtomicRunsComeBetweenAndInsideRuns)
{
    TextCase("{|ab}").after(insert(4, "~")).is("{|ab~}").isUnchanged();
    TextCase("{|ab}").after(insert(1, "~")).is("{~|ab}").isUnchanged();
    TextCase("{|ab}").after(insert(3, "~|")).is("{|a~|b}").isUnchanged();
}

TEST(TextInsertion, AByteIntoAnEmptyTextBecomesAParagraph)
{
    TextCase("").after(insert(0, "x")).is("{|x}").isChangedTo("insert 0:{|x}");
}

TEST(TextInsertion, AByteBetweenParagraphsBecomesAParagraph)
{
    TextCase("{|a}{|b}").after(insert(4, "x")).is("{|a}{|x}{|b}").isChangedTo("insert 4:{|x}");
}

TEST(TextInsertion, AMarkAloneInsideARunSplitsTheParagraph)
{
    TextCase("{|ab}").after(insert(3, "}")).is("{|a}{|b}").isChangedTo("insert 3:}{|");
}

TEST(TextInsertion, ARunAloneInFrontOfAMarkIsDropped)
{
    TextCase("{|a}").after(insert(3, "|")).is("{|a}").isRefused();
}

TEST(TextInsertion, ABlockBehindTheTagOfARunMovesInFrontOfIt)
{
    TextCase("{|ab}").after(insert(2, "#")).is("{}#{|ab}").isChangedTo("insert 1:}#{");
    TextCase("{|ab|cd}").after(insert(5, "#")).is("{|ab}#{|cd}").isChangedTo("insert 4:}#{");
}

TEST(TextInsertion, ADroppedPieceIsLeftOutOfTheChangedOperation)
{
    TextCase("{|a}{|b}").after(insert({{7, "|"}, {3, "x"}})).is("{|ax}{|b}").isChangedTo("insert 3:x");
}

TEST(TextInsertion, ARepairedPieceCarriesTheOthersAlong)
{
    TextCase("{|a}{|b}").after(insert({{4, "x"}, {3, "y"}})).is("{|ay}{|x}{|b}").isChangedTo("insert 4:{|x} 3:y");
}

TEST(TextInsertion, ARepairedPieceStandsBehindTheTombstonesInFrontOfIt)
{
    TextCase("{|a}[..]{|b}").after(insert(5, "x")).is("{|a}[..]{|x}{|b}").isChangedTo("insert 6:{|x}");
}

/// An atomic block behind an atomic run leaves the paragraph open in the operation; the tree closes it all the same, so
/// that the text has one element more than slots were made, and the insertion can't be taken back. The laws of a case
/// don't hold for it.
TEST(TextInsertion, ABlockBehindAnAtomicRunDoesNotCloseTheParagraph)
{
    TextCase textCase("{|a~}");
    CollaborationEngine::OperationUPtr changedOp;
    EXPECT_TRUE(textCase.getExecutor().executeAndChangeIfNeeded(*insert(4, "#"), changedOp));
    EXPECT_EQ("insert 4:#{", print(*changedOp));
    EXPECT_EQ("{|a~}#{}", print(textCase.getText()));
}

TEST(TextInsertion, AnElementThatIsNoByteIsNotWritten)
{
    TextCase textCase("{|ab}");
    auto operation = insert(3, "x");
    auto& insertion = dynamic_cast<CollaborationEngine::ListMultirangeOperationImpl<
        CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>>&>(*operation);
    insertion.getNestedOperations().front().setData(makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(
        DOMCollaboration::TextWithTombstonesElementVector{static_cast<short>(200)}));
    CollaborationEngine::OperationUPtr changedOp;
    EXPECT_THROW(textCase.getExecutor().executeAndChangeIfNeeded(*operation, changedOp), BadNumCastError);
    textCase.is("{|ab}");
}

TEST(TextInsertion, TheByteFFTravelsAsMinusOneAndComesBack)
{
    const char byte[] = {'\xFF', '\0'};
    EXPECT_EQ(-1, boost::get<short>(makeElements(byte).front()));
    TextCase("{|ab}").after(insert(3, byte)).is(std::string("{|a") + byte + "b}").isUnchanged();
}

TEST(TextInsertion, ATwoByteCharacterIsTwoElementsAndLosesOneOfThemAlone)
{
    TextCase("{|a}").after(insert(3, "\xC3\xA4")).is("{|a\xC3\xA4}").after(mark(4, 5)).is("{|a\xC3[.]}");
}

class MalformedInsertion : public testing::Test
{
protected:
    void expectFailure(CollaborationEngine::OperationUPtr operation, const char* message)
    {
        CollaborationEngine::OperationUPtr changedOp;
        EXPECT_ASSERTION(_textCase.getExecutor().executeAndChangeIfNeeded(*operation, changedOp), message);
        _textCase.is("{|ab}").after(insert(3, "x")).is("{|axb}");
    }

    TextCase _textCase{"{|ab}"};
};

TEST_F(MalformedInsertion, BeyondTheEndOfTheTextChangesNothing)
{
    expectFailure(insert(7, "x"), "Unexpected type in the source variant");
}

TEST_F(MalformedInsertion, WithoutDataChangesNothing)
{
    auto operation = insert(3, "x");
    dynamic_cast<CollaborationEngine::ListMultirangeOperationImpl<
        CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>>&>(*operation)
        .getNestedOperations()
        .front()
        .setData(nullptr);
    expectFailure(std::move(operation), "plainPtr");
}

TEST_F(MalformedInsertion, WithFewerElementsThanSlotsChangesNothing)
{
    auto operation = insert(3, "xy");
    dynamic_cast<CollaborationEngine::ListMultirangeOperationImpl<
        CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>>&>(*operation)
        .getNestedOperations()
        .front()
        .setData(makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(makeElements("x")));
    expectFailure(std::move(operation), "Index is outside range");
}

TEST_F(MalformedInsertion, WithPiecesFromLowToHighChangesNothing)
{
    expectFailure(insert({{3, "x"}, {4, "y"}}), "isDescending");
}

} // namespace Zem::TestSupport
