#pragma once

#include "CS_DocumentKind.h"
#include "CS_ObserverFanOut.h"

#include "CE_BaseOperationTransformer.h"
#include "DClb_DocumentOperationExecutor.h"

#include "Util_Export.h"

#include <memory>

namespace Zem::CollaborationSession
{

/// One copy of a shared document, with all that operations need to change it. An exception of an executor passes
/// through, and may leave the document half changed: it is to be replaced then.
class ZEM_EXPORT Replica
{
public:
    /// Takes a copy of `document`.
    Replica(DocumentKind kind, const DOM::Document& document);
    ~Replica();

    Replica(const Replica&) = delete;
    Replica& operator=(const Replica&) = delete;

    DocumentKind getKind() const
    {
        return _kind;
    }

    const DOM::Document& getDocument() const
    {
        return _document;
    }

    const std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter>& getAdapter() const
    {
        return _adapter;
    }

    ObserverFanOut& getNotifications()
    {
        return *_notifications;
    }

    DOMCollaboration::DocumentOperationExecutor& getExecutor()
    {
        return *_executor;
    }

    const CollaborationEngine::BaseOperationTransformer& getTransformer() const
    {
        return *_transformer;
    }

    /// Runs a copy of an operation that tells what really happened elsewhere, in an equal document.
    /// Fails: "isAsItHappened" when this document makes something else of it: the two weren't equal.
    void executeAgain(const CollaborationEngine::Operation& operation);

    /// Takes a copy of another document in place of what is there. No observer is told.
    void replaceDocument(const DOM::Document& document);

private:
    DocumentKind _kind;
    DOM::Document _document;
    std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter> _adapter;
    std::shared_ptr<CollaborationEngine::BaseOperationTransformer> _transformer;
    std::shared_ptr<ObserverFanOut> _notifications;
    std::unique_ptr<DOMCollaboration::DocumentOperationExecutor> _executor;
};

} // namespace Zem::CollaborationSession
