#include "Spoiling.h"

#include "Generators.h"
#include "Texts.h"
#include "Values.h"

#include "CE_SetPropertyOperation.h"
#include "DOM_Blocks.h"

#include "Util_Assert.h"

#include <stdexcept>

namespace ZemFarm
{

namespace
{

void spoil(Participant& author, Random&)
{
    spoilDocument(author);
}

Zem::DOM::TextWithTombstones& getMainText(const Zem::DOM::Document& document)
{
    return const_cast<Zem::DOM::Document&>(document).getTextWithTombstones();
}

void smuggle(Participant& author, Random& random)
{
    using namespace Zem::DOMCollaboration;
    const unsigned long slot = FlatText(getMainText(author.getDocument()))._slotsCount;
    smuggleParagraph(author.getDocument());
    Address address = makeFixedAddress(OperationDOMNodeType::TextWithTombstones);
    address.appendItems(Zem::NodeAddressing::AddressInList(slot));
    const PropertyChange change = makeChange<PropertyId::ParaPropertyId>(nullptr, makeParaProps(random));
    Zem::CollaborationEngine::SetPropertyOperation setting(
        address, convertOperationNodeType(OperationDOMNodeType::ParagraphTag), convertPropertyId(change._property),
        change._oldValue, change._newValue);
    author.execute(setting);
}

void drop(Participant& author, Random&)
{
    getMainText(author.getDocument()).getBlocks().pop_back();
}

void stumble(Participant& author, Random&)
{
    using namespace Zem::DOMCollaboration;
    constexpr unsigned long noProperty = 999;
    constexpr auto nodeType = OperationDOMNodeType::DocumentProps;
    const PropertyChange change = makeChange<PropertyId::ChangesTrackingEnabledId>(false, true);
    Zem::CollaborationEngine::SetPropertyOperation setting(
        makeFixedAddress(nodeType), convertOperationNodeType(nodeType), noProperty, change._oldValue, change._newValue);
    try
    {
        author.execute(setting);
    }
    catch (const Zem::AssertionFailure&)
    {
        return;
    }
    throw std::logic_error("the operation didn't fail");
}

void fail(Participant&, Random&)
{
    throw std::runtime_error("it fits\nno document");
}

void addOnce(const Generator& generator)
{
    if (!findGenerator(generator._name))
    {
        addGenerator(generator);
    }
}

} // namespace

void spoilDocument(const Participant& participant)
{
    auto& document = const_cast<Zem::DOM::Document&>(participant.getDocument());
    document.setChangesTrackingEnabled(!document.isChangesTrackingEnabled());
}

void addSpoilingGenerator()
{
    addOnce({"spoil", 0, isForAll, spoil});
}

void smuggleParagraph(const Zem::DOM::Document& document)
{
    getMainText(document).getBlocks().push_back(std::make_unique<Zem::DOM::Paragraph>());
}

void addSmugglingGenerators()
{
    addOnce({"smuggle", 0, isForAll, smuggle});
    addOnce({"drop", 0, isForAll, drop});
}

void addStumblingGenerator()
{
    addOnce({"stumble", 0, isForAll, stumble});
}

void addFailingGenerator()
{
    addOnce({"refuse", 0, isForAll, fail});
}

} // namespace ZemFarm
