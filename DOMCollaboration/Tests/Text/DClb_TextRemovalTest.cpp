#include "TS_Assertions.h"
#include "TS_TextCase.h"

#include "DOM_Paragraph.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_SetToSharedStyle.h"
#include "DOM_SharedObjectFactory.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

#include <limits>

namespace Zem::TestSupport
{

using namespace CollaborationEngine;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

UUID makeStyleUUID(unsigned char number)
{
    return UUID(UUID::Bytes{number});
}

/// The tag of a paragraph whose style has a parent.
DOMCollaboration::TextWithTombstonesElement makeStyledTag(const UUID& parent)
{
    DOM::ParagraphStyle style;
    style.setParentUUID(parent);
    auto paragraph = std::make_shared<DOM::Paragraph>();
    paragraph->getSharedStyle() = DOM::SharedObjectFactory().create(std::move(style));
    return SharedConstPtr<DOM::Block>(std::move(paragraph));
}

template<class Tag>
OperationUPtr makeMultirange(unsigned long slot, const SharedConstPtr<ItemsCollection>& items)
{
    std::vector<ListModificationOperation<Tag>> nested;
    const unsigned long count = cast<TextWithTombstonesItems>(*items).getCollection().size();
    nested.emplace_back(getTextAddress(), 34, items, IndexRange<unsigned long>::fromCount(slot, count));
    return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<Tag>>>(std::move(nested));
}

UUID getParentStyle(const DOM::Block& block)
{
    return DOM::derefSharedStyle(cast<DOM::Paragraph>(block).getSharedStyle()).getParentUUID();
}

} // namespace

TEST(TextMarking, BytesOfARunBecomeTombstones)
{
    TextCase("{|abcd}").after(mark(3, 5)).is("{|a[bc]d}").isUnchanged();
}

TEST(TextMarking, AMarkingCapturesWhatItTakesOut)
{
    TextCase textCase("{|ab}{~|cd}");
    textCase.after(mark(4, 6)).is("{|ab[..]~|cd}").isUnchanged();
    EXPECT_EQ("mark 4:}{", print(textCase.getHappened()));
}

TEST(TextMarking, JoiningParagraphsAndRestoringSplitsThemAtTheSamePlace)
{
    TextCase("{|ab}{|cd}").after(mark(4, 6)).is("{|ab[..]|cd}").after(restore(4, "}{")).is("{|ab}{|cd}");
}

TEST(TextMarking, OfJoinedParagraphsTheFirstKeepsItsPropertiesAndTheSecondIsCapturedWithItsOwn)
{
    DOMCollaboration::TextWithTombstonesElementVector elements = makeElements("{|ab}{|cd}");
    elements[0] = makeStyledTag(makeStyleUUID(1));
    elements[5] = makeStyledTag(makeStyleUUID(2));
    TextCase textCase("");
    textCase.after(makeMultirange<InsertTag>(0, makeSharedConst<TextWithTombstonesItems>(elements)));
    textCase.after(mark(4, 6)).is("{|ab[..]|cd}").isUnchanged();
    EXPECT_EQ(makeStyleUUID(1), getParentStyle(*textCase.getText().getBlocks().front()));
    const auto& marking =
        cast<ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>>(textCase.getHappened());
    const auto& captured = cast<TextWithTombstonesItems>(*marking.getNestedOperations().front().getData());
    const auto& tag = boost::get<SharedConstPtr<DOM::Block>>(captured.getCollection().at(1));
    EXPECT_EQ(makeStyleUUID(2), getParentStyle(*tag));
    EXPECT_TRUE(cast<DOM::Paragraph>(*tag).getRuns().empty());

    textCase.after(makeMultirange<RestoreTag>(4, marking.getNestedOperations().front().getData()));
    textCase.is("{|ab}{|cd}").isUnchanged();
    EXPECT_EQ(makeStyleUUID(1), getParentStyle(*textCase.getText().getBlocks().front()));
    EXPECT_EQ(makeStyleUUID(2), getParentStyle(*textCase.getText().getBlocks().back()));
}

TEST(TextMarking, TheLastMarkAloneIsRefused)
{
    TextCase("{|ab}").after(mark(4, 5)).is("{|ab}").isRefused();
}

TEST(TextMarking, AMarkAloneInFrontOfAnotherParagraphIsRefused)
{
    TextCase("{|ab}{|cd}").after(mark(4, 5)).is("{|ab}{|cd}").isRefused();
}

TEST(TextMarking, AllBytesOfARunWithoutItsTagAreRefused)
{
    TextCase("{|ab}").after(mark(2, 4)).is("{|ab}").isRefused();
    TextCase("{|ab|cd}").after(mark(2, 4)).is("{|ab|cd}").isRefused();
}

