#include "Editing/CS_Painting.h"
#include "Editing/CS_EditorCase.h"
#include "Editing/CS_InvalidEditError.h"
#include "Editing/CS_Looks.h"

#include "CE_SetPropertyOperation.h"
#include "DClb_PropertyValues.h"

#include <sstream>

namespace Zem::CollaborationSession
{

namespace
{

using CollaborationEngine::getSimpleDataValue;
using DOM::ParaProps;
using DOM::RunProps;

LookChange makeCentred()
{
    return LookChange::setField(&ParaProps::_alignment, DOM::ParagraphAlignment::Center);
}

/// A text that is painted without an index of characters.
class Painted
{
public:
    explicit Painted(std::string_view notation)
        : _edited(TestSupport::makeText(notation))
    {
    }

    /// Paints elements of the plane.
    Painted& paintElements(unsigned long begin, unsigned long end, const LookChange& change)
    {
        const PlaneStretch stretch = findStretch(_edited.getText(), begin, end);
        return keep(paintRuns(_edited.getText(), TextEditor::getMainTextAddress(), stretch, change));
    }

    Painted& paint(unsigned long firstSlot, unsigned long lastSlot, const LookChange& change,
                   LookTarget target = LookTarget::Runs)
    {
        return keep(plan(firstSlot, lastSlot, change, target));
    }

    Painted& paintParagraph(unsigned long firstSlot, unsigned long lastSlot, const LookChange& change)
    {
        return paint(firstSlot, lastSlot, change, LookTarget::Paragraphs);
    }

    /// Sets what the last painting changed back, piece by piece.
    Painted& unpaint(const LookChange& change, LookTarget target = LookTarget::Runs)
    {
        const std::vector<LookPiece> pieces = _painting._pieces;
        for (const LookPiece& piece : pieces)
        {
            execute(plan(piece._firstSlot, piece._lastSlot, change.makeReversal(piece._oldValue), target));
        }
        return *this;
    }

    Painted& is(std::string_view looks)
    {
        EXPECT_EQ(looks, printLooks(_edited.getText()));
        return *this;
    }

    /// Expects the pieces of the last painting, by the slots of their ends.
    Painted& hasPieces(std::string_view expected)
    {
        std::ostringstream printed;
        for (const LookPiece& piece : _painting._pieces)
        {
            printed << (printed.tellp() > 0 ? " " : "") << piece._firstSlot << '-' << piece._lastSlot;
        }
        EXPECT_EQ(expected, printed.str());
        return *this;
    }

    /// Expects how many operations the last painting made.
    Painted& did(std::size_t operationsCount)
    {
        EXPECT_EQ(operationsCount, _painting._operations.size());
        return *this;
    }

    DocumentUnderTest& getEdited()
    {
        return _edited;
    }

private:
    Painting plan(unsigned long firstSlot, unsigned long lastSlot, const LookChange& change, LookTarget target)
    {
        return paintStretch(_edited.getText(), TextEditor::getMainTextAddress(), firstSlot, lastSlot, target, change);
    }

    Painted& keep(Painting painting)
    {
        const DOM::Document before = _edited._document;
        execute(painting);
        const DOM::Document afterwards = _edited._document;
        _edited._editor.takeBack(painting._operations);
        EXPECT_TRUE(before == _edited._document);
        execute(painting);
        EXPECT_TRUE(afterwards == _edited._document);
        _painting = std::move(painting);
        return *this;
    }

    void execute(const Painting& painting)
    {
        for (const auto& operation : painting._operations)
        {
            CollaborationEngine::OperationUPtr changedOp;
            EXPECT_FALSE(_edited._executor.executeAndChangeIfNeeded(*operation, changedOp));
        }
    }

