#pragma once

#include "Editing/CS_Action.h"
#include "Editing/CS_ObserverFanOut.h"

#include "CE_OperationExecutor.h"
#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"

#include "Util_Export.h"

#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// Hears that a document was replaced as a whole, which no notification tells of.
class ZEM_EXPORT ReplacementObserver
{
public:
    virtual ~ReplacementObserver();

    /// It must neither throw nor change the document.
    virtual void onDocumentReplaced() = 0;
};

/// A document that a user edits: one that only this program has, or the client of a shared one.
class ZEM_EXPORT EditedDocument
{
public:
    using Operations = std::vector<CollaborationEngine::OperationUPtr>;

    virtual ~EditedDocument();

    virtual const std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter>& getAdapter() const = 0;

    /// Tells of every change of the document.
    virtual ObserverFanOut& getNotifications() = 0;

    /// The observer is told of replacements as long as it is there.
    virtual void addReplacementObserver(const std::shared_ptr<ReplacementObserver>& observer) = 0;

    /// Executes `operations` as one action, one behind the other; they are left as they were executed. `meaning` may be
    /// null. Fails: `InvalidEditError` if the document doesn't take one as it stands, or as the executor fails; all is
    /// as it was then.
    virtual void perform(Operations& operations, std::shared_ptr<const Meaning> meaning) = 0;

    /// Takes back the last action. Requires: `operations` are it, and nothing else was executed since.
    virtual void takeBack(Operations& operations) = 0;

    /// Who edits here. 0 where nobody else does.
    virtual ClientID getID() const = 0;

    virtual void setSelection(Selection selection) = 0;

    /// Null if that user has nothing selected.
    virtual const Selection* findSelection(ClientID owner) const = 0;

    /// Those of the other users.
    virtual const Selections& getSelections() const = 0;
};

/// A document that nobody shares.
class ZEM_EXPORT LocalDocument final : public EditedDocument
{
public:
    /// `executor` tells `notifications` of what it changes in `document`. Both outlive this.
    LocalDocument(std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter> document,
                  CollaborationEngine::OperationExecutor& executor, ObserverFanOut& notifications);

    const std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter>& getAdapter() const override
    {
        return _document;
    }

    ObserverFanOut& getNotifications() override
    {
        return _notifications;
    }

    /// A document that is replaced here is replaced by the caller, who knows.
    void addReplacementObserver(const std::shared_ptr<ReplacementObserver>& observer) override;
    void perform(Operations& operations, std::shared_ptr<const Meaning> meaning) override;
    void takeBack(Operations& operations) override;

    ClientID getID() const override
    {
        return 0;
    }

    /// The selection isn't moved by what is executed.
    void setSelection(Selection selection) override;
    const Selection* findSelection(ClientID owner) const override;

    const Selections& getSelections() const override
    {
        return _others;
    }

private:
    std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter> _document;
    CollaborationEngine::OperationExecutor& _executor;
    ObserverFanOut& _notifications;
    Selections _own;
    Selections _others;
};

} // namespace Zem::CollaborationSession
