#include "CS_Replica.h"

#include "DClb_DocumentOperationTransformer.h"

#include "Util_Assert.h"

namespace Zem::CollaborationSession
{

Replica::Replica(DocumentKind kind, const DOM::Document& document)
    : _kind(kind)
    , _document(document)
    , _adapter(makeDocumentAdapter(kind, _document))
    , _transformer(std::make_shared<DOMCollaboration::DocumentOperationTransformer>())
    , _notifications(std::make_shared<ObserverFanOut>())
    , _executor(std::make_unique<DOMCollaboration::DocumentOperationExecutor>(_adapter, _transformer, _notifications))
{
}

Replica::~Replica() = default;

void Replica::executeAgain(const CollaborationEngine::Operation& operation)
{
    CollaborationEngine::OperationUPtr changedOp;
    const bool isAsItHappened =
        !_executor->executeAndChangeIfNeeded(*CollaborationEngine::cloneOperation(operation), changedOp);
    ZEM_ASSERT(isAsItHappened);
}

void Replica::replaceDocument(const DOM::Document& document)
{
    _document = document;
}

} // namespace Zem::CollaborationSession
