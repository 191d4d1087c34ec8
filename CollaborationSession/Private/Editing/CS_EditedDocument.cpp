#include "Editing/CS_EditedDocument.h"

#include "Editing/CS_ExecuteAsTheyStand.h"

#include <utility>

namespace Zem::CollaborationSession
{

ReplacementObserver::~ReplacementObserver() = default;

EditedDocument::~EditedDocument() = default;

LocalDocument::LocalDocument(std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter> document,
                             CollaborationEngine::OperationExecutor& executor, ObserverFanOut& notifications)
    : _document(std::move(document))
    , _executor(executor)
    , _notifications(notifications)
{
}

void LocalDocument::addReplacementObserver(const std::shared_ptr<ReplacementObserver>&)
{
}

void LocalDocument::perform(Operations& operations, std::shared_ptr<const Meaning>)
{
    executeAsTheyStand(_executor, operations);
}

void LocalDocument::takeBack(Operations& operations)
{
    for (auto operation = operations.rbegin(); operation != operations.rend(); ++operation)
    {
        _executor.reverse(**operation);
    }
}

void LocalDocument::setSelection(Selection selection)
{
    _own.insert_or_assign(getID(), std::move(selection));
}

const Selection* LocalDocument::findSelection(ClientID owner) const
{
    const auto found = _own.find(owner);
    return found == _own.end() ? nullptr : &found->second;
}

} // namespace Zem::CollaborationSession
