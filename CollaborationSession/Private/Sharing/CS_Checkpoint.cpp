#include "Sharing/CS_Checkpoint.h"

#include <algorithm>
#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

Checkpoint::Checkpoint(DocumentKind kind, std::shared_ptr<const DOM::Document> document,
                       std::vector<HistoryEntryPtr> entries, Revision interval)
    : _kind(kind)
    , _document(std::move(document))
    , _entries(std::move(entries))
    , _interval(interval)
{
}

void Checkpoint::append(HistoryEntryPtr entry)
{
    _entries.push_back(std::move(entry));
}

void Checkpoint::restore(Replica& replica, std::span<const Operation* const> pending) const
{
    std::vector<const Operation*> operations = getOldestOperations(_entries.size());
    operations.insert(operations.end(), pending.begin(), pending.end());
    replica.replaceDocument(*_document, operations);
}

bool Checkpoint::renewIfDue(const DOM::Document* current)
{
    const std::size_t count = _entries.size();
    const std::size_t passedCount = count - std::min<std::size_t>(count, _interval);
    if (current && count >= _interval)
    {
        renew(*current, count);
        return true;
    }
    if (passedCount > _interval)
    {
        renew(Replica::replay(_kind, *_document, getOldestOperations(passedCount)), passedCount);
        return true;
    }
    return false;
}

std::vector<const Operation*> Checkpoint::getOldestOperations(std::size_t count) const
{
    std::vector<const Operation*> operations;
    operations.reserve(count);
    for (std::size_t index = 0; index < count; ++index)
    {
        operations.push_back(_entries[index]->_action._operation.get());
    }
    return operations;
}

void Checkpoint::renew(DOM::Document document, std::size_t passedCount)
{
    _document = std::make_shared<const DOM::Document>(std::move(document));
    _entries.erase(_entries.begin(), _entries.begin() + static_cast<std::ptrdiff_t>(passedCount));
}

} // namespace Zem::CollaborationSession
