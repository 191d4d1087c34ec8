#include "Util_Visitor.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace Zem;

namespace
{

class Circle;
class Square;

class Shape
{
public:
    using VisitorType = Visitor<TypeList<Circle, Square>>;
    using ConstVisitorType = Visitor<TypeList<const Circle, const Square>>;

    virtual ~Shape() = default;
    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;
};

class Circle : public Shape
{
public:
    void accept(VisitorType& visitor) override
    {
        visitor.visit(*this);
    }

    void accept(ConstVisitorType& visitor) const override
    {
        visitor.visit(*this);
    }

    int _radius = 1;
};

class Square : public Shape
{
public:
    void accept(VisitorType& visitor) override
    {
        visitor.visit(*this);
    }

    void accept(ConstVisitorType& visitor) const override
    {
        visitor.visit(*this);
    }

    int _side = 1;
};

/// A shape that accepts a visitor and then calls none of its functions.
class Ghost : public Shape
{
public:
    void accept(VisitorType&) override
    {
    }

    void accept(ConstVisitorType&) const override
    {
    }
};

std::string nameOf(const Shape& shape)
{
    return visitWith<std::string>(
        shape, [](const Circle&) { return std::string("circle"); }, [](const Square&) { return "square"; });
}

} // namespace

TEST(Visitor, CallsTheFunctionOfTheDynamicType)
{
    EXPECT_EQ("circle", nameOf(Circle()));
    EXPECT_EQ("square", nameOf(Square()));
}

TEST(Visitor, MayChangeWhatItVisits)
{
    Circle circle;
    Shape& shape = circle;
    visitWith(
        shape, [](Circle& visited) { visited._radius = 9; }, [](Square&) { FAIL(); });
    EXPECT_EQ(9, circle._radius);
}

TEST(Visitor, OneCallableMayTakeAllTypes)
{
    const Square square;
    const Shape& shape = square;
    EXPECT_TRUE(
        visitWith<bool>(shape, [&](const auto& visited) { return static_cast<const void*>(&visited) == &shape; }));
}

TEST(Visitor, MayReturnWhatOnlyMoves)
{
    const Circle circle;
    const Shape& shape = circle;
    const auto result = visitWith<std::unique_ptr<int>>(shape, [](const auto&) { return std::make_unique<int>(3); });
    EXPECT_EQ(3, *result);
}

TEST(Visitor, AnObjectThatCallsNothingFails)
{
    Ghost ghost;
    EXPECT_ASSERTION(nameOf(ghost), "result");
    EXPECT_ASSERTION(visitWith(ghost, [](auto&) {}), "result");
}

TEST(Visitor, IsNamedByClassesOrByAListOfThem)
{
    class Counter : public Visitor<Circle, Square>
    {
    public:
        void visit(Circle&) override
        {
            ++_circles;
        }

        void visit(Square&) override
        {
            ++_squares;
        }

        int _circles = 0;
        int _squares = 0;
    };
    class CounterOfList : public Visitor<TypeList<Circle, Square>>
    {
    public:
        void visit(Circle&) override
        {
            ++_circles;
        }

        void visit(Square&) override
        {
        }

        int _circles = 0;
    };
    Counter counter;
    Circle circle;
    Square square;
    counter.visit(circle);
    counter.visit(square);
    counter.visit(square);
    EXPECT_EQ(1, counter._circles);
    EXPECT_EQ(2, counter._squares);
    CounterOfList counterOfList;
    circle.accept(counterOfList);
    EXPECT_EQ(1, counterOfList._circles);
}
