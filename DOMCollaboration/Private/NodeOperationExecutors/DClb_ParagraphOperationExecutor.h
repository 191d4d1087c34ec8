#pragma once

#include "NodeOperationExecutors/DClb_SetPropertyOperationExecutor.h"
#include "Notifications/DClb_ParaPropsChangedObserver.h"

namespace Zem::DOMCollaboration
{

/// Sets the properties of a paragraph. Those of runs go to its mark.
/// Fails: "Unrecognized PropertyIdType" for a property that isn't of it; "plainPtr" for a value of another type, and
/// when the observer is gone.
class ParagraphOperationExecutor final
    : public TextNodePropertyExecutor<OperationDOMNodeType::ParagraphTag, ParaPropsChangedObserver>
{
public:
    using TextNodePropertyExecutor::TextNodePropertyExecutor;

private:
    void apply(const DOM::NativeNodeAddress& address, CollaborationEngine::SetPropertyOperation& operation,
               bool isReverse) override;
};

} // namespace Zem::DOMCollaboration
