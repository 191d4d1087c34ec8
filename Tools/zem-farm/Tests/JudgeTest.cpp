// What people meant, as the judge knows it: stories in the shortest words. `*..*` is bold, `_.._` italic, `[..]`
// linked, `^` in front of a paragraph that is centred, and `/` a paragraph's end. No two letters are alike.

#include "Judge.h"

#include <gtest/gtest.h>

namespace ZemFarm
{

namespace
{

ShownText read(const std::string& notation)
{
    ShownText text;
    Fields fields;
    Fields* paragraph = &text._firstParagraph;
    const auto toggle = [&](const char* field)
    {
        if (fields.erase(field) == 0)
        {
            fields[field] = "there";
        }
    };
    for (const char letter : notation)
    {
        switch (letter)
        {
        case '*':
            toggle("bold");
            break;
        case '_':
            toggle("italic");
            break;
        case '[':
        case ']':
            toggle("link");
            break;
        case '^':
            (*paragraph)["centred"] = "there";
            break;
        case '/':
            text._characters.push_back({"\n", {}});
            paragraph = nullptr;
            break;
        default:
            text._characters.push_back({std::string(1, letter), fields});
        }
        if (letter == '/')
        {
            paragraph = &text._characters.back()._fields;
        }
    }
    return text;
}

/// People who see one text, and do things before anything of it is known to the others.
class Court
{
public:
    explicit Court(const std::string& text)
        : _judge(read(text))
        , _known(read(text))
    {
    }

    Judge::Deed types(std::size_t offset, const std::string& text)
    {
        return replaces(offset, offset, text);
    }

    Judge::Deed deletes(std::size_t begin, std::size_t end)
    {
        return replaces(begin, end, "");
    }

    Judge::Deed replaces(std::size_t begin, std::size_t end, const std::string& text)
    {
        std::vector<std::string> inserted;
        for (const char letter : text)
        {
            inserted.emplace_back(1, letter == '/' ? '\n' : letter);
        }
        return add(_judge.replace(_known, _view, {begin, end, inserted}));
    }

    Judge::Deed sets(std::size_t begin, std::size_t end, const std::string& field, const std::string& value = "there")
    {
        return add(_judge.set(_known, _view, {begin, end, field == "centred", {{field, value}}}));
    }

    Judge::Deed undoes(Judge::Deed deed)
    {
        return add(_judge.undo(_view, deed));
    }

    /// All of that comes to the server in an order, and everybody sees what is meant.
    Court& plays(const std::vector<Judge::Deed>& order, const std::string& text)
    {
        for (const Judge::Deed deed : order)
        {
            _judge.play(deed);
        }
        _known = read(text);
        _judge.compare(_known);
        _view.assign(_count, true);
        return *this;
    }

private:
    Judge::Deed add(Judge::Deed deed)
    {
        _count = deed + 1;
        return deed;
    }

