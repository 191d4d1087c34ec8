#pragma once

#include "CE_Operation.h"
#include "CE_OperationNodeAddress.h"

#include <typeinfo>

namespace Zem::CollaborationEngine
{

/// An atomic operation aimed at one node: the node's address, and its type, the operand type.
class ZEM_EXPORT HierarchicalOperation : public AtomicOperation
{
public:
    /// By the kind of the node. Each root of a family names its own as `family`.
    enum class Family
    {
        List,
        ListMultirange,
        Map,
        SetProperty,
        Table
    };

    HierarchicalOperation(OperationNodeAddress nodeAddress, unsigned long nodeType)
        : _nodeAddress(std::move(nodeAddress))
        , _operandType(nodeType)
    {
    }

    const OperationNodeAddress& getNodeAddress() const
    {
        return _nodeAddress;
    }

    unsigned long getOperandType() const
    {
        return _operandType;
    }

    virtual void setNodeAddress(OperationNodeAddress nodeAddress)
    {
        _nodeAddress = std::move(nodeAddress);
    }

    using AtomicOperation::cloneTo;

    virtual Family getFamily() const = 0;

    const HierarchicalOperation* getIfHierarchical() const final
    {
        return this;
    }

private:
    OperationNodeAddress _nodeAddress;
    unsigned long _operandType;
};

/// The operation as one of a family, which costs less than a dynamic cast. Fails: `std::bad_cast` for one of another
/// family.
template<class Root>
const Root& castToFamily(const HierarchicalOperation& operation)
{
    if (operation.getFamily() != Root::family)
    {
        throw std::bad_cast();
    }
    return static_cast<const Root&>(operation);
}

/// Implements the rest of what concrete atomic operations do alike. `Root` is the root of the operation's family, which
/// declares the family's closed visitor and its `accept`.
template<class Derived, class Root>
class HierarchicalOperationImpl : public OperationImpl<Derived, Root, AtomicOperation>
{
public:
    using Base = OperationImpl<Derived, Root, AtomicOperation>;
    using Base::accept;
    using Base::Base;
    using Base::cloneTo;

    void cloneTo(std::shared_ptr<AtomicOperation>& target) const override
    {
        target = std::make_shared<Derived>(this->self());
    }

    void cloneTo(std::unique_ptr<AtomicOperation>& target) const override
    {
        target = std::make_unique<Derived>(this->self());
    }
};

/// As `HierarchicalOperationImpl`, for a family whose root declares a visitor of its own as `VisitorType`.
template<class Derived, class Root>
class FamilyOperationImpl : public HierarchicalOperationImpl<Derived, Root>
{
public:
    using Base = HierarchicalOperationImpl<Derived, Root>;
    using Base::accept;
    using Base::Base;

    void accept(typename Root::VisitorType& visitor) override
    {
        visitor.visit(static_cast<Derived&>(*this));
    }

    void accept(typename Root::ConstVisitorType& visitor) const override
    {
        visitor.visit(static_cast<const Derived&>(*this));
    }
};

} // namespace Zem::CollaborationEngine