TEST(TextMarking, ARunWithItsTagGoes)
{
    TextCase("{|ab}").after(mark(1, 4)).is("{[...]}").isUnchanged();
    TextCase("{|ab|cd}").after(mark(1, 4)).is("{[...]|cd}").isUnchanged();
}

TEST(TextMarking, TheBytesThatATagLeavesBehindJoinTheRunInFront)
{
    TextCase("{|ab|cdef}").after(mark(4, 7)).is("{|ab[...]ef}").isUnchanged();
    TextCase("{|ab|cdef}").after(mark(4, 5)).is("{|ab[.]cdef}").isUnchanged();
}

TEST(TextMarking, TheRunsThatATagLeavesBehindJoinTheParagraphInFront)
{
    TextCase("{|ab}{|cd~|ef}").after(mark(4, 9)).is("{|ab[.....]~|ef}").isUnchanged();
    TextCase("{|ab}{|cd~|ef}").after(mark(3, 8)).is("{|a[.....]d~|ef}").isUnchanged();
}

TEST(TextMarking, SeveralParagraphsGoAtOnce)
{
    TextCase("{|ab}{|cd}#{}{|ef}").after(mark(3, 16)).is("{|a[.............]f}").isUnchanged();
}

TEST(TextMarking, ManyParagraphsAndBlocksGoAtOnceAndComeBack)
{
    std::string stretch;
    for (int block = 0; block < 50; ++block)
    {
        stretch += "{|xy~}#{}";
    }
    const unsigned long size = stretch.size();
    const std::string dead(size, '.');
    TextCase("{|ab}" + stretch + "{|cd}").after(mark(5, 5 + size)).is("{|ab}[" + dead + "]{|cd}").isUnchanged();
    TextCase("{|ab}" + stretch + "{|cd}").after(mark(3, 8 + size)).is("{|a[.." + dead + "...]d}").isUnchanged();
    TextCase(stretch + "{|cd~}").after(mark(0, size)).is('[' + dead + "]{|cd~}").isUnchanged();
    TextCase("{|ab}" + stretch).after(mark(5, 5 + size)).is("{|ab}[" + dead + ']').isUnchanged();
    TextCase("{~}" + stretch + "{|cd~}").after(mark(2, 4 + size)).is("{~[." + dead + ".]|cd~}").isUnchanged();
}

TEST(TextMarking, AMarkBetweenAnAtomicRunAndAnAtomicBlockStays)
{
    TextCase("{~}#").after(mark(2, 3)).is("{~}#").isRefused();
    TextCase("{~}$").after(mark(2, 3)).is("{~}$").isRefused();
    TextCase("{~}{|a}#").after(mark(2, 7)).is("{~}{|a}#").isRefused();
    TextCase("{~|ab}#{|c}").after(mark({{9, 10}, {2, 6}})).is("{~|ab}#{|c}").isRefused();
}

TEST(TextMarking, AWholeParagraphBehindAnotherGoes)
{
    TextCase("{|a}{|b}{|c}").after(mark(4, 8)).is("{|a}[....]{|c}").isUnchanged();
}

TEST(TextMarking, AWholeTextGoesAndComesBack)
{
    TextCase("{|ab}").after(mark(0, 5)).is("[.....]").after(restore(0, "{|ab}")).is("{|ab}");
}

TEST(TextMarking, AtomicBlocksAndRunsGo)
{
    TextCase("{}#${~}").after(mark(2, 4)).is("{}[..]{~}").after(mark(5, 6)).is("{}[..]{[.]}");
}

TEST(TextMarking, OneInvalidStretchKeepsAllOfThem)
{
    TextCase("{|ab}{|cd}").after(mark({{7, 9}, {2, 3}})).is("{|ab}{|cd}").isRefused();
}

TEST(TextMarking, SeveralStretchesGoTogether)
{
    TextCase textCase("{|abcd}{|ef}");
    textCase.after(mark({{9, 10}, {4, 5}, {2, 3}})).is("{|[.]b[.]d}{|[.]f}").isUnchanged();
    EXPECT_EQ("mark 9:e 4:c 2:a", print(textCase.getHappened()));
}

TEST(TextMarking, StretchesWithTombstonesBetweenThemAreOneStretchOfTheTree)
{
    TextCase textCase("{|ab[cd]ef}");
    textCase.after(mark({{6, 7}, {3, 4}})).is("{|a[....]f}").isUnchanged();
    EXPECT_EQ("mark 6:e 3:b", print(textCase.getHappened()));
}

