#pragma once

#include "CE_OperationNodeAddress.h"
#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"
#include "DOM_NativeNodeAddress.h"
#include "DOM_TextWithTombstones.h"

#include "Util_Export.h"

#include <memory>

namespace Zem::CollaborationSession
{

/// One text of a document: the main text, that of a cell, of a shape, of a header, or a detached one. It is known by
/// its address, so that a cell's text may come and go. The address must lead to a text whenever it is asked for.
class ZEM_EXPORT TextInDocument
{
public:
    /// Fails: `InvalidEditError` when the address leads to no text; "plainPtr" when there is no document.
    TextInDocument(std::shared_ptr<const DOMCollaboration::DocumentAdapterWithNodeAdapter> document,
                   CollaborationEngine::OperationNodeAddress address);

    /// The address of the text in operations.
    const CollaborationEngine::OperationNodeAddress& getAddress() const
    {
        return _address;
    }

    /// Whether other nodes of the document hold the text, so that changes of these move it or take it away.
    bool isNested() const
    {
        return _address.getSize() > 1;
    }

    /// The text; for that of a cell that isn't there yet, an empty one. Cost: none for a text that isn't nested,
    /// otherwise the walk of its address. Fails: `InvalidEditError` when the address leads to no text any more.
    const DOM::TextWithTombstones& getText() const;

    /// The address of the text in notifications. Cost and failures: as `getText`.
    DOM::NativeNodeAddress findNativeAddress() const;

private:
    const DOM::TextWithTombstones& findText() const;

    std::shared_ptr<const DOMCollaboration::DocumentAdapterWithNodeAdapter> _document;
    CollaborationEngine::OperationNodeAddress _address;
    /// Null if the text is nested.
    const DOM::TextWithTombstones* _mainText = nullptr;
};

} // namespace Zem::CollaborationSession
