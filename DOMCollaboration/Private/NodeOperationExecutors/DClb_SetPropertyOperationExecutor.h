#pragma once

/// What the executors of set-property operations do alike, so that each of them is the table of its properties.

#include "DClb_ElementPathUtils.h"
#include "DClb_NodeOperationExecutor.h"
#include "DClb_NodeTypes.h"

#include "CE_SetPropertyOperation.h"

#include "Util_Assert.h"

#include <memory>
#include <utility>

namespace Zem::DOMCollaboration
{

/// An executor of set-property operations that are never changed: execution and reverse differ in the value alone.
/// `Observer` is the interface of the observer that it tells.
template<OperationDOMNodeType nodeType, class Observer>
class SetPropertyOperationExecutor : public NodeOperationExecutor
{
public:
    SetPropertyOperationExecutor(const std::shared_ptr<DocumentAdapterWithNodeAdapter>& dom,
                                 std::weak_ptr<Observer> observer)
        : NodeOperationExecutor(dom)
        , _observer(std::move(observer))
    {
    }

    unsigned long getNodeType() const final
    {
        return convertOperationNodeType(nodeType);
    }

    bool executeAndChangeIfNeeded(CollaborationEngine::HierarchicalOperation& operation,
                                  CollaborationEngine::OperationUPtr&) final
    {
        applyValue(operation, false);
        return false;
    }

    void reverse(CollaborationEngine::HierarchicalOperation& operation) final
    {
        applyValue(operation, true);
    }

protected:
    /// The observer, locked; null if it is gone.
    std::shared_ptr<Observer> lockObserver() const
    {
        return _observer.lock();
    }

    DOM::NativeNodeAddress convertAddress(const CollaborationEngine::HierarchicalOperation& operation) const
    {
        return ElementPathUtils::convertNodeAddress(this->getDomAdapter(), operation.getNodeAddress());
    }

    static const CollaborationEngine::DataValue& chooseValue(const CollaborationEngine::SetPropertyOperation& operation,
                                                             bool useOldValue)
    {
        return useOldValue ? operation.getOldValue() : operation.getNewValue();
    }

private:
    /// Sets the old or the new value, and tells the observer. May leave in the operation what was replaced.
    virtual void applyValue(CollaborationEngine::HierarchicalOperation& operation, bool useOldValue) = 0;

    std::weak_ptr<Observer> _observer;
};

/// The same for nodes of a text, which the document and the observer know by their native addresses.
///
/// Fails: "operation.getOperandType() == convertOperationNodeType(getNodeType())", "setPropsOperation".
template<OperationDOMNodeType nodeType, class Observer>
class TextNodePropertyExecutor : public SetPropertyOperationExecutor<nodeType, Observer>
{
public:
    using SetPropertyOperationExecutor<nodeType, Observer>::SetPropertyOperationExecutor;

private:
    /// Carries the operation out on the node at `address` or, if `isReverse`, takes it back, and tells the observer.
    virtual void apply(const DOM::NativeNodeAddress& address, CollaborationEngine::SetPropertyOperation& operation,
                       bool isReverse) = 0;

    void applyValue(CollaborationEngine::HierarchicalOperation& operation, bool useOldValue) final
    {
        this->requireOwnOperandType(operation);
        auto* setPropsOperation = cast<CollaborationEngine::SetPropertyOperation>(&operation);
        ZEM_ASSERT(setPropsOperation);
        apply(this->convertAddress(operation), *setPropsOperation, useOldValue);
    }
};

} // namespace Zem::DOMCollaboration