    DocumentUnderTest _edited;
    Painting _painting;
};

TEST(Painting, PartsTheRunsAtBothEnds)
{
    Painted("{|abcd}").paint(3, 4, makeBold()).is("a(b)bc()d").did(2).hasPieces("4-5");
    Painted("{|abcd}").paint(2, 3, makeBold()).is("(b)ab()cd").did(2).hasPieces("2-3");
    Painted("{|abcd}").paint(4, 5, makeBold()).is("ab(b)cd").did(2).hasPieces("5-6");
    Painted("{|abcd}").paint(2, 5, makeBold()).is("(b)abcd").did(1).hasPieces("2-5");
}

TEST(Painting, TagsBelongToNobody)
{
    Painted("{|ab}").paint(0, 1, makeBold()).is("ab").did(0).hasPieces("");
    Painted("{|ab|cd}").paint(3, 4, makeBold()).is("a(b)b()cd").did(2);
    Painted("{|ab|cd}").paint(4, 5, makeBold()).is("ab(b)c()d").did(2);
    Painted("{|a||b}").paint(2, 5, makeBold()).is("(b)ab").did(2).hasPieces("2-5");
}

TEST(Painting, GoesOverRunsParagraphsAndBlocks)
{
    Painted("{|ab~}{}{|cd|ef}").paint(3, 13, makeBold()).is("a(b)b~//(b)cde()f").did(5);
    Painted painted("{|ab}#{|cd}");
    painted.paint(3, 8, makeBold()).did(3).hasPieces("4-9");
}

TEST(Painting, OfElementsBeginsWhereTheyDo)
{
    Painted("{|ab}{|cd}").paintElements(0, 99, makeBold()).is("(b)ab/(b)cd");
    Painted("{|ab}{|cd}").paintElements(4, 8, makeBold()).is("ab/(b)c()d");
    Painted("{|ab}{|cd}").paintElements(6, 9, makeBold()).is("ab/(b)cd");
    Painted("{|ab}{|cd}").paintElements(3, 3, makeBold()).is("ab/cd").did(0);
    Painted("{|ab}{|cd}").paintElements(10, 99, makeBold()).is("ab/cd").did(0);
    Painted("{|ab}{|cd}").paintElements(99, 100, makeBold()).is("ab/cd").did(0);
    Painted("").paintElements(0, 1, makeBold()).is("").did(0);
}

TEST(Painting, BetweenDeadSlotsGoesToWhatLives)
{
    Painted("{|a[b]c[d]e}").paint(3, 5, makeBold()).is("a(b)c()e").hasPieces("5-5");
    Painted("{|a[bcd]e}").paint(3, 5, makeBold()).is("ae").did(0);
    Painted("{|a[b}{|c]d}").paint(3, 7, makeBold()).is("ad").did(0);
    Painted("{|ab[cd]}").paint(3, 99, makeBold()).is("a(b)b");
}

TEST(Painting, TwiceIsOnce)
{
    Painted("{|abcdef}").paint(3, 6, makeBold()).did(2).paint(4, 7, makeBold()).did(0).hasPieces("");
}

TEST(Painting, LeavesOtherFieldsAlone)
{
    Painted("{|abcdef}").paint(2, 5, makeBold()).paint(4, 7, makeItalic()).is("(b)ab(bi)cd(i)e()f");
}

TEST(Painting, PassesOverWhatLooksSoAlready)
{
    Painted painted("{|abcdef}");
    painted.paint(4, 5, makeBold()).is("ab(b)cd()ef").paint(3, 9, makeBold()).is("a(b)bcdef");
    painted.hasPieces("4-4 9-10");
}

TEST(Painting, JoinsPiecesThatLookedAlike)
{
    Painted painted("{|ab|cd|ef}");
    painted.paint(2, 9, makeBold()).did(3).hasPieces("2-9");
    painted.paint(5, 6, makeItalic()).paint(2, 9, LookChange::clearField(&RunProps::_weight));
    painted.is("ab(i)cd()ef").hasPieces("2-3 5-6 8-9");
}

TEST(Painting, KeepsTheWholeOldValueInItsOperations)
{
    Painted painted("{|ab}");
    painted.paint(2, 3, makeBold());
    const Painting painting = paintStretch(painted.getEdited().getText(), TextEditor::getMainTextAddress(), 2, 3,
                                           LookTarget::Runs, makeItalic());
    ASSERT_EQ(1U, painting._operations.size());
    const auto& setting = cast<CollaborationEngine::SetPropertyOperation>(*painting._operations.front());
    const auto& oldProps = *getSimpleDataValue<DOM::RunPropsConstPtr>(setting.getOldValue());
    const auto& newProps = *getSimpleDataValue<DOM::RunPropsConstPtr>(setting.getNewValue());
    EXPECT_TRUE(oldProps._weight == DOM::FontWeight::Bold && !oldProps._slant);
    EXPECT_TRUE(newProps._weight == DOM::FontWeight::Bold && newProps._slant == DOM::FontSlant::Italic);
}

TEST(Painting, PiecesTakeItBack)
{
    Painted painted("{|ab|cd}{|ef}");
    painted.paint(5, 6, makeBold()).paint(3, 10, makeBold()).is("a(b)bcd/(b)e()f").unpaint(makeBold());
    painted.is("ab(b)cd/ef");
    Painted linked("{|abcd}");
    linked.paint(2, 3, LookChange::addComment(makeComment('x')));
    linked.paint(3, 6, LookChange::addComment(makeComment('y'))).is("(cx)a(cxy)b(cy)cd");
    linked.unpaint(LookChange::addComment(makeComment('y'))).is("(cx)ab()cd");
}

TEST(Painting, PiecesTakeBackWhatCameInsideToo)
{
    Painted painted("{|ab}");
    painted.paint(2, 3, makeBold()).hasPieces("2-3");
    painted.getEdited()._editor.replace(1, 1, "x\ny");
    painted.is("(b)ax/(b)yb");
    // Five elements came in front of the last letter.
    painted.paint(2, 8, LookChange::clearField(&RunProps::_weight)).is("ax/yb");
}

TEST(Painting, OfParagraphsGoesToAllThatHaveAnElement)
{
    Painted("{|ab}{|cd}").paintParagraph(2, 3, makeCentred()).did(1).hasPieces("0-4");
    Painted("{|ab}{|cd}").paintParagraph(3, 7, makeCentred()).did(2).hasPieces("0-9");
    // The mark alone may have come from a paragraph of which nothing is left.
    Painted("{|ab}{|cd}").paintParagraph(4, 4, makeCentred()).did(0).hasPieces("");
    Painted("{|ab}#{}").paintParagraph(4, 6, makeCentred()).did(1).hasPieces("6-7");
    Painted("#").paintParagraph(0, 0, makeCentred()).did(0).hasPieces("");
    Painted("{|a[b}{|c]d}").paintParagraph(3, 99, makeCentred()).did(1).hasPieces("0-9");
    Painted("{|a[b]c}").paintParagraph(3, 3, makeCentred()).did(0);
}

TEST(Painting, OfAnEmptyStretchGoesToTheParagraphAroundIt)
{
    Painted painted("{|ab}#{}");
    const DOM::TextWithTombstones& text = painted.getEdited().getText();
    std::string counts;
    for (unsigned long element = 0; element <= 8; ++element)
    {
        const Painting painting =
            paintParagraphs(text, TextEditor::getMainTextAddress(), findStretch(text, element, element), makeCentred());
        counts += std::to_string(painting._operations.size());
    }
    EXPECT_EQ("011110010", counts);
}

TEST(Painting, OfParagraphsTwiceIsOnceAndCanBeTakenBack)
{
    Painted painted("{|ab}{|cd}{|ef}");
    const LookChange keepNext = LookChange::setField(&ParaProps::_isKeptWithNext, true);
    painted.paintParagraph(7, 7, keepNext).paintParagraph(2, 12, makeCentred()).did(3).hasPieces("0-4 5-9 10-14");
    const DOM::Document centred = painted.getEdited()._document;
    painted.unpaint(makeCentred(), LookTarget::Paragraphs);
    EXPECT_FALSE(centred == painted.getEdited()._document);
    painted.paintParagraph(2, 12, makeCentred());
    EXPECT_TRUE(centred == painted.getEdited()._document);
    painted.paintParagraph(2, 12, makeCentred()).did(0);
}

TEST(Painting, RefusesPropertiesOfOtherThings)
{
    const DOM::TextWithTombstones text = TestSupport::makeText("{|ab}");
    const auto& address = TextEditor::getMainTextAddress();
    EXPECT_THROW(paintStretch(text, address, 2, 3, LookTarget::Runs, makeCentred()), InvalidEditError);
    EXPECT_THROW(paintRuns(text, address, PlaneStretch(), makeCentred()), InvalidEditError);
}

} // namespace

} // namespace Zem::CollaborationSession
