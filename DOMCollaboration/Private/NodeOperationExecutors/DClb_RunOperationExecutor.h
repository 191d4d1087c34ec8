#pragma once

#include "NodeOperationExecutors/DClb_SetPropertyOperationExecutor.h"
#include "Notifications/DClb_RunPropsChangedObserver.h"

namespace Zem::DOMCollaboration
{

/// Sets the properties of a run, which is a tag or an atomic run of the flat text.
/// Fails: "Unrecognized PropertyIdType" for a property that isn't of it; "plainPtr" for a value of another type, and
/// when the observer is gone.
class RunOperationExecutor final : public TextNodePropertyExecutor<OperationDOMNodeType::Run, RunPropsChangedObserver>
{
public:
    using TextNodePropertyExecutor::TextNodePropertyExecutor;

private:
    void apply(const DOM::NativeNodeAddress& address, CollaborationEngine::SetPropertyOperation& operation,
               bool isReverse) override;
};

} // namespace Zem::DOMCollaboration
