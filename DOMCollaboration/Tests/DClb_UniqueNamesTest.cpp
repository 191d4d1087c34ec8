#include "DClb_Utils.h"

#include "TS_Assertions.h"

#include "DOM_NamedTableStyle.h"
#include "DOM_NamedTextStyle.h"
#include "DOM_Paragraph.h"
#include "DOM_Table.h"
#include "DOM_UUIDContainer.h"

#include <boost/regex.hpp>

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

namespace
{

using Names = std::vector<std::string>;

/// The three kinds of container, made of names.
template<class Style>
struct Styles
{
    explicit Styles(const Names& names)
    {
        for (const std::string& name : names)
        {
            Style style;
            style.setName(name);
            _container.insert(std::move(style));
        }
    }

    const DOM::UUIDContainer<Style>& get() const
    {
        return _container;
    }

    DOM::UUIDContainer<Style> _container;
};

struct Worksheets
{
    explicit Worksheets(const Names& names)
        : _view(_blocks)
    {
        for (const std::string& name : names)
        {
            auto table = std::make_unique<DOM::Table>(1, 1);
            table->setName(name);
            _blocks.push_back(std::move(table));
        }
    }

    const ReadonlyVector<DOM::Blocks>& get() const
    {
        return _view;
    }

    DOM::Blocks _blocks;
    ReadonlyVector<DOM::Blocks> _view;
};

template<class Container>
class UniqueNamesTest : public testing::Test
{
protected:
    /// The new name; "unchanged" if none is needed.
    static std::string resolve(const Names& names, const std::string& name)
    {
        const Container container(names);
        std::string newName = "unchanged";
        const bool isTaken = Utils::getNewUniqueNameIfNeeded(container.get(), name, newName);
        EXPECT_EQ(isTaken, newName != "unchanged");
        return newName;
    }

    static std::string makeUnique(const Names& names, const std::string& prefix, const std::string& suffix)
    {
        return Utils::getUniqueName(Container(names).get(), prefix, suffix);
    }

    static std::vector<unsigned long> collect(const Names& names, const std::string& prefix, const std::string& suffix)
    {
        return Utils::collectNameIndices(Container(names).get(), prefix, suffix);
    }
};

using Containers = testing::Types<Styles<DOM::NamedTextStyle>, Styles<DOM::NamedTableStyle>, Worksheets>;
TYPED_TEST_SUITE(UniqueNamesTest, Containers);

} // namespace

TYPED_TEST(UniqueNamesTest, AFreeNameStays)
{
    EXPECT_EQ("unchanged", this->resolve({"Title", "Body"}, "Quote"));
    EXPECT_EQ("unchanged", this->resolve({"title"}, "Title")) << "case counts";
    EXPECT_EQ("unchanged", this->resolve({}, "Title"));
}

TYPED_TEST(UniqueNamesTest, ATakenNameGetsTheNumberBehindTheHighest)
{
    EXPECT_EQ("Title_conflict_1", this->resolve({"Title"}, "Title"));
    EXPECT_EQ("Title_conflict_2", this->resolve({"Title", "Title_conflict_1"}, "Title"));
    EXPECT_EQ("Title_conflict_8", this->resolve({"Title", "Title_conflict_1", "Title_conflict_7"}, "Title"));
    EXPECT_EQ("Title_conflict_11", this->resolve({"Title", "Title_conflict_9", "Title_conflict_10"}, "Title"));
}

TYPED_TEST(UniqueNamesTest, NumbersWithALeadingZeroDoNotCount)
{
    EXPECT_EQ("Title_conflict_1", this->resolve({"Title", "Title_conflict_07", "Title_conflict_0"}, "Title"));
}

TYPED_TEST(UniqueNamesTest, AConflictNameIsANameLikeAnyOther)
{
    EXPECT_EQ("Title_conflict_1_conflict_1", this->resolve({"Title_conflict_1"}, "Title_conflict_1"));
}

