#include "Sharing/CS_ComposedTyping.h"

#include "Editing/CS_EditorCase.h"
#include "Editing/CS_TextEditor.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MultirangeOperationUtils.h"
#include "CE_OperationEquality.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;

using Insert = ListModificationOperation<InsertTag>;
using Mark = ListModificationOperation<MarkAsRemovedTag>;

template<class Nested>
OperationUPtr make(unsigned long begin, std::string_view elements)
{
    auto items = std::make_unique<DOMCollaboration::TextWithTombstonesItems>(TestSupport::makeElements(elements));
    const unsigned long count = items->getSize();
    return MultirangeOperationUtils::makeMultirangeOperationFromSingle(
        Nested(TextEditor::getMainTextAddress(),
               static_cast<unsigned long>(DOMCollaboration::OperationDOMNodeType::TextWithTombstones),
               SharedConstPtr<ItemsCollection>(std::move(items)), IndexRange<unsigned long>::fromCount(begin, count)));
}

/// "insert 7:z 2:xy mark 3:c"
std::string describe(const std::vector<OperationUPtr>& operations)
{
    std::string text;
    for (const OperationUPtr& operation : operations)
    {
        const auto describeRanges = [&](const char* what, const auto& multirange)
        {
            text += text.empty() ? what : std::string(" ") + what;
            for (const auto& nested : multirange.getNestedOperations())
            {
                const auto& items = cast<DOMCollaboration::TextWithTombstonesItems>(*nested.getData());
                text += " " + std::to_string(nested.getRange().getBegin()) + ":" +
                        TestSupport::print(items.getCollection());
            }
        };
        if (const auto* insertion = cast<ListMultirangeOperationImpl<Insert>>(operation.get()))
        {
            describeRanges("insert", *insertion);
        }
        else
        {
            describeRanges("mark", cast<ListMultirangeOperationImpl<Mark>>(*operation));
        }
    }
    return text;
}

TEST(ComposedTyping, LettersOfAWordAreOneRange)
{
    ComposedTyping typing;
    EXPECT_TRUE(typing.isEmpty());
    EXPECT_TRUE(typing.takeIn(*make<Insert>(5, "w")));
    EXPECT_TRUE(typing.takeIn(*make<Insert>(6, "rd")));
    EXPECT_TRUE(typing.takeIn(*make<Insert>(6, "o")));
    EXPECT_FALSE(typing.isEmpty());
    EXPECT_EQ(describe(typing.makeOperations()), "insert 5:word");
}

TEST(ComposedTyping, RangesStandInTheSlotsOfTheStateBefore)
{
    ComposedTyping typing;
    typing.takeIn(*make<Insert>(5, "abc"));
    typing.takeIn(*make<Insert>(10, "d"));
    typing.takeIn(*make<Insert>(2, "e"));
    typing.takeIn(*make<Insert>(12, "f"));
    EXPECT_EQ(describe(typing.makeOperations()), "insert 7:df 5:abc 2:e");
}

TEST(ComposedTyping, MarkedSlotsFollowWhatIsTypedBehindThem)
{
    ComposedTyping typing;
    typing.takeIn(*make<Mark>(4, "abcd"));
    typing.takeIn(*make<Insert>(6, "xy"));
    typing.takeIn(*make<Insert>(4, "z"));
    EXPECT_EQ(describe(typing.makeOperations()), "insert 6:xy 4:z mark 9:cd 5:ab");
}

TEST(ComposedTyping, WhatIsTypedAndDeletedIsInBoth)
{
    ComposedTyping typing;
    typing.takeIn(*make<Insert>(4, "xyz"));
    typing.takeIn(*make<Mark>(6, "z"));
    typing.takeIn(*make<Mark>(5, "y"));
    typing.takeIn(*make<Mark>(7, "a"));
    EXPECT_EQ(describe(typing.makeOperations()), "insert 4:xyz mark 6:za 5:y");
}

