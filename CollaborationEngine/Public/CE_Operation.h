#pragma once

/// The root of the operation model: what every operation is, and the operations that aren't aimed at a node.

#include "CE_Shadows.h"

#include "Util_Clonable.h"
#include "Util_Export.h"
#include "Util_Visitor.h"

#include <boost/optional.hpp>

#include <memory>
#include <utility>
#include <vector>

namespace Zem::CollaborationEngine
{

class AtomicOperation;
class BaseOperationTransformer;
class CompositeOperation;
class EmptyOperation;
class HierarchicalOperation;
class Operation;
class OperationExecutor;
class ShadowedOperation;

using OperationUPtr = std::unique_ptr<Operation>;

/// A change of a document, not yet bound to one: it can be executed, reversed, transformed and sent. It has an id once
/// it is given one; a transformed or changed form of it keeps that id, so that positions find it again.
class ZEM_EXPORT Operation
{
public:
    using Kinds = TypeList<AtomicOperation, CompositeOperation, EmptyOperation, ShadowedOperation>;
    using VisitorType = Visitor<Kinds>;
    using ConstVisitorType = Visitor<
        TypeList<const AtomicOperation, const CompositeOperation, const EmptyOperation, const ShadowedOperation>>;
    using Id = unsigned long;

    virtual ~Operation();

    virtual void cloneTo(std::shared_ptr<Operation>& target) const = 0;
    virtual void cloneTo(std::unique_ptr<Operation>& target) const = 0;

    /// The form of this operation that does nothing but still stands for it, such as the leaving of tombstones for a
    /// marking; an `EmptyOperation` where there is none.
    virtual OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const = 0;

    /// The id, if it has been given one.
    virtual boost::optional<Id> getID() const;

    /// Gives the operation the id `nextID`, and increases that, unless it has one.
    virtual void setIDIfNeeded(unsigned long& nextID);

    /// Runs this operation and gives back what really happened: the operation itself, with the data that it captured,
    /// or what the document made of it.
    virtual OperationUPtr execute(OperationExecutor& executor) && = 0;

    /// Takes over the id of `other`, if that has one and this operation has none.
    virtual void inheritIDIfPossibleImpl(const Operation& other);

    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;

protected:
    Operation() = default;
    Operation(const Operation&) = default;
    Operation(Operation&&) noexcept = default;
    Operation& operator=(const Operation&) = default;
    Operation& operator=(Operation&&) noexcept = default;

private:
    boost::optional<Id> _id;
};

/// A deep copy of an operation of any kind. (The items and values that it carries are immutable, and shared.)
ZEM_EXPORT OperationUPtr cloneOperation(const Operation& operation);

/// Runs `operation` on `executor` in place, and gives back what really happened.
ZEM_EXPORT OperationUPtr executeOwned(OperationUPtr operation, OperationExecutor& executor);

/// Implements what every concrete operation does alike: cloning, running, accepting a visitor as a `Kind`.
template<class Derived, class Base, class Kind>
class OperationImpl : public Base
{
public:
    using Base::accept;
    using Base::Base;
    using Base::cloneTo;

    void cloneTo(std::shared_ptr<Operation>& target) const override
    {
        target = std::make_shared<Derived>(self());
    }

    void cloneTo(std::unique_ptr<Operation>& target) const override
    {
        target = std::make_unique<Derived>(self());
    }

    OperationUPtr execute(OperationExecutor& executor) && override
    {
        return executeOwned(std::make_unique<Derived>(std::move(static_cast<Derived&>(*this))), executor);
    }

    void accept(Operation::VisitorType& visitor) override
    {
        visitor.visit(static_cast<Kind&>(*this));
    }

    void accept(Operation::ConstVisitorType& visitor) const override
    {
        visitor.visit(static_cast<const Kind&>(*this));
    }

protected:
    const Derived& self() const
    {
        return static_cast<const Derived&>(*this);
    }
};

/// An operation that does nothing. An executor hands one back as the changed operation when the operation that came in
/// is to have no effect.
class ZEM_EXPORT EmptyOperation final : public OperationImpl<EmptyOperation, Operation, EmptyOperation>
{
public:
    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;
};

enum class CompositeKind : unsigned char
{
    /// Parts that merely follow each other.
    Plain,
    /// One restoring with the operations that had been shadowed until then: first what restores, then these, in their
    /// order. Shadowed operations that came after these know them, and don't meet them again.
    Restoring,
    /// The same, where the document made something else of it. Shadowed operations that came after these were made for
    /// what had been planned, and are transformed against the difference to what happened; if that isn't known, they
    /// find no place any more, and are shadowed for good.
    ChangedRestoring
};

/// Tells of a changed restoring what had been planned, and how that differs from what happened. Operations that were
/// made for the plan are transformed by it.
struct ZEM_EXPORT ChangeOfRestoring
{
    /// A plan that isn't known.
    ChangeOfRestoring() = default;

