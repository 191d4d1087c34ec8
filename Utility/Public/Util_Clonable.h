#pragma once

#include <memory>

namespace Zem
{

/// The base of polymorphic classes that can be copied through a pointer to `Base`.
template<class Base>
class Clonable
{
public:
    virtual ~Clonable() = default;

    virtual void cloneTo(std::shared_ptr<Base>& target) const = 0;
    virtual void cloneTo(std::unique_ptr<Base>& target) const = 0;

protected:
    Clonable() = default;
    Clonable(const Clonable&) = default;
    Clonable(Clonable&&) noexcept = default;
    Clonable& operator=(const Clonable&) = default;
    Clonable& operator=(Clonable&&) noexcept = default;
};

/// A deep copy of `object`, of its dynamic type.
template<class Base>
std::unique_ptr<Base> cloneToUnique(const Clonable<Base>& object)
{
    std::unique_ptr<Base> clone;
    object.cloneTo(clone);
    return clone;
}

} // namespace Zem
