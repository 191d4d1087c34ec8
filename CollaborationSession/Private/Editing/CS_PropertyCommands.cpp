#include "Editing/CS_Characters.h"
#include "Editing/CS_CommandSupport.h"
#include "Editing/CS_StyleProperties.h"
#include "Editing/CS_TextCommands.h"

#include "CE_SetPropertyOperation.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"

#include <algorithm>

namespace Zem::CollaborationSession::TextCommands
{

using CollaborationEngine::DataValue;
using CollaborationEngine::InsertTag;
using CollaborationEngine::OperationUPtr;
using CollaborationEngine::SetPropertyOperation;
using DOMCollaboration::OperationDOMNodeType;
using DOMCollaboration::PropertyId;

namespace
{

/// A property to set on an element of the text.
struct PropertyChange
{
    PropertyId _propertyId;
    SharedConstPtr<DataValue> _oldValue;
    SharedConstPtr<DataValue> _newValue;
};

OperationUPtr makeSetProperty(const CharacterIndex& index, unsigned long slot, OperationDOMNodeType nodeType,
                              const PropertyChange& change)
{
    auto address = index.getTextInDocument().getAddress();
    address.appendItems(NodeAddressing::AddressInList(slot));
    return std::make_unique<SetPropertyOperation>(
        std::move(address), DOMCollaboration::convertOperationNodeType(nodeType),
        DOMCollaboration::convertPropertyId(change._propertyId), change._oldValue, change._newValue);
}

/// Collects what a property of runs needs: new tags where the stretch parts a run, and the tags of the runs inside.
class RunPropertyPlanner
{
public:
    RunPropertyPlanner(const CharacterIndex& index, unsigned long begin, unsigned long end, PropertyId propertyId,
                       const SharedConstPtr<DataValue>& value)
        : _index(index)
        , _begin(begin)
        , _end(end)
        , _propertyId(propertyId)
        , _value(value)
    {
    }

    Operations plan()
    {
        BlockPlace place = _index.findCharacter(_begin);
        for (; place._character < _end && place._blockIndex < _index.getBlocksCount();
             place = _index.getBlock(place._blockIndex + 1))
        {
            if (place._block._paragraphs > 0)
            {
                visitParagraph(place);
            }
        }
        Operations operations;
        if (!_newTags.empty())
        {
            std::reverse(_newTags.begin(), _newTags.end());
            operations.push_back(makeMultirange(std::move(_newTags)));
        }
        std::move(_changes.begin(), _changes.end(), std::back_inserter(operations));
        return operations;
    }

private:
    void visitParagraph(const BlockPlace& place)
    {
        unsigned long character = place._character;
        unsigned long element = place._element + 1;
        for (const auto& run : _index.getParagraph(place._blockIndex).getRuns())
        {
            const bool isText = derefPtr(run).getKind() == DOM::RunKind::TextRun;
            const std::string_view text =
                isText ? std::string_view(static_cast<const DOM::TextRun&>(*run).getText()) : std::string_view();
            const unsigned long characters = isText ? text.size() - countContinuationBytes(text) : 1;
            const unsigned long begin = std::max(_begin, character);
            const unsigned long end = std::min(_end, character + characters);
            if (begin < end)
            {
                visitRun(*run, element, begin - character, end - character, characters);
            }
            character += characters;
            element += 1 + text.size();
        }
    }

    /// Characters [begin, end) of a run whose tag is `element`.
    void visitRun(const DOM::Run& run, unsigned long element, unsigned long begin, unsigned long end,
                  unsigned long characters)
    {
        const auto oldValue = getRunProperty(run, _propertyId);
        if (*oldValue == *_value)
        {
            return;
        }
        const unsigned long newTagsBefore = _newTags.size();
        const unsigned long tagSlot = begin > 0 ? partRun(run, element, begin) : getSlot(_index, element);
        _changes.push_back(makeSetProperty(_index, tagSlot + newTagsBefore, OperationDOMNodeType::Run,
                                           PropertyChange{_propertyId, oldValue, _value}));
        if (end < characters)
        {
            partRun(run, element, end);
        }
    }

    /// Puts a new tag in front of a character of a run, and gives its slot.
    unsigned long partRun(const DOM::Run& run, unsigned long element, unsigned long character)
    {
        const std::string& text = static_cast<const DOM::TextRun&>(run).getText();
        const unsigned long slot = getSlot(_index, element + 1 + findCharacter(text, character));
        _newTags.push_back(makeNestedInsertion(_index, slot, {makeRunElement(run.getSharedStyle())}));
        return slot;
    }

    const CharacterIndex& _index;
    unsigned long _begin;
    unsigned long _end;
    PropertyId _propertyId;
    const SharedConstPtr<DataValue>& _value;
    /// Ascending.
    std::vector<ListModificationOperation<InsertTag>> _newTags;
    Operations _changes;
};

} // namespace

Operations setRunProperty(const CharacterIndex& index, unsigned long begin, unsigned long end, PropertyId propertyId,
                          const SharedConstPtr<DataValue>& value)
{
    requireStretch(index, begin, end);
    requireSameType(value, *getRunProperty(DOM::TextRun(), propertyId));
    return RunPropertyPlanner(index, begin, end, propertyId, value).plan();
}

Operations setParagraphProperty(const CharacterIndex& index, unsigned long begin, unsigned long end,
                                PropertyId propertyId, const SharedConstPtr<DataValue>& value)
{
    requireStretch(index, begin, end);
    requireSameType(value, *getParagraphProperty(DOM::Paragraph(), propertyId));

    Operations operations;
    const unsigned long last = index.findCharacter(begin < end ? end - 1 : end)._blockIndex;
    BlockPlace place = index.findCharacter(begin);
    for (; place._blockIndex <= last && place._blockIndex < index.getBlocksCount();
         place = index.getBlock(place._blockIndex + 1))
    {
        if (place._block._paragraphs == 0)
        {
            continue;
        }
        const auto oldValue = getParagraphProperty(index.getParagraph(place._blockIndex), propertyId);
        if (!(*oldValue == *value))
        {
            operations.push_back(makeSetProperty(index, getSlot(index, place._element),
                                                 OperationDOMNodeType::ParagraphTag,
                                                 PropertyChange{propertyId, oldValue, value}));
        }
    }
    return operations;
}

} // namespace Zem::CollaborationSession::TextCommands
