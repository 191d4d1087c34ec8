#pragma once

#include "NodeOperationExecutors/DClb_SetPropertyOperationExecutor.h"
#include "Notifications/DClb_SectionPropsChangedObserver.h"

namespace Zem::DOMCollaboration
{

/// Sets the properties of a section, at its tag.
/// Fails: "Unrecognized PropertyIdType" for a property that isn't of it; "plainPtr" for a value of another type, and
/// when the observer is gone.
class SectionPropsOperationExecutor final
    : public TextNodePropertyExecutor<OperationDOMNodeType::SectionTag, SectionPropsChangedObserver>
{
public:
    using TextNodePropertyExecutor::TextNodePropertyExecutor;

private:
    void apply(const DOM::NativeNodeAddress& address, CollaborationEngine::SetPropertyOperation& operation,
               bool isReverse) override;
};

} // namespace Zem::DOMCollaboration
