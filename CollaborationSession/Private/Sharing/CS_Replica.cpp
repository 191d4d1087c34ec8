#include "Sharing/CS_Replica.h"

#include "Sharing/CS_SettlingTransformer.h"

#include "Util_Assert.h"

#include <utility>

namespace Zem::CollaborationSession
{

Replica::Replica(DocumentKind kind, const DOM::Document& document)
    : _kind(kind)
    , _document(document)
    , _adapter(makeDocumentAdapter(kind, _document))
    , _transformer(std::make_shared<SettlingTransformer>())
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

/// A replica of its own has no observers, and whoever holds this one's document sees nothing of what is half done.
DOM::Document Replica::replay(DocumentKind kind, const DOM::Document& document,
                              const std::vector<const CollaborationEngine::Operation*>& operations)
{
    Replica replica(kind, document);
    for (const CollaborationEngine::Operation* operation : operations)
    {
        replica.executeAgain(derefPtr(operation));
    }
    return std::move(replica._document);
}

void Replica::replaceDocument(const DOM::Document& document,
                              const std::vector<const CollaborationEngine::Operation*>& operations)
{
    _document = replay(_kind, document, operations);
    if (_onDocumentReplaced)
    {
        _onDocumentReplaced();
    }
}

} // namespace Zem::CollaborationSession
