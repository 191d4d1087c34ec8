#pragma once

#include "DOMNodeAdapters/DClb_DocumentAdapter.h"

#include "Util_Export.h"

#include <memory>

namespace Zem::CollaborationSession
{

enum class DocumentKind : unsigned char
{
    Text,
    Workbook,
    Presentation
};

/// The adapter of a document, which must outlive it.
ZEM_EXPORT std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter>
makeDocumentAdapter(DocumentKind kind, DOM::Document& document);

} // namespace Zem::CollaborationSession
