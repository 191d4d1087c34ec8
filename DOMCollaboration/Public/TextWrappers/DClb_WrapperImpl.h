#pragma once

#include <memory>

namespace Zem::DOMCollaboration
{

/// Implements what the concrete wrappers of runs and blocks do alike: cloning and accepting a visitor.
template<class Derived, class Root>
class WrapperImpl : public Root
{
public:
    void cloneTo(std::shared_ptr<Root>& target) const override
    {
        std::unique_ptr<Root> clone;
        cloneTo(clone);
        target = std::move(clone);
    }

    void cloneTo(std::unique_ptr<Root>& target) const override
    {
        target = std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }

    void accept(typename Root::VisitorType& visitor) override
    {
        visitor.visit(static_cast<Derived&>(*this));
    }

    void accept(typename Root::ConstVisitorType& visitor) const override
    {
        visitor.visit(static_cast<const Derived&>(*this));
    }
};

} // namespace Zem::DOMCollaboration