/// Ranges of one operation, from the highest to the lowest.
template<class Nested>
OperationUPtr makeSeveral(std::initializer_list<TestSupport::Piece> pieces)
{
    std::vector<Nested> nested;
    for (const TestSupport::Piece& piece : pieces)
    {
        const OperationUPtr single = make<Nested>(piece._slot, piece._elements);
        nested.push_back(cast<ListMultirangeOperationImpl<Nested>>(*single).getNestedOperations().front());
    }
    return std::make_unique<ListMultirangeOperationImpl<Nested>>(std::move(nested));
}

TEST(ComposedTyping, SeveralRangesOfOneInsertionGoAmongThoseThatAreThere)
{
    ComposedTyping typing;
    typing.takeIn(*make<Insert>(5, "abc"));
    typing.takeIn(*make<Insert>(12, "d"));
    typing.takeIn(*makeSeveral<Insert>({{20, "z"}, {13, "y"}, {9, "w"}, {8, "c"}, {6, "x"}, {5, "v"}, {2, "u"}}));
    EXPECT_EQ(describe(typing.makeOperations()), "insert 16:z 9:dy 6:w 5:vaxbcc 2:u");
}

TEST(ComposedTyping, OfSeveralRangesAtOneGapTheLastStandsInFront)
{
    ComposedTyping typing;
    typing.takeIn(*makeSeveral<Insert>({{7, "b"}, {7, "a"}, {2, "d"}, {2, "c"}}));
    EXPECT_EQ(describe(typing.makeOperations()), "insert 7:ab 2:cd");
}

TEST(ComposedTyping, SeveralRangesOfOneInsertionPartWhatIsMarked)
{
    ComposedTyping typing;
    typing.takeIn(*makeSeveral<Mark>({{20, "xy"}, {10, "abcd"}, {2, "e"}}));
    typing.takeIn(*makeSeveral<Insert>({{21, "5"}, {20, "4"}, {13, "3"}, {11, "1"}, {11, "2"}, {10, "0"}, {3, "9"}}));
    EXPECT_EQ(describe(typing.makeOperations()),
              "insert 21:5 20:4 13:3 11:21 10:0 3:9 mark 28:y 26:x 18:d 15:bc 12:a 2:e");
}

/// From the end to the beginning, as all of one letter are deleted; each is an operation of its own, or they are one.
TEST(ComposedTyping, AHundredThousandSingleDeletionsAreOneMarkingInNoTime)
{
    constexpr unsigned long count = 100000;
    ComposedTyping oneByOne;
    std::vector<Mark> nested;
    for (unsigned long index = count; index-- > 0;)
    {
        const OperationUPtr deletion = make<Mark>(2 * index + 2, "a");
        ASSERT_TRUE(oneByOne.takeIn(*deletion));
        nested.push_back(cast<ListMultirangeOperationImpl<Mark>>(*deletion).getNestedOperations().front());
    }
    ComposedTyping atOnce;
    const ListMultirangeOperationImpl<Mark> all(std::move(nested));
    ASSERT_TRUE(atOnce.takeIn(all));
    // A colleague's keystroke in the middle of them.
    ASSERT_TRUE(oneByOne.takeIn(*make<Insert>(count, "x")));
    ASSERT_TRUE(atOnce.takeIn(*make<Insert>(count, "x")));
    const auto operations = oneByOne.makeOperations();
    ASSERT_EQ(operations.size(), 2u);
    const auto& ranges = cast<ListMultirangeOperationImpl<Mark>>(*operations[1]).getNestedOperations();
    ASSERT_EQ(ranges.size(), count);
    EXPECT_EQ(ranges.front().getRange().getBegin(), 2 * count + 1);
    EXPECT_EQ(ranges.back().getRange().getBegin(), 2u);
    EXPECT_TRUE(areDeeplyEqual(*operations[1], *atOnce.makeOperations()[1]));
}

