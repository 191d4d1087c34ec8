#pragma once

/// Which of the four kinds of operation an operation is, found through its visitor. Transformers ask this several times
/// for each pair, and a dynamic cast that fails compares the names of all base classes.

#include "CE_HierarchicalOperation.h"

#include "Util_Assert.h"

#include <type_traits>
#include <typeinfo>

namespace Zem::CollaborationEngine
{

template<class Kind>
class KindFinder final : public Operation::ConstVisitorType
{
public:
    void visit(const AtomicOperation& operation) override
    {
        take(operation);
    }

    void visit(const CompositeOperation& operation) override
    {
        take(operation);
    }

    void visit(const EmptyOperation& operation) override
    {
        take(operation);
    }

    void visit(const ShadowedOperation& operation) override
    {
        take(operation);
    }

    const Kind* getFound() const
    {
        return _found;
    }

private:
    template<class Visited>
    void take(const Visited& operation)
    {
        if constexpr (std::is_same_v<Visited, Kind>)
        {
            _found = &operation;
        }
    }

    const Kind* _found = nullptr;
};

/// The operation as a `Kind`, which is one of `Operation::Kinds`; null if it is of another kind.
template<class Kind>
const Kind* getIf(const Operation& operation)
{
    KindFinder<Kind> finder;
    operation.accept(finder);
    return finder.getFound();
}

template<class Kind>
Kind* getIf(Operation& operation)
{
    return const_cast<Kind*>(getIf<Kind>(static_cast<const Operation&>(operation)));
}

/// Fails: `std::bad_cast` for an operation that isn't aimed at a node.
inline const HierarchicalOperation& getHierarchical(const AtomicOperation& operation)
{
    const HierarchicalOperation* hierarchical = operation.getIfHierarchical();
    if (!hierarchical)
    {
        throw std::bad_cast();
    }
    return *hierarchical;
}

} // namespace Zem::CollaborationEngine
