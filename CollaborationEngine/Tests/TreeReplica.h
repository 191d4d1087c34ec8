#pragma once

/// A document of every kind of node with its history, and short ways to make operations on it.

#include "TreeModel.h"

#include <functional>

namespace Zem::CollaborationEngine::Testing
{

using RowMark = TableRowOrColumnListModificationOperation<RowOrColumnMarkAsRemovedOperationTag>;

OperationUPtr setWhole(OperationNodeAddress address, int oldValue, int newValue, Operation::Id id = 1);

/// One element goes into the text of another.
OperationUPtr insertText(OperationNodeAddress element, unsigned long gap, int name, Operation::Id id);

/// One slot of the text of an element.
OperationUPtr markText(OperationNodeAddress element, unsigned long slot);

/// The element in a slot of the text of another one.
OperationNodeAddress textElementAddress(OperationNodeAddress element, unsigned long slot);

OperationUPtr markElement(unsigned long slot);
OperationUPtr insertKey(const std::string& key, TreeElement value);
OperationUPtr removeKey(const std::string& key);
OperationUPtr row(TableRowOperation::NestedOperation nested);
OperationUPtr column(TableColumnOperation::NestedOperation nested);

class TreeReplica
{
public:
    /// Carries out atomic operations on a document.
    using MakeExecutor = std::function<std::unique_ptr<AtomicOperationExecutor>(TreeDocument&)>;

    TreeReplica();
    explicit TreeReplica(MakeExecutor makeExecutor);

    /// What happened goes into the history.
    void run(OperationUPtr operation);

    /// The operation past the history from `begin` on. It comes late, so that the history wins the ties.
    OperationUPtr pastHistory(OperationUPtr operation, std::size_t begin) const;

    /// What undoes an operation of the history, past all that came later.
    OperationUPtr makeUndoOf(std::size_t index) const;

    void undo(std::size_t index)
    {
        run(makeUndoOf(index));
    }

    const TreeDocument& getDocument() const
    {
        return _document;
    }

    const std::vector<OperationUPtr>& getHistory() const
    {
        return _history;
    }

private:
    std::shared_ptr<HierarchicalOperationTransformer> _transformer = makeTreeTransformer();
    TreeDocument _document = makeTreeDocument();
    std::vector<OperationUPtr> _history;
    MakeExecutor _makeExecutor;
};

/// The names in the text of an element, with `dead` for a dead slot.
std::string textOf(const TreeElement& element);

} // namespace Zem::CollaborationEngine::Testing
