#pragma once

#include <type_traits>
#include <utility>
#include <variant>

namespace Zem::DOMCollaboration
{

/// An object of one of the classes `Kinds`, held by value and seen as their common base: polymorphism without the heap.
template<class Base, class... Kinds>
class InPlacePolymorphic
{
public:
    template<class Kind>
    requires(std::is_same_v<std::remove_cvref_t<Kind>, Kinds> || ...) InPlacePolymorphic(Kind&& object)
        : _object(std::forward<Kind>(object))
    {
    }

    Base& operator*()
    {
        return std::visit([](auto& object) -> Base& { return object; }, _object);
    }

    const Base& operator*() const
    {
        return std::visit([](const auto& object) -> const Base& { return object; }, _object);
    }

    Base* operator->()
    {
        return &**this;
    }

    const Base* operator->() const
    {
        return &**this;
    }

private:
    std::variant<Kinds...> _object;
};

} // namespace Zem::DOMCollaboration
