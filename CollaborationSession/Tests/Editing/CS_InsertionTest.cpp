#include "Editing/CS_EditorCase.h"
#include "Editing/CS_Looks.h"

namespace Zem::CollaborationSession
{

namespace
{

/// A text whose letters get looks, and then others beside them.
class LookCase
{
public:
    explicit LookCase(std::string_view notation)
        : _case(notation)
    {
    }

    LookCase& link(unsigned long begin, unsigned long end, const char* target = "x")
    {
        getEditor().setLink(begin, end, makeLink(target));
        return *this;
    }

    LookCase& comment(unsigned long begin, unsigned long end, char name)
    {
        getEditor().addComment(begin, end, makeComment(name));
        return *this;
    }

    LookCase& set(unsigned long begin, unsigned long end, const LookChange& change)
    {
        getEditor().setRunLook(begin, end, change);
        return *this;
    }

    LookCase& type(unsigned long offset, std::string_view characters)
    {
        _case.insert(offset, characters);
        return *this;
    }

    LookCase& replace(unsigned long begin, unsigned long end, std::string_view characters)
    {
        _case.replace(begin, end, characters);
        return *this;
    }

    LookCase& is(std::string_view looks)
    {
        EXPECT_EQ(looks, printLooks(_case.getEdited().getText()));
        return *this;
    }

    LookCase& hasRuns(std::string_view notation)
    {
        _case.is(notation);
        return *this;
    }

private:
    TextEditor& getEditor()
    {
        return _case.getEdited()._editor;
    }