TYPED_TEST(UniqueNamesTest, MetacharactersOfANameStandForThemselves)
{
    EXPECT_EQ("a.b_conflict_1", this->resolve({"a.b", "axb_conflict_5"}, "a.b"));
    const std::string wild = "50% (a+b)*[c]{d}|^$?\\";
    EXPECT_EQ(wild + "_conflict_1", this->resolve({wild}, wild));
    EXPECT_EQ(wild + "_conflict_3", this->resolve({wild, wild + "_conflict_2", "50% (ab)c_conflict_9"}, wild));
}

TYPED_TEST(UniqueNamesTest, TwoElementsOfOneNameDoNotDisturb)
{
    EXPECT_EQ("Title_conflict_1", this->resolve({"Title", "Title"}, "Title"));
}

TYPED_TEST(UniqueNamesTest, ANumberThatIsTooLongIsNotCounted)
{
    EXPECT_EQ("Title_conflict_3",
              this->resolve({"Title", "Title_conflict_99999999999999999999999", "Title_conflict_2"}, "Title"));
}

TYPED_TEST(UniqueNamesTest, AnEmptyNameFails)
{
    EXPECT_ASSERTION(this->resolve({}, ""), "!name.empty()");
}

TYPED_TEST(UniqueNamesTest, AFreshNameEndsInTheNextNumber)
{
    EXPECT_EQ("Sheet1", this->makeUnique({}, "Sheet", ""));
    EXPECT_EQ("Sheet11", this->makeUnique({"Sheet1", "Sheet2", "Sheet10"}, "Sheet", ""));
    EXPECT_EQ("1", this->makeUnique({}, "", ""));
    EXPECT_EQ("Table  copy1", this->makeUnique({"Table 4 copy"}, "Table ", " copy"));
    EXPECT_EQ("Sheet1", this->makeUnique({"Sheet"}, "Sheet", "")) << "the prefix alone has no number";
}

TYPED_TEST(UniqueNamesTest, NumbersAreCollectedInAscendingOrder)
{
    EXPECT_EQ((std::vector<unsigned long>{2, 10, 30}),
              this->collect({"S30", "S2", "S10", "T4", "S", "S05", "S7x"}, "S", ""));
}

TYPED_TEST(UniqueNamesTest, TheNumberBeginsInThePrefixIfThatEndsInDigits)
{
    EXPECT_EQ((std::vector<unsigned long>{123}), this->collect({"Sheet123"}, "Sheet1", ""));
}

TYPED_TEST(UniqueNamesTest, ASuffixIsAPieceOfARegularExpression)
{
    EXPECT_EQ((std::vector<unsigned long>{4, 5}), this->collect({"Ta4", "Tb5", "Tc6"}, "T", "[ab]"));
    EXPECT_THROW(this->collect({}, "T", "("), boost::regex_error);
}

TEST(UniqueNames, AStyleWithoutANameFails)
{
    DOM::UUIDContainer<DOM::NamedTextStyle> container;
    container.insert(DOM::NamedTextStyle());
    std::string newName;
    EXPECT_ASSERTION(Utils::getNewUniqueNameIfNeeded(container, "Title", newName), "opt");
    EXPECT_ASSERTION(Utils::getUniqueName(container, "Title", ""), "opt");
}

TEST(UniqueNames, APredefinedNameIsTakenByItsText)
{
    DOM::UUIDContainer<DOM::NamedTextStyle> container;
    DOM::NamedTextStyle style;
    style.setName(DOM::PredefinedStyleName::Title);
    const std::string text = DOM::resolveNamedStyleName(style).value();
    container.insert(std::move(style));
    std::string newName;
    EXPECT_TRUE(Utils::getNewUniqueNameIfNeeded(container, text, newName));
    EXPECT_EQ(text + "_conflict_1", newName);
}

TEST(UniqueNames, ABlockThatIsNoTableIsABadCast)
{
    DOM::Blocks blocks;
    blocks.push_back(std::make_unique<DOM::Paragraph>());
    std::string newName;
    EXPECT_THROW(Utils::getNewUniqueNameIfNeeded(ReadonlyVector<DOM::Blocks>(blocks), "Sheet", newName), std::bad_cast);
    blocks[0] = nullptr;
    EXPECT_ASSERTION(Utils::getNewUniqueNameIfNeeded(ReadonlyVector<DOM::Blocks>(blocks), "Sheet", newName),
                     "plainPtr");
}

} // namespace Zem::DOMCollaboration