    /// Fails: "plainPtr" when one of them is null.
    ChangeOfRestoring(OperationUPtr planned, OperationUPtr difference);
    ChangeOfRestoring(const ChangeOfRestoring& other);
    ChangeOfRestoring(ChangeOfRestoring&&) noexcept = default;
    ChangeOfRestoring& operator=(ChangeOfRestoring&&) noexcept = default;

    bool isKnown() const
    {
        return _planned != nullptr;
    }

    /// Runs in the state in which what happened ran.
    OperationUPtr _planned;
    /// Leads from the state behind what was planned to the one behind what happened. No document executes it.
    OperationUPtr _difference;
};

/// Several operations in the order in which they run, each in the coordinates that those before it leave. It isn't
/// atomic: the executor unpacks it.
class ZEM_EXPORT CompositeOperation final : public OperationImpl<CompositeOperation, Operation, CompositeOperation>
{
public:
    CompositeOperation() = default;

    /// Fails: "plainPtr" when a part is null; "kind == CompositeKind::Plain || !_parts.empty()" for a restoring that
    /// has no part, and so restores nothing.
    explicit CompositeOperation(std::vector<OperationUPtr> parts, CompositeKind kind = CompositeKind::Plain);

    /// A `ChangedRestoring`, whose parts are what happened. Fails: as above.
    CompositeOperation(std::vector<OperationUPtr> parts, ChangeOfRestoring change);
    CompositeOperation(const CompositeOperation& other);
    CompositeOperation(CompositeOperation&&) noexcept = default;
    CompositeOperation& operator=(const CompositeOperation&) = delete;

    const std::vector<OperationUPtr>& getParts() const
    {
        return _parts;
    }

    std::vector<OperationUPtr>& getParts()
    {
        return _parts;
    }

    CompositeKind getKind() const
    {
        return _kind;
    }

    /// Whether this is a restoring with what it brings along.
    bool bringsShadowedAlong() const
    {
        return _kind != CompositeKind::Plain;
    }

    /// Not known unless the operation is a changed restoring.
    const ChangeOfRestoring& getChange() const
    {
        return _change;
    }

    ChangeOfRestoring& getChange()
    {
        return _change;
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

    /// Also gives ids to the parts that have none.
    void setIDIfNeeded(unsigned long& nextID) override;

    /// Also hands the id on to the parts that have none.
    void inheritIDIfPossibleImpl(const Operation& other) override;

private:
    std::vector<OperationUPtr> _parts;
    CompositeKind _kind = CompositeKind::Plain;
    ChangeOfRestoring _change;
};

/// One operation out of several: an `EmptyOperation` for none, the operation itself for one, else a composite.
/// Parts that are composite are taken apart, but for those that bring shadowed operations along; empty ones are
/// dropped.
/// Fails: "plainPtr" when a part is null.
ZEM_EXPORT OperationUPtr makeOperationFromParts(std::vector<OperationUPtr> parts);

/// What became of `original`, bearing the id of that, if it has one. What has another id of its own, as the last part
/// of a composite operation has, keeps that inside a composite of one part: positions find what they lay in by it.
ZEM_EXPORT OperationUPtr withIDOf(const Operation& original, OperationUPtr whatBecameOfIt);

/// An operation that can't be unpacked further.
class ZEM_EXPORT AtomicOperation : public Operation
{
public:
    using Operation::cloneTo;

    virtual void cloneTo(std::shared_ptr<AtomicOperation>& target) const = 0;
    virtual void cloneTo(std::unique_ptr<AtomicOperation>& target) const = 0;

    /// This operation as one that is aimed at a node; null if it isn't. It costs less than a dynamic cast.
    virtual const HierarchicalOperation* getIfHierarchical() const;
};

/// An operation that another one keeps from having an effect: its target was removed, or, for a restoring, other
/// deletions hold the target down. It holds the original, in the coordinates of now, and does nothing until nothing
/// shadows it any more.
class ZEM_EXPORT ShadowedOperation final : public OperationImpl<ShadowedOperation, Operation, ShadowedOperation>
{
public:
    /// Without `shadows` it is shadowed for good. Requires: `original` isn't null ("plainPtr").
    explicit ShadowedOperation(std::unique_ptr<AtomicOperation> original, Shadows shadows = {});
    ShadowedOperation(const ShadowedOperation& other);
    ShadowedOperation(ShadowedOperation&&) noexcept = default;
    ShadowedOperation& operator=(const ShadowedOperation&) = delete;

    const AtomicOperation& getOriginal() const
    {
        return *_original;
    }

    AtomicOperation& getOriginal()
    {
        return *_original;
    }

    const Shadows& getShadows() const
    {
        return _shadows;
    }

    Shadows& getShadows()
    {
        return _shadows;
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

private:
    std::unique_ptr<AtomicOperation> _original;
    Shadows _shadows;
};

} // namespace Zem::CollaborationEngine
