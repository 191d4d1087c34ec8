#pragma once

/// A position of a table, with or without a cell.

#include "DOMNodeAdapters/DClb_NodeAdapterImpl.h"
#include "DOMNodeAdapters/DClb_TextReference.h"

namespace Zem::DOMCollaboration
{

/// A cell of a table. Its one child is its text. The cell may not be there yet: walking past it doesn't make it.
template<class Tag, class NodeType, bool isConst>
class GenericCellNodeAdapter final
    : public TypedNodeAdapter<GenericCellNodeAdapter<Tag, NodeType, isConst>, OperationDOMNodeType::Cell,
                              FixedNodeAdapterBase<GenericCellNodeAdapter<Tag, NodeType, isConst>>,
                              CellReference<isConst>>
{
public:
    using GenericCellNodeAdapter::TypedNodeAdapter::TypedNodeAdapter;

    /// Null where no cell stands.
    NodeOf<GenericCellNodeAdapter, DOM::Cell>* getCell() const
    {
        return this->getSubject().findCell();
    }

    /// The cell, brought into being if needed.
    template<bool isWritable = !isConst>
    requires isWritable DOM::Cell& getOrCreateCell() const
    {
        return DOMCollaboration::getOrCreateCell(this->getSubject());
    }

    typename GenericCellNodeAdapter::ChildUPtr
    createChildAdapterIfPossibleImpl(const typename GenericCellNodeAdapter::FixedChunk& childAddress, bool) override;
};

/// Makes the adapters of cells.
template<bool isConst>
class CellAdapterCreator
{
public:
    /// The adapter of a live position of `table`, whether or not a cell stands there.
    template<class Tag, class NodeType>
    static std::unique_ptr<DOMNodeAdapter<Tag, NodeType, isConst>> makeCell(ConstIf<isConst, DOM::Table>& table,
                                                                            RowIndex row, ColumnIndex column)
    {
        return std::make_unique<GenericCellNodeAdapter<Tag, NodeType, isConst>>(
            CellReference<isConst>(table, row, column));
    }
};

ZEM_DECLARE_SHARED_NODE_ADAPTER(GenericCellNodeAdapter)

} // namespace Zem::DOMCollaboration
