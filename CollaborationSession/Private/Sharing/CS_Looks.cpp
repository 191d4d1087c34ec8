#include "Sharing/CS_Looks.h"

#include "Editing/CS_Stretch.h"
#include "Editing/CS_TextInDocument.h"

#include "CE_SetPropertyOperation.h"
#include "DClb_NodeTypes.h"
#include "DOM_PlaneSize.h"
#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "Util_Cast.h"

#include <utility>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;
using DOMCollaboration::OperationDOMNodeType;

namespace
{

/// The stretch between two slots; none if it would be empty.
void addPart(std::vector<LookSetting>& parts, const LookSetting& model, const LookChange& change, unsigned long first,
             unsigned long end)
{
    if (first < end)
    {
        parts.push_back({makeStretch(readStretch(model._stretch)._text, first, end - 1), model._target, change});
    }
}

void addWithoutLater(std::vector<LookSetting>& rest, const LookSetting& look, const LookSetting& later)
{
    const StretchInText own = readStretch(look._stretch);
    const StretchInText other = readStretch(later._stretch);
    const bool meet = look._target == later._target && own._text == other._text && own._firstSlot <= other._lastSlot &&
                      other._firstSlot <= own._lastSlot && look._change.setsSameFieldAs(later._change);
    if (!meet)
    {
        rest.push_back(look);
        return;
    }
    addPart(rest, look, look._change, own._firstSlot, std::max(own._firstSlot, other._firstSlot));
    if (const auto others = look._change.getPartNotSetBy(later._change))
    {
        addPart(rest, look, *others, std::max(own._firstSlot, other._firstSlot),
                std::min(own._lastSlot, other._lastSlot) + 1);
    }
    addPart(rest, look, look._change, std::min(own._lastSlot, other._lastSlot) + 1, own._lastSlot + 1);
}

/// Finds the elements that belong to a tag.
class TaggedElements
{
public:
    explicit TaggedElements(const DOM::TextWithTombstones& text)
        : _text(text)
    {
    }

    /// The slot of the last element of the run or paragraph whose tag is at `slot`. Nothing for a slot that has none.
    boost::optional<unsigned long> findLastSlot(unsigned long slot)
    {
        const auto index = _text.getTombstones().convertIndex(CollaborationUtils::IndexIncludingTombstones(slot));
        if (!index)
        {
            return boost::none;
        }
        const auto place = find(index->get());
        const unsigned long size = place ? getSizeOfTagged(*place) : 0;
        if (size == 0)
        {
            return boost::none;
        }
        return _text.getTombstones()
            .convertIndex(CollaborationUtils::IndexExcludingTombstones(index->get() + size - 1))
            .get();
    }

private:
    boost::optional<DOMCollaboration::PlanePlace> find(unsigned long index)
    {
        const auto place = _index && *_index <= index
                               ? DOMCollaboration::PlaneWalk::findFrom(_text.getBlocks(), _place, index - *_index)
                               : DOMCollaboration::PlaneWalk::find(_text.getBlocks(),
                                                                   CollaborationUtils::IndexExcludingTombstones(index));
        if (place)
        {
            _index = index;
            _place = *place;
        }
        return place;
    }

    unsigned long getSizeOfTagged(const DOMCollaboration::PlanePlace& place) const
    {
        const DOM::Block& block = *_text.getBlocks()[place._blockIndex];
        switch (place._kind)
        {
        case DOMCollaboration::PlaceKind::ParaTag:
            return DOM::PlaneSize::of(block);
        case DOMCollaboration::PlaceKind::TextRunTag:
        case DOMCollaboration::PlaceKind::AtomicRun:
            return DOM::PlaneSize::of(*static_cast<const DOM::Paragraph&>(block).getRuns()[place._runIndex]);
        default:
            return 0;
        }
    }

    const DOM::TextWithTombstones& _text;
    boost::optional<unsigned long> _index;
    DOMCollaboration::PlanePlace _place;
};

LookTarget getTarget(const SetPropertyOperation& setting)
{
    return setting.getOperandType() == DOMCollaboration::convertOperationNodeType(OperationDOMNodeType::Run)
               ? LookTarget::Runs
               : LookTarget::Paragraphs;
}

const LookSetting* findLook(const Meaning& meaning, const SetPropertyOperation& setting)
{
    for (const LookSetting& look : meaning._looks)
    {
        if (DOMCollaboration::convertPropertyId(look._change.getPropertyId()) == setting.getPropertyID() &&
            look._target == getTarget(setting) && readStretch(look._stretch)._text == getText(setting.getNodeAddress()))
        {
            return &look;
        }
    }
    return nullptr;
}

void listAtomics(const Operation& operation, std::vector<const AtomicOperation*>& atomics)
{
    if (const auto* composite = cast<CompositeOperation>(&operation))
    {
        for (const OperationUPtr& part : composite->getParts())
        {
            listAtomics(*part, atomics);
        }
    }
    else if (const auto* atomic = cast<AtomicOperation>(&operation))
    {
        atomics.push_back(atomic);
    }
}

} // namespace

bool isNothing(const Action& action)
{
    const bool paints = action._meaning && !action._meaning->_looks.empty();
    return !paints && cast<EmptyOperation>(action._operation.get());
}

std::vector<LookSetting> withoutLater(std::vector<LookSetting> looks, const LookSetting& later)
{
    std::vector<LookSetting> rest;
    for (const LookSetting& look : looks)
    {
        addWithoutLater(rest, look, later);
    }
    return rest;
}

std::vector<LookSetting>
findFormerLooks(const std::shared_ptr<const DOMCollaboration::DocumentAdapterWithNodeAdapter>& document,
                const Operation& operation, const Meaning& meaning)
{
    std::vector<LookSetting> former;
    if (meaning._looks.empty())
    {
        return former;
    }
    std::vector<const AtomicOperation*> atomics;
    listAtomics(operation, atomics);
    for (const AtomicOperation* atomic : atomics)
    {
        // A tag that a later operation moves moves along.
        std::erase_if(former, [&](LookSetting& look) { return !moveStretch(look._stretch, *atomic); });
        const auto* setting = cast<SetPropertyOperation>(atomic);
        const LookSetting* look = setting ? findLook(meaning, *setting) : nullptr;
        if (look)
        {
            const unsigned long slot = getSlotInText(setting->getNodeAddress());
            former.push_back({makeStretch(getText(setting->getNodeAddress()), slot, slot), look->_target,
                              look->_change.makeReversal(setting->getSharedOldValue())});
        }
    }
    if (former.empty())
    {
        return former;
    }
    const TextInDocument text(document, readStretch(former.front()._stretch)._text);
    TaggedElements tagged(text.getText());
    for (LookSetting& look : former)
    {
        const StretchInText tag = readStretch(look._stretch);
        look._stretch =
            makeStretch(tag._text, tag._firstSlot, tagged.findLastSlot(tag._firstSlot).value_or(tag._lastSlot));
    }
    return former;
}

} // namespace Zem::CollaborationSession
