// Properties of field blocks and of sections.

#include "Generators.h"
#include "Texts.h"
#include "Values.h"

#include "CE_SetPropertyOperation.h"
#include "DOM_SectionTag.h"

#include "Util_Cast.h"

namespace ZemFarm
{

using Zem::CollaborationEngine::SetPropertyOperation;
using Zem::DOMCollaboration::OperationDOMNodeType;
using Zem::DOMCollaboration::PropertyId;
namespace DOM = Zem::DOM;

namespace
{

struct FoundBlock
{
    Address _address;
    const DOM::Block* _block;
};

std::vector<FoundBlock> findBlocks(const Participant& author, Random& random, DOM::BlockKind kind)
{
    std::vector<FoundBlock> blocks;
    for (const TextPlace& place : findPlaces(author.getKind(), author.getDocument(), random)._texts)
    {
        for (const Element& element : FlatText(*place._text)._elements)
        {
            if (element._kind == ElementKind::Block && element._block->getKind() == kind)
            {
                Address address = place._address;
                address.appendItems(Zem::NodeAddressing::AddressInList(element._slot));
                blocks.push_back({std::move(address), element._block});
            }
        }
    }
    return blocks;
}

void set(Participant& author, const Address& address, OperationDOMNodeType nodeType, const PropertyChange& change)
{
    SetPropertyOperation setting(address, Zem::DOMCollaboration::convertOperationNodeType(nodeType),
                                 Zem::DOMCollaboration::convertPropertyId(change._property), change._oldValue,
                                 change._newValue);
    author.execute(setting);
}

void setFieldProperty(Participant& author, Random& random)
{
    const std::vector<FoundBlock> fields = findBlocks(author, random, DOM::BlockKind::FieldBlock);
    if (!fields.empty())
    {
        const FoundBlock& found = random.pickFrom(fields);
        set(author, found._address, OperationDOMNodeType::FieldBlock,
            changeFieldBlock(random, Zem::cast<DOM::FieldBlock>(*found._block)));
    }
}

void setSectionProperty(Participant& author, Random& random)
{
    const std::vector<FoundBlock> tags = findBlocks(author, random, DOM::BlockKind::SectionTag);
    if (!tags.empty())
    {
        const FoundBlock& found = random.pickFrom(tags);
        const DOM::SectionProps& oldProps = Zem::cast<DOM::SectionTag>(*found._block).getSectionProps();
        set(author, found._address, OperationDOMNodeType::SectionTag,
            makeChange<PropertyId::SectionPropsId>(oldProps, makeSectionProps(random)));
    }
}

} // namespace

Generators makeNodeProperties()
{
    return {{"field-property", 3, isForAll, setFieldProperty},
            {"section-property", 1, isForFreeTexts, setSectionProperty}};
}

} // namespace ZemFarm