TEST(TextMarking, ADeadSlotIsNoTarget)
{
    TextCase textCase("{|a[b]cd}");
    OperationUPtr changedOp;
    for (const auto& [begin, end] : {Stretch{3, 4}, Stretch{3, 5}, Stretch{2, 4}, Stretch{2, 5}})
    {
        EXPECT_ASSERTION(textCase.getExecutor().executeAndChangeIfNeeded(*mark(begin, end), changedOp), "opt");
    }
    textCase.is("{|a[b]cd}");
}

TEST(TextMarking, AStretchBeyondTheEndOfTheTextChangesNothing)
{
    TextCase textCase("{|ab}");
    OperationUPtr changedOp;
    for (const unsigned long end : {6ul, 9ul, std::numeric_limits<unsigned long>::max()})
    {
        EXPECT_ASSERTION(textCase.getExecutor().executeAndChangeIfNeeded(*mark({{3, end}, {2, 3}}), changedOp),
                         "Unexpected type in the source variant");
    }
    textCase.is("{|ab}").after(mark(3, 4)).is("{|a[.]}");
}

TEST(TextMarking, StretchesThatOverlapChangeNothing)
{
    TextCase textCase("{|abcd}");
    OperationUPtr changedOp;
    EXPECT_ASSERTION(textCase.getExecutor().executeAndChangeIfNeeded(*mark({{3, 5}, {2, 4}}), changedOp),
                     "isDescending");
    textCase.is("{|abcd}").after(mark(3, 4)).is("{|a[.]cd}");
}

TEST(TextRestoring, TombstonesComeAliveWithTheDataOfTheOperation)
{
    TextCase("{|a[bc]d}").after(restore(3, "bc")).is("{|abcd}").isUnchanged();
    TextCase("{|a[bc]d}").after(restore(4, "c")).is("{|a[b]cd}").isUnchanged();
}

TEST(TextRestoring, SeveralStretchesOfOneGapComeAliveTogether)
{
    TextCase("{|a[bcd]e}").after(restore({{5, "d"}, {3, "b"}})).is("{|ab[c]de}").isUnchanged();
}

TEST(TextRestoring, DataThatDoesNotFitIsRefusedNotRepaired)
{
    TextCase("{|a[..]b}").after(restore(3, "}")).is("{|a[..]b}").isRefused();
    TextCase("{|a}[..]").after(restore(4, "x")).is("{|a}[..]").isRefused();
    TextCase("{|a[..]}[.]").after(restore({{6, "x"}, {3, "bc"}})).is("{|a[..]}[.]").isRefused();
}

TEST(TextRestoring, DataThatWouldLeaveAParagraphOpenIsRefused)
{
    TextCase("[..]#").after(restore(0, "{~")).is("[..]#").isRefused();
    TextCase("{|a[...]}").after(restore(3, "~#{")).is("{|a[...]}").isRefused();
    TextCase("{~[..]}").after(restore(2, "#{")).is("{~[..]}").isRefused();
    TextCase("{~[...]}").after(restore(2, "}#{")).is("{~}#{}").isUnchanged();
}

TEST(TextRestoring, ALiveSlotIsNoTarget)
{
    TextCase textCase("{|a[b]c}");
    OperationUPtr changedOp;
    EXPECT_ASSERTION(textCase.getExecutor().executeAndChangeIfNeeded(*restore(4, "x"), changedOp), "isTombstone");
    EXPECT_ASSERTION(textCase.getExecutor().executeAndChangeIfNeeded(*restore(3, "xy"), changedOp), "isTombstone");
    textCase.is("{|a[b]c}");
}

TEST(TextRestoring, MalformedDataChangesNothing)
{
    TextCase textCase("{|a[bc]d[e]}");
    auto operation = restore({{6, "e"}, {4, "c"}});
    cast<ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>>(*operation)
        .getNestedOperations()
        .back()
        .setData(makeSharedConst<TextWithTombstonesItems>(
            DOMCollaboration::TextWithTombstonesElementVector{static_cast<short>(200)}));
    OperationUPtr changedOp;
    EXPECT_THROW(textCase.getExecutor().executeAndChangeIfNeeded(*operation, changedOp), BadNumCastError);
    EXPECT_ASSERTION(textCase.getExecutor().executeAndChangeIfNeeded(*restore({{4, "c"}, {6, "e"}}), changedOp),
                     "isDescending");
    EXPECT_ASSERTION(textCase.getExecutor().executeAndChangeIfNeeded(*restore({{99, "x"}, {4, "c"}}), changedOp),
                     "isTombstone");
    textCase.is("{|a[bc]d[e]}").after(restore(4, "c")).is("{|a[b]cd[e]}");
}

