#pragma once

/// Closed double dispatch: a visitor has one function for each class of a fixed list, so that a class that is added
/// to the list breaks every visitor that has not yet decided what to do with it.
///
/// A visitable root declares `using VisitorType = Visitor<TypeList<A, B>>`, `using ConstVisitorType =
/// Visitor<TypeList<const A, const B>>` and two virtual `accept` functions. `visitWith` calls them with lambdas.

#include "Util_Assert.h"
#include "Util_TypeList.h"

#include <optional>
#include <type_traits>
#include <utility>

namespace Zem
{

namespace VisitorDetails
{

template<class T>
class VisitorOf
{
public:
    virtual void visit(T& visited) = 0;

protected:
    ~VisitorOf() = default;
};

} // namespace VisitorDetails

/// The abstract visitor of the classes `Types`; it may be named by the classes or by a `TypeList` of them.
template<class... Types>
class Visitor : public VisitorDetails::VisitorOf<Types>...
{
public:
    using VisitorDetails::VisitorOf<Types>::visit...;

protected:
    ~Visitor() = default;
};

template<class... Types>
class Visitor<TypeList<Types...>> : public Visitor<Types...>
{
protected:
    ~Visitor() = default;
};

/// Several callables as one overload set.
template<class... Callables>
struct Overloads : Callables...
{
    using Callables::operator()...;
};

template<class... Callables>
Overloads(Callables...) -> Overloads<Callables...>;

namespace VisitorDetails
{

/// Implements `visit` for each type of the list by passing the visited object to `Handler::handle`.
template<class Base, class Handler, class... Types>
class Forwarder : public Base
{
};

template<class Base, class Handler, class First, class... Rest>
class Forwarder<Base, Handler, First, Rest...> : public Forwarder<Base, Handler, Rest...>
{
public:
    using Base::visit;

    void visit(First& visited) final
    {
        static_cast<Handler*>(this)->handle(visited);
    }
};

template<class Result, class Callable, class VisitorType>
class CallableVisitor;

template<class Result, class Callable, class... Types>
class CallableVisitor<Result, Callable, Visitor<TypeList<Types...>>> final
    : public Forwarder<Visitor<TypeList<Types...>>, CallableVisitor<Result, Callable, Visitor<TypeList<Types...>>>,
                       Types...>
{
public:
    explicit CallableVisitor(Callable& callable)
        : _callable(callable)
    {
    }

    template<class T>
    void handle(T& visited)
    {
        if constexpr (std::is_void_v<Result>)
        {
            _callable(visited);
            _result = true;
        }
        else
        {
            _result.emplace(_callable(visited));
        }
    }

    Result takeResult()
    {
        auto& result = _result;
        ZEM_ASSERT(result);
        if constexpr (!std::is_void_v<Result>)
        {
            return std::move(*result);
        }
    }

private:
    Callable& _callable;
    std::optional<std::conditional_t<std::is_void_v<Result>, bool, Result>> _result;
};

template<class Visitable>
using VisitorOfVisitable = std::conditional_t<std::is_const_v<std::remove_reference_t<Visitable>>,
                                              typename std::remove_cvref_t<Visitable>::ConstVisitorType,
                                              typename std::remove_cvref_t<Visitable>::VisitorType>;

} // namespace VisitorDetails

/// Lets `visitable` accept a visitor made of `callables`, which together must take every class of its closed list,
/// and returns what the chosen one returned, as `Result`.
/// Fails: "result", if the object accepted without calling any of them.
template<class Result = void, class Visitable, class... Callables>
Result visitWith(Visitable& visitable, Callables... callables)
{
    Overloads<Callables...> overloads{std::move(callables)...};
    VisitorDetails::CallableVisitor<Result, Overloads<Callables...>, VisitorDetails::VisitorOfVisitable<Visitable>>
        visitor(overloads);
    visitable.accept(visitor);
    return visitor.takeResult();
}

} // namespace Zem
