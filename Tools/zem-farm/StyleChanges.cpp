// Properties of runs and paragraphs, set on the nodes themselves.

#include "Generators.h"
#include "Texts.h"
#include "Values.h"

#include "CE_SetPropertyOperation.h"

#include "Util_Cast.h"

namespace ZemFarm
{

using Zem::CollaborationEngine::SetPropertyOperation;
using Zem::DOMCollaboration::OperationDOMNodeType;

namespace
{

void set(Participant& author, const TextPlace& place, unsigned long slot, OperationDOMNodeType nodeType,
         const PropertyChange& change)
{
    Address address = place._address;
    address.appendItems(Zem::NodeAddressing::AddressInList(slot));
    SetPropertyOperation setting(std::move(address), Zem::DOMCollaboration::convertOperationNodeType(nodeType),
                                 Zem::DOMCollaboration::convertPropertyId(change._property), change._oldValue,
                                 change._newValue);
    author.execute(setting);
}

void setRunProperty(Participant& author, Random& random)
{
    const Places places = findPlaces(author.getKind(), author.getDocument(), random);
    const TextPlace* place = pickText(places, random);
    if (!place)
    {
        return;
    }
    const FlatText text(*place->_text);
    std::vector<std::size_t> runs = text.find(ElementKind::TextRunTag);
    const std::vector<std::size_t> atomicRuns = text.find(ElementKind::AtomicRun);
    runs.insert(runs.end(), atomicRuns.begin(), atomicRuns.end());
    if (!runs.empty())
    {
        const Element& element = text._elements[random.pickFrom(runs)];
        set(author, *place, element._slot, OperationDOMNodeType::Run, changeRun(random, *element._run));
    }
}

void setParagraphProperty(Participant& author, Random& random)
{
    const Places places = findPlaces(author.getKind(), author.getDocument(), random);
    const TextPlace* place = pickText(places, random);
    if (!place)
    {
        return;
    }
    const FlatText text(*place->_text);
    const std::vector<std::size_t> tags = text.find(ElementKind::ParagraphTag);
    if (!tags.empty())
    {
        const Element& element = text._elements[random.pickFrom(tags)];
        set(author, *place, element._slot, OperationDOMNodeType::ParagraphTag,
            changeParagraph(random, Zem::cast<Zem::DOM::Paragraph>(*element._block)));
    }
}

} // namespace

Generators makeStyleChanges()
{
    return {{"run-property", 5, isForAll, setRunProperty}, {"paragraph-property", 5, isForAll, setParagraphProperty}};
}

} // namespace ZemFarm