TEST(ComposedTyping, TagsAndMarksAndOtherOperationsAreNoTyping)
{
    ComposedTyping typing;
    EXPECT_FALSE(typing.takeIn(*make<Insert>(4, "}{|x")));
    EXPECT_FALSE(typing.takeIn(*make<Mark>(4, "|x")));
    EXPECT_FALSE(typing.takeIn(*make<ListModificationOperation<RestoreTag>>(4, "x")));
    EXPECT_FALSE(typing.takeIn(EmptyOperation()));
    EXPECT_TRUE(typing.isEmpty());
    EXPECT_TRUE(typing.makeOperations().empty());
}

TEST(ComposedTyping, MarkingWhoseBytesArentKnownIsNoTyping)
{
    ComposedTyping typing;
    EXPECT_FALSE(typing.takeIn(*MultirangeOperationUtils::makeMultirangeOperationFromSingle(
        Mark(TextEditor::getMainTextAddress(), 0, IndexRange<unsigned long>::fromCount(2, 1)))));
}

TEST(ComposedTyping, OtherTextIsNotTakenIn)
{
    ComposedTyping typing;
    typing.takeIn(*make<Insert>(4, "x"));
    OperationUPtr elsewhere = make<Insert>(5, "y");
    cast<HierarchicalOperation>(*elsewhere).setNodeAddress(OperationNodeAddress());
    EXPECT_FALSE(typing.takeIn(*elsewhere));
    EXPECT_EQ(describe(typing.makeOperations()), "insert 4:x");
}

TEST(ComposedTyping, OperationsHaveTheIdsOfTheFirstOfTheirKinds)
{
    ComposedTyping typing;
    unsigned long nextID = 7;
    for (const auto& operation : {make<Mark>(4, "a"), make<Insert>(2, "x"), make<Mark>(7, "b"), make<Insert>(3, "y")})
    {
        operation->setIDIfNeeded(nextID);
        typing.takeIn(*operation);
    }
    const auto operations = typing.makeOperations();
    ASSERT_EQ(operations.size(), 2u);
    EXPECT_EQ(operations[0]->getID().value(), 8u);
    EXPECT_EQ(operations[1]->getID().value(), 7u);
}

/// Random keystrokes, done one by one and composed: the documents are equal, there and back.
TEST(ComposedTyping, DoesWhatTheKeystrokesDid)
{
    for (unsigned long seed = 1; seed <= 200; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937_64 random(seed);
        const auto pick = [&](unsigned long count)
        { return std::uniform_int_distribution<unsigned long>(0, count - 1)(random); };
        DocumentUnderTest edited(TestSupport::makeText("{|abc[de]|fg}{}{[h]|ij[k]kl~|m}"));
        const DOM::Document before = edited._document;
        ComposedTyping typing;
        for (unsigned long key = 0; key < 40; ++key)
        {
            const unsigned long count = edited._editor.getIndex().getCharactersCount();
            const unsigned long begin = pick(count + 1);
            const unsigned long end = std::min(count, begin + pick(3));
            Operations operations = edited._editor.replace(begin, end, pick(3) == 0 ? "" : "\xC3\xA9");
            const auto isTyping = [](const OperationUPtr& operation) { return ComposedTyping().takeIn(*operation); };
            if (!std::all_of(operations.begin(), operations.end(), isTyping))
            {
                edited._editor.takeBack(operations);
                continue;
            }
            for (const OperationUPtr& operation : operations)
            {
                ASSERT_TRUE(typing.takeIn(*operation));
            }
        }
        const DOM::Document after = edited._document;
        DocumentUnderTest composed(before.getTextWithTombstones());
        std::vector<OperationUPtr> operations = typing.makeOperations();
        for (const OperationUPtr& operation : operations)
        {
            OperationUPtr changedOp;
            ASSERT_FALSE(composed._executor.executeAndChangeIfNeeded(*operation, changedOp));
        }
        ASSERT_TRUE(composed._document == after) << TestSupport::print(composed.getText());
        for (auto operation = operations.rbegin(); operation != operations.rend(); ++operation)
        {
            composed._executor.reverse(**operation);
        }
        ASSERT_TRUE(composed._document == before) << TestSupport::print(composed.getText());
    }
}

} // namespace

} // namespace Zem::CollaborationSession
