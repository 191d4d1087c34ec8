#include "TS_Assertions.h"
#include "TS_TextCase.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

#include <limits>

namespace Zem::TestSupport
{

using CollaborationEngine::InsertTag;
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

TEST(TextInsertion, ABlockBehindAnAtomicRunBringsTheMarkOfItsParagraph)
{
    TextCase("{|a~}").after(insert(4, "#")).is("{|a~}#{}").isChangedTo("insert 4:}#{");
    TextCase("{|ab}").after(insert(3, "~#")).is("{|a~}#{|b}").isChangedTo("insert 3:~}#{|");
    TextCase("{|a}").after(insert(4, "{~#$")).is("{|a}{~}#$").isChangedTo("insert 4:{~}#$");
}

TEST(TextInsertion, AnAtomicRunInFrontOfABlockBringsTheMarkOfItsParagraph)
{
    TextCase("#").after(insert(0, "~")).is("{~}#").isChangedTo("insert 0:{~}");
    TextCase("$").after(insert(0, "{~")).is("{~}$").isChangedTo("insert 0:{~}");
}

TEST(TextInsertion, AParagraphWhoseEmptyRunIsDroppedIsClosed)
{
    TextCase("").after(insert(0, "{|{}")).is("{}{}").isChangedTo("insert 0:{}{}");
    TextCase("{|a}").after(insert(3, "|{")).is("{|a}{}").isChangedTo("insert 3:}{");
    TextCase("{~}").after(insert(2, "|#")).is("{~}#{}").isChangedTo("insert 2:}#{");
}

TEST(TextInsertion, TheSlotsBehindAMarkThatWasAddedNameTheirOwnElements)
{
    TextCase("{|a~}{|bc}").after(insert(4, "#")).after(mark(10, 11)).is("{|a~}#{}{|[.]c}");
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

/// Insertions of two pieces, of which the second, lower one can't be put in. All of the text must be as it was, and
/// take other insertions; the observer, a mirror, must not have heard of anything.
class MalformedInsertion : public testing::Test
{
protected:
    using Insertion =
        CollaborationEngine::ListMultirangeOperationImpl<CollaborationEngine::ListModificationOperation<InsertTag>>;
    using Elements = DOMCollaboration::TextWithTombstonesElementVector;

    static SharedConstPtr<DOMCollaboration::TextWithTombstonesItems> makeData(Elements elements)
    {
        return makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(std::move(elements));
    }

    /// The lower piece has `slotsCount` slots, and `data`.
    static CollaborationEngine::OperationUPtr insertWith(SharedConstPtr<CollaborationEngine::ItemsCollection> data,
                                                         unsigned long slotsCount = 1)
    {
        auto operation = insert({{5, "y"}, {4, std::string_view("xxxx").substr(0, slotsCount)}});
        cast<Insertion>(*operation).getNestedOperations().back().setData(std::move(data));
        return operation;
    }

    template<class Expect>
    void expectNoChange(Expect expect)
    {
        const DOM::TextWithTombstones before = _textCase.getText();
        expect();
        EXPECT_TRUE(before == _textCase.getText());
        _textCase.after(insert(3, "x")).is("{|ax[.]b}");
    }

    void expectFailure(CollaborationEngine::OperationUPtr operation, const char* message)
    {
        CollaborationEngine::OperationUPtr changedOp;
        expectNoChange(
            [&]
            { EXPECT_ASSERTION(_textCase.getExecutor().executeAndChangeIfNeeded(*operation, changedOp), message); });
    }

    template<class Exception>
    void expectThrow(CollaborationEngine::OperationUPtr operation)
    {
        CollaborationEngine::OperationUPtr changedOp;
        expectNoChange(
            [&] { EXPECT_THROW(_textCase.getExecutor().executeAndChangeIfNeeded(*operation, changedOp), Exception); });
    }

    TextCase _textCase{"{|a[.]b}"};
};

TEST_F(MalformedInsertion, OfAnElementThatIsNoByteChangesNothing)
{
    expectThrow<BadNumCastError>(insertWith(makeData({static_cast<short>(200)})));
}

TEST_F(MalformedInsertion, OfAParagraphWithRunsChangesNothing)
{
    auto paragraph = std::make_shared<DOM::Paragraph>();
    paragraph->getRuns().push_back(std::make_unique<DOM::TabRun>());
    expectFailure(insertWith(makeData({DOMCollaboration::ParagraphMark(), SharedConstPtr<DOM::Block>(paragraph)}), 2),
                  "paragraph.getRuns().empty()");
}

TEST_F(MalformedInsertion, OfATextRunWithTextChangesNothing)
{
    auto textRun = std::make_shared<DOM::TextRun>();
    textRun->setText("x");
    expectFailure(insertWith(makeData({SharedConstPtr<DOM::Run>(textRun), static_cast<short>('y')}), 2),
                  "textRun.getText().empty()");
}

TEST_F(MalformedInsertion, OfMissingBlocksAndRunsChangesNothing)
{
    expectFailure(insertWith(makeData({SharedConstPtr<DOM::Block>()})), "plainPtr");
}

TEST_F(MalformedInsertion, BeyondTheEndOfTheTextChangesNothing)
{
    expectFailure(insert({{8, "x"}, {3, "y"}}), "Unexpected type in the source variant");
}

TEST_F(MalformedInsertion, BehindTheEndOfTheTextChangesNothing)
{
    expectFailure(insert({{7, "x"}, {3, "y"}}), "Invlalid elements position");
}

TEST_F(MalformedInsertion, FarBeyondTheEndOfTheTextChangesNothing)
{
    expectFailure(insert({{std::numeric_limits<unsigned long>::max() - 1, "x"}, {3, "y"}}),
                  "Unexpected type in the source variant");
}

TEST_F(MalformedInsertion, WithoutDataChangesNothing)
{
    expectFailure(insertWith(nullptr), "plainPtr");
}

TEST_F(MalformedInsertion, WithItemsThatAreNoTextChangesNothing)
{
    expectThrow<std::bad_cast>(
        insertWith(makeSharedConst<CollaborationEngine::SimpleItemsCollection<std::vector<short>>>(
            std::vector<short>{static_cast<short>('x')})));
}

TEST_F(MalformedInsertion, WithFewerElementsThanSlotsChangesNothing)
{
    expectFailure(insertWith(makeData(makeElements("x")), 2), "Index is outside range");
}

TEST_F(MalformedInsertion, WithMoreElementsThanSlotsChangesNothing)
{
    expectFailure(insertWith(makeData(makeElements("xy")), 1), "Index is outside range");
}

TEST_F(MalformedInsertion, WithPiecesFromLowToHighChangesNothing)
{
    expectFailure(insert({{3, "x"}, {4, "y"}}), "isDescending");
}

} // namespace Zem::TestSupport
