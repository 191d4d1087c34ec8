#pragma once

/// Operations on several ranges of one list, by which text is changed.

#include "CE_ListOperation.h"

#include <vector>

namespace Zem::CollaborationEngine
{

template<class T>
class ListMultirangeOperationImpl;

/// The root of the list operations over several ranges.
class ZEM_EXPORT ListMultirangeOperation : public HierarchicalOperation
{
public:
    static constexpr Family family = Family::ListMultirange;

    using VisitorType = Visitor<TypeList<ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>,
                                         ListMultirangeOperationImpl<ListModificationOperation<RemoveTag>>,
                                         ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>,
                                         ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>,
                                         ListMultirangeOperationImpl<ListLeaveTombstonesOperation>>>;
    using ConstVisitorType =
        Visitor<TypeList<const ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>,
                         const ListMultirangeOperationImpl<ListModificationOperation<RemoveTag>>,
                         const ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>,
                         const ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>,
                         const ListMultirangeOperationImpl<ListLeaveTombstonesOperation>>>;

    using HierarchicalOperation::HierarchicalOperation;

    using HierarchicalOperation::accept;
    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;

    Family getFamily() const final
    {
        return family;
    }
};

/// Several single-range operations of one kind on one list. They stand from the highest position to the lowest, all in
/// the coordinates of the state before the operation, so that they can be carried out in their order.
template<class T>
class ListMultirangeOperationImpl final
    : public FamilyOperationImpl<ListMultirangeOperationImpl<T>, ListMultirangeOperation>
{
public:
    using Base = FamilyOperationImpl<ListMultirangeOperationImpl<T>, ListMultirangeOperation>;
    using NestedOperation = T;

    /// The address and the node type are those of the nested operations. Fails: "!nestedOperations.empty()".
    explicit ListMultirangeOperationImpl(std::vector<T> nestedOperations)
        : Base(requireFirst(nestedOperations).getNodeAddress(), requireFirst(nestedOperations).getOperandType())
        , _nestedOperations(std::move(nestedOperations))
    {
    }

    const std::vector<T>& getNestedOperations() const
    {
        return _nestedOperations;
    }

    std::vector<T>& getNestedOperations()
    {
        return _nestedOperations;
    }

    void setNodeAddress(OperationNodeAddress nodeAddress) override
    {
        for (T& nestedOperation : _nestedOperations)
        {
            nestedOperation.setNodeAddress(nodeAddress);
        }
        Base::setNodeAddress(std::move(nodeAddress));
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

private:
    static const T& requireFirst(const std::vector<T>& nestedOperations)
    {
        ZEM_ASSERT(!nestedOperations.empty());
        return nestedOperations.front();
    }

    std::vector<T> _nestedOperations;
};

extern template class ZEM_EXPORT ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>;
extern template class ZEM_EXPORT ListMultirangeOperationImpl<ListModificationOperation<RemoveTag>>;
extern template class ZEM_EXPORT ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>;
extern template class ZEM_EXPORT ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>;
extern template class ZEM_EXPORT ListMultirangeOperationImpl<ListLeaveTombstonesOperation>;

} // namespace Zem::CollaborationEngine
