#include "Editing/CS_CommandSupport.h"
#include "Editing/CS_Painting.h"
#include "Editing/CS_StyleProperties.h"
#include "Editing/CS_TextCommands.h"

namespace Zem::CollaborationSession::TextCommands
{

using CollaborationEngine::DataValue;
using DOMCollaboration::PropertyId;

namespace
{

/// Elements [begin, end), found by the index.
PlaneStretch makeStretch(const CharacterIndex& index, unsigned long begin, unsigned long end)
{
    return PlaneStretch{begin, end, index.findPlace(begin), std::nullopt, std::nullopt};
}

} // namespace

Operations setRunLook(const CharacterIndex& index, unsigned long begin, unsigned long end, const LookChange& change)
{
    requireStretch(index, begin, end);
    const TextInDocument& text = index.getTextInDocument();
    const PlaneStretch stretch = makeStretch(index, index.convertToElement(begin), index.convertToElement(end));
    return paintRuns(text.getText(), text.getAddress(), stretch, change)._operations;
}

Operations setParagraphLook(const CharacterIndex& index, unsigned long begin, unsigned long end,
                            const LookChange& change)
{
    requireStretch(index, begin, end);
    const TextInDocument& text = index.getTextInDocument();
    const unsigned long first = index.convertToElement(begin);
    const unsigned long behindLast = begin < end ? index.convertToElement(end - 1) + 1 : first;
    return paintParagraphs(text.getText(), text.getAddress(), makeStretch(index, first, behindLast), change)
        ._operations;
}

Operations setRunProperty(const CharacterIndex& index, unsigned long begin, unsigned long end, PropertyId propertyId,
                          const SharedConstPtr<DataValue>& value)
{
    requireRunProperty(propertyId);
    return setRunLook(index, begin, end, LookChange::setProperty(propertyId, value));
}

Operations setParagraphProperty(const CharacterIndex& index, unsigned long begin, unsigned long end,
                                PropertyId propertyId, const SharedConstPtr<DataValue>& value)
{
    return setParagraphLook(index, begin, end, LookChange::setProperty(propertyId, value));
}

Operations setLink(const CharacterIndex& index, unsigned long begin, unsigned long end, DOM::HyperlinkConstPtr link)
{
    return setRunLook(index, begin, end, LookChange::setLink(std::move(link)));
}

Operations addComment(const CharacterIndex& index, unsigned long begin, unsigned long end, const UUID& uuid)
{
    return setRunLook(index, begin, end, LookChange::addComment(uuid));
}

Operations removeComment(const CharacterIndex& index, unsigned long begin, unsigned long end, const UUID& uuid)
{
    return setRunLook(index, begin, end, LookChange::removeComment(uuid));
}

} // namespace Zem::CollaborationSession::TextCommands