    Judge _judge;
    ShownText _known;
    Judge::View _view;
    std::size_t _count = 0;
};

template<class Make>
void expectInBothOrders(const std::string& before, Make make, const std::string& after)
{
    for (const bool isTurned : {false, true})
    {
        Court court(before);
        const auto [one, other] = make(court);
        EXPECT_NO_THROW(court.plays(isTurned ? std::vector{other, one} : std::vector{one, other}, after));
    }
}

using Both = std::pair<Judge::Deed, Judge::Deed>;

TEST(Judge, AddsUpOneFieldThatTwoSet)
{
    expectInBothOrders(
        "abcdef", [](Court& court) { return Both(court.sets(0, 4, "bold"), court.sets(2, 6, "bold")); }, "*abcdef*");
    expectInBothOrders(
        "abcdef", [](Court& court) { return Both(court.sets(0, 4, "bold"), court.sets(2, 6, "italic")); },
        "*ab_cd*ef_");
}

TEST(Judge, LetsALookHoldBehindAnEnter)
{
    expectInBothOrders(
        "abcdef", [](Court& court) { return Both(court.sets(0, 6, "bold"), court.types(3, "/")); }, "*abc*/*def*");
    expectInBothOrders(
        "abcdef", [](Court& court) { return Both(court.sets(0, 6, "centred"), court.types(3, "/")); }, "^abc/^def");
}

TEST(Judge, LeavesWhatIsTypedInFrontOfAStretch)
{
    expectInBothOrders(
        "abcdef", [](Court& court) { return Both(court.sets(3, 6, "bold"), court.types(3, "X")); }, "abcX*def*");
    expectInBothOrders(
        "abcdef", [](Court& court) { return Both(court.sets(0, 6, "bold"), court.types(3, "X")); }, "*abcXdef*");
}

TEST(Judge, TakesEitherLookWhereAStretchEnds)
{
    for (const char* after : {"*abcX*def", "*abc*Xdef"})
    {
        expectInBothOrders(
            "abcdef", [](Court& court) { return Both(court.sets(0, 3, "bold"), court.types(3, "X")); }, after);
    }
}

TEST(Judge, KeepsWhatIsTypedInADeletedText)
{
    expectInBothOrders(
        "word", [](Court& court) { return Both(court.deletes(0, 4), court.types(1, "X")); }, "X");
    expectInBothOrders(
        "one/twx", [](Court& court) { return Both(court.deletes(0, 7), court.types(5, "X")); }, "X");
}

TEST(Judge, PutsInFrontWhatCameEarlier)
{
    Court court("ab");
    const auto one = court.types(1, "X");
    const auto other = court.types(1, "Y");
    EXPECT_NO_THROW(court.plays({other, one}, "aYXb"));
    Court turned("ab");
    turned.types(1, "X");
    turned.types(1, "Y");
    EXPECT_THROW(turned.plays({1, 0}, "aXYb"), Misjudged);
}

TEST(Judge, TakesEitherOrderBesideWhatCameBack)
{
    for (const char* after : {"aXbc", "abXc"})
    {
        Court court("abc");
        const auto deleted = court.deletes(1, 2);
        court.plays({deleted}, "ac");
        const auto undo = court.undoes(deleted);
        const auto typed = court.types(1, "X");
        EXPECT_NO_THROW(court.plays({undo, typed}, after));
        EXPECT_THROW(court.plays({}, after == std::string("aXbc") ? "abXc" : "aXbc"), Misjudged);
    }
}

TEST(Judge, KeepsTogetherWhatWasTypedInOneGo)
{
    Court court("abc");
    const auto deleted = court.deletes(1, 2);
    court.plays({deleted}, "ac");
    const auto undo = court.undoes(deleted);
    const auto typed = court.types(1, "XY");
    EXPECT_THROW(court.plays({undo, typed}, "aXbYc"), Misjudged);
}

TEST(Judge, DeletesNothingThatNobodyDeleted)
{
    Court court("abc");
    EXPECT_THROW(court.plays({}, "ac"), Misjudged);
    EXPECT_THROW(court.plays({}, "abdc"), Misjudged);
    EXPECT_THROW(court.plays({}, "acb"), Misjudged);
    EXPECT_THROW(court.plays({}, "a/bc"), Misjudged);
    EXPECT_THROW(court.plays({}, "a*b*c"), Misjudged);
    EXPECT_THROW(court.plays({}, "^abc"), Misjudged);
}

TEST(Judge, UndoesADeletionUnlessSomebodyElseDeletedItToo)
{
    Court court("abcd");
    const auto one = court.deletes(0, 3);
    const auto other = court.deletes(2, 4);
    court.plays({one, other}, "");
    const auto undo = court.undoes(one);
    EXPECT_NO_THROW(court.plays({undo}, "ab"));
    const auto redo = court.undoes(undo);
    EXPECT_NO_THROW(court.plays({redo}, ""));
}

TEST(Judge, UndoesALookWhereNobodyHasSetItSince)
{
    Court court("abcd");
    const auto one = court.sets(0, 4, "bold");
    const auto other = court.sets(2, 3, "bold", "more");
    court.plays({one}, "*abcd*");
    const auto undo = court.undoes(one);
    EXPECT_THROW(court.plays({other, undo}, "abcd"), Misjudged);
}

TEST(Judge, UndoesALookOnWhatWasTypedInIt)
{
    Court court("abcd");
    const auto one = court.sets(0, 4, "bold");
    const auto typed = court.types(2, "X/Y");
    court.plays({one, typed}, "*abX*/*Ycd*");
    const auto undo = court.undoes(one);
    EXPECT_NO_THROW(court.plays({undo}, "abX/Ycd"));
}

TEST(Judge, LetsLinksGrowNowhere)
{
    Court court("[ab]");
    const auto inside = court.types(1, "X");
    const auto behind = court.types(2, "Y");
    EXPECT_NO_THROW(court.plays({inside, behind}, "[aXb]Y"));
}

TEST(Judge, JoinsParagraphsToTheFirst)
{
    Court court("ab/^cd");
    const auto joined = court.deletes(2, 3);
    EXPECT_NO_THROW(court.plays({joined}, "abcd"));
    const auto undo = court.undoes(joined);
    EXPECT_NO_THROW(court.plays({undo}, "ab/^cd"));
}

TEST(Judge, TakesAWholeParagraphWithItsLook)
{
    Court court("ab/^cd");
    const auto deleted = court.deletes(0, 3);
    EXPECT_NO_THROW(court.plays({deleted}, "^cd"));
    const auto typed = court.types(1, "/");
    EXPECT_NO_THROW(court.plays({typed}, "^c/^d"));
}

TEST(Judge, SetsTheParagraphThatOthersJoined)
{
    expectInBothOrders(
        "ab/cd", [](Court& court) { return Both(court.sets(3, 4, "centred"), court.deletes(2, 3)); }, "^abcd");
}

} // namespace

} // namespace ZemFarm
