#pragma once

#include "CE_DataValue.h"
#include "CE_HierarchicalOperation.h"

#include "Util_SharedConstPtr.h"

namespace Zem::CollaborationEngine
{

/// Sets one property of a node. The old value, captured when the operation is made, is what a reverse puts back.
class ZEM_EXPORT SetPropertyOperation final
    : public HierarchicalOperationImpl<SetPropertyOperation, HierarchicalOperation>
{
public:
    static constexpr Family family = Family::SetProperty;

    /// Fails: "plainPtr" when a value is null.
    SetPropertyOperation(OperationNodeAddress nodeAddress, unsigned long nodeType, unsigned long propertyId,
                         SharedConstPtr<DataValue> oldValue, SharedConstPtr<DataValue> newValue);

    static std::unique_ptr<SetPropertyOperation>
    makeNewSetPropertyOperation(OperationNodeAddress nodeAddress, unsigned long nodeType, unsigned long propertyId,
                                std::unique_ptr<DataValue> oldValue, std::unique_ptr<DataValue> newValue);

    unsigned long getPropertyID() const
    {
        return _propertyId;
    }

    const DataValue& getOldValue() const
    {
        return *_oldValue;
    }

    const DataValue& getNewValue() const
    {
        return *_newValue;
    }

    /// How an executor leaves what it replaced, for a later reverse. Only a property that stands for a whole subtree
    /// needs that: operations inside the subtree change its value without being known here. Fails: "plainPtr" for null.
    void setOldValue(SharedConstPtr<DataValue> oldValue);

    const SharedConstPtr<DataValue>& getSharedOldValue() const
    {
        return _oldValue;
    }

    const SharedConstPtr<DataValue>& getSharedNewValue() const
    {
        return _newValue;
    }

    OperationUPtr getPseudoIdentity(const BaseOperationTransformer& transformer) const override;

    Family getFamily() const override
    {
        return family;
    }

private:
    unsigned long _propertyId;
    SharedConstPtr<DataValue> _oldValue;
    SharedConstPtr<DataValue> _newValue;
};

} // namespace Zem::CollaborationEngine
