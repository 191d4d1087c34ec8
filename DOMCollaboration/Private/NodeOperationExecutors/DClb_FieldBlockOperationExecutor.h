#pragma once

#include "NodeOperationExecutors/DClb_SetPropertyOperationExecutor.h"
#include "Notifications/DClb_FieldBlockPropsChangedObserver.h"

namespace Zem::DOMCollaboration
{

/// Sets the properties of a field block.
/// Fails: "Unsupported property id" for a property that isn't of it; "plainPtr" for a value of another type, and when
/// the observer is gone.
class FieldBlockOperationExecutor final
    : public TextNodePropertyExecutor<OperationDOMNodeType::FieldBlock, FieldBlockPropsChangedObserver>
{
public:
    using TextNodePropertyExecutor::TextNodePropertyExecutor;

private:
    void apply(const DOM::NativeNodeAddress& address, CollaborationEngine::SetPropertyOperation& operation,
               bool isReverse) override;
};

} // namespace Zem::DOMCollaboration
