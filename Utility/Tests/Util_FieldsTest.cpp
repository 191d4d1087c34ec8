#include "Util_Fields.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

using namespace Zem;

namespace
{

struct Base
{
    static constexpr auto fields()
    {
        return std::make_tuple(field("_first", &Base::_first));
    }

    int _first = 1;
};

struct Derived : Base
{
    static constexpr auto fields()
    {
        return std::tuple_cat(Base::fields(), std::make_tuple(field("_second", &Derived::_second)));
    }

    int _second = 2;
};

struct Heir : Base
{
    int _forgotten = 0;
};

struct Tag
{
    static constexpr auto fields()
    {
        return std::make_tuple();
    }
};

struct HeirOfTag : Tag
{
    int _forgotten = 0;
};

struct Plain
{
};

} // namespace

TEST(Fields, AreNamedInOrderTheBasesFirst)
{
    std::vector<std::string> names;
    Derived derived;
    forEachField<Derived>(
        [&](const auto& row)
        {
            names.emplace_back(row._name);
            derived.*(row._member) += 10;
        });
    EXPECT_EQ((std::vector<std::string>{"_first", "_second"}), names);
    EXPECT_EQ(11, derived._first);
    EXPECT_EQ(12, derived._second);
}

TEST(Fields, StopAtTheFirstForWhichThePredicateFails)
{
    int asked = 0;
    const auto refuse = [&](const auto&) { return ++asked > 5; };
    EXPECT_FALSE(allFields<Derived>(refuse));
    EXPECT_EQ(1, asked);
    EXPECT_TRUE(allFields<Derived>([](const auto&) { return true; }));
}

TEST(Fields, AnInheritedListIsNone)
{
    static_assert(HasFields<Base>);
    static_assert(HasFields<Derived>);
    static_assert(!HasFields<Heir>);
    static_assert(!HasFields<Plain>);
    static_assert(!HasFields<int>);
}

TEST(Fields, AnEmptyListIsThatOfAnEmptyClass)
{
    static_assert(HasFields<Tag>);
    static_assert(!HasFields<HeirOfTag>);
    EXPECT_TRUE(allFields<Tag>([](const auto&) { return false; }));
}