TEST(TextRemoval, TakingBackAnInsertionLeavesNoTombstoneAndKeepsItsData)
{
    TextCase textCase("{|a[b]c}");
    auto operation = insert({{5, "y"}, {4, "x"}});
    OperationUPtr changedOp;
    EXPECT_FALSE(textCase.getExecutor().executeAndChangeIfNeeded(*operation, changedOp));
    textCase.is("{|a[b]xcy}");
    textCase.getExecutor().reverse(*operation);
    textCase.is("{|a[b]c}");
    EXPECT_EQ("insert 5:y 4:x", print(*operation));
}

TEST(TextRemoval, AnInsertionWhoseReversalWouldBreakTheTextFails)
{
    TextCase textCase("{|ab}");
    EXPECT_ASSERTION(textCase.getExecutor().reverse(*insert(2, "ab")),
                     "fixBusinessLogicForRemoving(removeData, textWithTombstonesInfo.textWithTombstonesAdapter) == "
                     "BusinessLogicValidationResult::Valid");
    textCase.is("{|ab}");
}

TEST(TextRemoval, AnInsertionWhoseReversalWouldLeaveAParagraphOpenFails)
{
    TextCase textCase("{~}#");
    EXPECT_ASSERTION(textCase.getExecutor().reverse(*insert(2, "}")),
                     "fixBusinessLogicForRemoving(removeData, textWithTombstonesInfo.textWithTombstonesAdapter) == "
                     "BusinessLogicValidationResult::Valid");
    textCase.is("{~}#");
}

TEST(TextRemoval, AFailedReversalLeavesTheOperationAsItCame)
{
    TextCase textCase("{|ab}{|cd}");
    auto operation = insert({{6, "cd"}, {2, "ab"}});
    EXPECT_ASSERTION(textCase.getExecutor().reverse(*operation),
                     "fixBusinessLogicForRemoving(removeData, textWithTombstonesInfo.textWithTombstonesAdapter) == "
                     "BusinessLogicValidationResult::Valid");
    EXPECT_EQ("insert 6:cd 2:ab", print(*operation));
}

TEST(TextRemoval, AReversalBeyondAllCountingChangesNeitherTheTextNorTheOperation)
{
    TextCase textCase("{|abcd}");
    auto operation = insert({{std::numeric_limits<unsigned long>::max() - 1, "x"}, {2, "abc"}});
    const std::string before = print(*operation);
    EXPECT_ASSERTION(textCase.getExecutor().reverse(*operation), "isCountable");
    EXPECT_EQ(before, print(*operation));
    textCase.is("{|abcd}").after(mark(3, 4)).is("{|a[.]cd}");
}

TEST(TextRemoval, AReversalNeverProducesAChangedOperation)
{
    TextCase textCase("{|ab}{|cd}");
    auto restoring = restore(4, "}");
    EXPECT_ASSERTION(textCase.getExecutor().reverse(*restoring), "!opChanged && !changedOp");
    textCase.is("{|ab}{|cd}");
}

TEST(TextRemoval, ARemoveOperationIsNeverExecutedInEitherDirection)
{
    TextCase textCase("{|ab}");
    std::vector<ListModificationOperation<RemoveTag>> nested;
    nested.emplace_back(getTextAddress(), 34, IndexRange<unsigned long>(3, 4));
    ListMultirangeOperationImpl<ListModificationOperation<RemoveTag>> removal(std::move(nested));
    OperationUPtr changedOp;
    EXPECT_ASSERTION(textCase.getExecutor().executeAndChangeIfNeeded(removal, changedOp),
                     "ListRemoveOperation shouldn't be executed ever");
    EXPECT_ASSERTION(textCase.getExecutor().reverse(removal), "ListRemoveOperation shouldn't be executed ever");
}

TEST(TextRemoval, LeavingTombstonesDoesNothingInEitherDirection)
{
    TextCase textCase("{|a[b]c}");
    std::vector<ListLeaveTombstonesOperation> nested;
    nested.emplace_back(getTextAddress(), 34, nullptr, IndexRange<unsigned long>(3, 4));
    textCase.after(std::make_unique<ListMultirangeOperationImpl<ListLeaveTombstonesOperation>>(std::move(nested)))
        .is("{|a[b]c}")
        .isUnchanged();
}

TEST(TextRemoval, AnOperationOfAnotherFamilyIsABadCast)
{
    TextCase textCase("{|ab}");
    ListModificationOperation<MarkAsRemovedTag> single(getTextAddress(), 34, IndexRange<unsigned long>(3, 4));
    OperationUPtr changedOp;
    EXPECT_THROW(textCase.getExecutor().executeAndChangeIfNeeded(single, changedOp), std::bad_cast);
    EXPECT_THROW(textCase.getExecutor().reverse(single), std::bad_cast);
}

} // namespace Zem::TestSupport
