#include "Sharing/CS_DocumentKind.h"

#include "Util_Assert.h"

namespace Zem::CollaborationSession
{

std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter> makeDocumentAdapter(DocumentKind kind,
                                                                                      DOM::Document& document)
{
    switch (kind)
    {
    case DocumentKind::Text:
        return std::make_shared<DOMCollaboration::TextDocumentAdapter>(document);
    case DocumentKind::Workbook:
        return std::make_shared<DOMCollaboration::WorkbookDocumentAdapter>(document);
    case DocumentKind::Presentation:
        return std::make_shared<DOMCollaboration::PresentationDocumentAdapter>(document);
    }
    ZEM_FAIL("Unknown kind of document.");
}

} // namespace Zem::CollaborationSession
