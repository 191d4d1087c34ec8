#pragma once

#include "Editing/CS_ObserverFanOut.h"
#include "Sharing/CS_DocumentKind.h"

#include "CE_BaseOperationTransformer.h"
#include "DClb_DocumentOperationExecutor.h"

#include "Util_Export.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

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

    /// A copy of `document` behind `operations`, which tell what happened in it. Nobody is told of the way there.
    /// Fails: as `executeAgain`.
    static DOM::Document replay(DocumentKind kind, const DOM::Document& document,
                                const std::vector<const CollaborationEngine::Operation*>& operations);

    /// Takes what `replay` gives in place of the document. Observers of notifications aren't told how it came about:
    /// they know another document. `setOnDocumentReplaced` is their way to learn of it, once the new one is there.
    /// Fails: as `executeAgain`; the document is as it was then, and nobody is told.
    void replaceDocument(const DOM::Document& document,
                         const std::vector<const CollaborationEngine::Operation*>& operations);

    /// `onDocumentReplaced` is called behind each replacement. It must neither throw nor change the document.
    void setOnDocumentReplaced(std::function<void()> onDocumentReplaced)
    {
        _onDocumentReplaced = std::move(onDocumentReplaced);
    }

private:
    DocumentKind _kind;
    DOM::Document _document;
    std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter> _adapter;
    std::shared_ptr<CollaborationEngine::BaseOperationTransformer> _transformer;
    std::shared_ptr<ObserverFanOut> _notifications;
    std::unique_ptr<DOMCollaboration::DocumentOperationExecutor> _executor;
    std::function<void()> _onDocumentReplaced;
};

} // namespace Zem::CollaborationSession
