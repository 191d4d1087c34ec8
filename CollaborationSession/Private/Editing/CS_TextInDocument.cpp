#include "Editing/CS_TextInDocument.h"

#include "Editing/CS_InvalidEditError.h"

#include "DClb_ElementPathUtils.h"
#include "DOMNodeAdapters/DClb_TextWithTombstonesNodeAdapter.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

namespace Zem::CollaborationSession
{

using CollaborationEngine::OperationNodeAddress;
using DOMCollaboration::DocumentAdapterWithNodeAdapter;
namespace ElementPathUtils = DOMCollaboration::ElementPathUtils;

TextInDocument::TextInDocument(std::shared_ptr<const DocumentAdapterWithNodeAdapter> document,
                               OperationNodeAddress address)
    : _document(std::move(document))
    , _address(std::move(address))
{
    const DOM::TextWithTombstones& text = findText();
    if (!isNested())
    {
        _mainText = &text;
    }
}

const DOM::TextWithTombstones& TextInDocument::getText() const
{
    return _mainText ? *_mainText : findText();
}

DOM::NativeNodeAddress TextInDocument::findNativeAddress() const
{
    static_cast<void>(getText());
    return ElementPathUtils::convertNodeAddress(*_document, _address);
}

const DOM::TextWithTombstones& TextInDocument::findText() const
{
    const auto adapter = ElementPathUtils::createDOMNodeAdapterIfPossible(derefPtr(_document), _address);
    const auto* text = cast<DOMCollaboration::GenericTextWithTombstonesNodeAdapter<true>>(adapter.get());
    if (!text)
    {
        throw InvalidEditError("The address leads to no text");
    }
    return text->readText();
}

} // namespace Zem::CollaborationSession
