#pragma once

#include "Util_Clonable.h"
#include "Util_Export.h"

#include <memory>

namespace Zem::DOM
{

/// The closed list of what a frame can hold.
enum class GraphicalObjectKind : unsigned char
{
    Chart,
    Image
};

/// The polymorphic base of what a frame holds; objects compare by value, whatever their kinds.
class ZEM_EXPORT GraphicalObject : public Clonable<GraphicalObject>
{
public:
    ~GraphicalObject() override;

    GraphicalObjectKind getKind() const
    {
        return _kind;
    }

    friend bool operator==(const GraphicalObject& left, const GraphicalObject& right)
    {
        return left._kind == right._kind && left.isEqualToSameKind(right);
    }

protected:
    explicit GraphicalObject(GraphicalObjectKind kind)
        : _kind(kind)
    {
    }

    GraphicalObject(const GraphicalObject&) = default;
    GraphicalObject(GraphicalObject&&) noexcept = default;
    GraphicalObject& operator=(const GraphicalObject&) = default;
    GraphicalObject& operator=(GraphicalObject&&) noexcept = default;

private:
    /// Requires: `other` is of the dynamic type of this object.
    virtual bool isEqualToSameKind(const GraphicalObject& other) const = 0;

    GraphicalObjectKind _kind;
};

/// Implements what every kind of object does alike. `Derived` has an `operator==` of its own.
template<class Derived, GraphicalObjectKind kind>
class GraphicalObjectImpl : public GraphicalObject
{
public:
    void cloneTo(std::shared_ptr<GraphicalObject>& target) const override
    {
        target = std::make_shared<Derived>(static_cast<const Derived&>(*this));
    }

    void cloneTo(std::unique_ptr<GraphicalObject>& target) const override
    {
        target = std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }

protected:
    GraphicalObjectImpl()
        : GraphicalObject(kind)
    {
    }

private:
    bool isEqualToSameKind(const GraphicalObject& other) const override
    {
        return static_cast<const Derived&>(*this) == static_cast<const Derived&>(other);
    }
};

} // namespace Zem::DOM