    EditorCase _case;
};

TEST(TypedLook, IsThatOfTheCharacterInFront)
{
    LookCase("{|abcd}").set(0, 2, makeBold()).type(2, "x").is("(b)abx()cd").hasRuns("{|abx|cd}");
    LookCase("{|abcd}").set(2, 4, makeBold()).type(2, "x").is("abx(b)cd");
    LookCase("{|ab}").set(0, 2, makeBold()).type(0, "x").is("(b)xab");
    LookCase("{~|ab}").set(0, 1, makeBold()).type(1, "x").is("(b)~x()ab").hasRuns("{~|x|ab}");
}

TEST(TypedLook, BehindALinkIsntInIt)
{
    LookCase("{|abcd}").link(0, 2).type(2, "x").is("(@x)ab()xcd").hasRuns("{|ab|xcd}");
    LookCase("{|ab}").link(0, 2).type(2, "x").is("(@x)ab()x").hasRuns("{|ab|x}").type(3, "y").hasRuns("{|ab|xy}");
    LookCase("{|abcd}").set(0, 2, makeBold()).link(0, 2).type(2, "x").is("(b@x)ab(b)x()cd").hasRuns("{|ab|x|cd}");
}

TEST(TypedLook, InFrontOfALinkIsntInIt)
{
    LookCase("{|abcd}").link(2, 4).type(2, "x").is("abx(@x)cd").hasRuns("{|abx|cd}");
    LookCase("{|ab}").link(0, 2).type(0, "x").is("x(@x)ab").hasRuns("{|x|ab}").type(0, "y").hasRuns("{|yx|ab}");
    LookCase("{|ab}").set(0, 2, makeBold()).link(0, 2).type(0, "x").is("(b)x(b@x)ab");
}

TEST(TypedLook, InsideALinkIsInIt)
{
    LookCase("{|ab}").link(0, 2).type(1, "x").is("(@x)axb").hasRuns("{|axb}");
    LookCase("{|ab}").link(0, 2).set(0, 1, makeBold()).type(1, "x").is("(b@x)ax(@x)b").hasRuns("{|ax|b}");
    LookCase("{|ab}").link(0, 2).type(1, "x\ny").is("(@x)ax/(@x)yb").hasRuns("{|ax}{|yb}");
    LookCase("{|ab}").link(0, 2).type(1, "\n").is("(@x)a/(@x)b").hasRuns("{|a}{|b}");
}

TEST(TypedLook, BetweenTwoLinksIsInNone)
{
    LookCase("{|ab}").link(0, 1, "x").link(1, 2, "y").type(1, "z").is("(@x)a()z(@y)b");
    LookCase("{|ab}").link(0, 1, "x").link(1, 2, "x").type(1, "z").is("(@x)azb");
}

TEST(TypedLook, HasTheCommentsOfBothNeighbours)
{
    LookCase("{|ab}").comment(0, 2, 'p').comment(0, 1, 'q').type(1, "x").is("(cpq)a(cp)xb").hasRuns("{|a|xb}");
    LookCase("{|ab}").comment(0, 2, 'p').type(1, "x").is("(cp)axb").type(3, "y").is("(cp)axb()y");
    LookCase("{|ab}").comment(0, 2, 'p').type(0, "x").is("x(cp)ab");
    LookCase("{|ab}").link(0, 2).comment(1, 2, 'p').type(1, "x").is("(@x)ax(@xcp)b");
}

TEST(TypedLook, LinksEndWithTheirParagraph)
{
    LookCase("{|ab}{|cd}").link(0, 5).type(2, "x").is("(@x)ab()x/(@x)cd");
    LookCase("{|ab}{|cd}").link(0, 5).type(3, "x").is("(@x)ab/x(@x)cd");
    LookCase("{|ab}{|cd}").link(0, 5).type(2, "\n").is("(@x)ab//(@x)cd").hasRuns("{|ab}{}{|cd}");
    LookCase("{|ab}").link(0, 2).type(0, "\n").is("/(@x)ab").hasRuns("{}{|ab}");
    LookCase("{|ab}").link(0, 2).type(0, "\nx").is("/x(@x)ab").hasRuns("{}{|x|ab}");
    LookCase("{|ab}").link(0, 2).type(2, "x\ny").is("(@x)ab()x/y");
}

TEST(TypedLook, OfAReplacementIsThatOfTheFirstCharacterReplaced)
{
    LookCase("{|abcd}").set(1, 3, makeBold()).replace(1, 3, "x").is("a(b)x()d");
    LookCase("{|abcd}").set(1, 3, makeBold()).replace(0, 3, "x").is("xd");
}

TEST(TypedLook, OfAReplacementHasLinksThatTheNeighboursShare)
{
    LookCase("{|abcd}").link(0, 4).replace(1, 3, "x").is("(@x)axd").hasRuns("{|ax[..]d}");
    LookCase("{|abcd}").link(1, 3).replace(1, 3, "x").is("axd");
    LookCase("{|abcd}").link(1, 3).set(1, 3, makeBold()).replace(1, 3, "x").is("a(b)x()d");
    LookCase("{|abcd}").link(1, 3).replace(1, 2, "x").is("ax(@x)c()d");
    LookCase("{|abcd}").link(1, 3).replace(2, 3, "x").is("a(@x)b()xd");
    LookCase("{|abcd}").link(0, 4).set(1, 3, LookChange::setLink(nullptr)).replace(1, 3, "x").is("(@x)axd");
    LookCase("{|ab}{|cd}").link(0, 5).replace(1, 4, "x").is("(@x)axd");
    LookCase("{|ab}").link(0, 2).replace(0, 2, "x").is("x");
    LookCase("{|abcd}").comment(0, 4, 'p').comment(1, 3, 'q').replace(1, 3, "x").is("(cp)axd");
}

TEST(TypedLook, OfReplacedParagraphsIsThatOfTheirFirstCharacter)
{
    LookCase("{|ab}#").set(0, 2, makeBold()).replace(0, 3, "x\n").is("(b)x/#");
    LookCase("{|ab}#").set(0, 2, makeBold()).link(0, 2).replace(0, 3, "x\n").is("(b)x/#");
    LookCase("{|ab}{|cd}#").set(3, 5, makeBold()).replace(3, 6, "x\ny\n").is("ab/(b)x/(b)y/#");
}

TEST(TypedLook, InAnEmptyParagraphIsThatOfItsMarkWithoutLinks)
{
    DocumentUnderTest edited(TestSupport::makeText("{}"));
    edited._editor.setParagraphLook(0, 0, LookChange::setLink(makeLink("x")));
    edited._editor.setParagraphLook(0, 0, makeBold());
    edited._editor.replace(0, 0, "ab");
    EXPECT_EQ("(b)ab", printLooks(edited.getText()));
}

} // namespace

} // namespace Zem::CollaborationSession
