#pragma once

#include "NodeOperationExecutors/DClb_SetPropertyOperationExecutor.h"
#include "Notifications/DClb_DocumentPropsChangedObserver.h"

namespace Zem::DOMCollaboration
{

/// Sets the properties of the document itself.
///
/// Fails: "operation.getOperandType() == convertOperationNodeType(OperationDOMNodeType::DocumentProps)";
/// `std::bad_cast` for an operation that doesn't set a property; "Unrecognized PropertyIdType" for a property that
/// isn't the document's; "plainPtr" for a value of another type, and when the observer is gone.
class DocumentPropsOperationExecutor final
    : public SetPropertyOperationExecutor<OperationDOMNodeType::DocumentProps, DocumentPropsChangedObserver>
{
public:
    using SetPropertyOperationExecutor::SetPropertyOperationExecutor;

private:
    void applyValue(CollaborationEngine::HierarchicalOperation& operation, bool useOldValue) override;
};

} // namespace Zem::DOMCollaboration
