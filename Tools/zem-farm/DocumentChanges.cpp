// Properties of the document as a whole, and its scripts.

#include "Generators.h"
#include "Texts.h"
#include "Values.h"

#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "DOM_SectionProps.h"

#include <array>
#include <string>

namespace ZemFarm
{

using namespace Zem::CollaborationEngine;
using Zem::DOMCollaboration::OperationDOMNodeType;
using Zem::DOMCollaboration::PropertyId;
namespace DOM = Zem::DOM;

namespace
{

void setDocumentProperty(Participant& author, Random& random)
{
    const DOM::Document& document = author.getDocument();
    const auto change = [&]
    {
        switch (random.pick(3))
        {
        case 0:
            return makeChange<PropertyId::ChangesTrackingEnabledId>(document.isChangesTrackingEnabled(),
                                                                    random.isOnceIn(2));
        case 1:
            return makeChange<PropertyId::SectionPropsId>(document.getDefaultSectionProps(), makeSectionProps(random));
        default:
            return makeChange<PropertyId::DocumentTimeZoneId>(document.getTimeZone(),
                                                              DOM::TimeZone(static_cast<short>(60 * random.pick(3))));
        }
    }();
    constexpr auto nodeType = OperationDOMNodeType::DocumentProps;
    SetPropertyOperation setting(makeFixedAddress(nodeType), Zem::DOMCollaboration::convertOperationNodeType(nodeType),
                                 Zem::DOMCollaboration::convertPropertyId(change._property), change._oldValue,
                                 change._newValue);
    author.execute(setting);
}

/// Inserts the script of a name, or removes the one that is there.
void changeScript(Participant& author, Random& random)
{
    static constexpr std::array<const char*, 4> names = {"a", "b", "c", "\xC3\xA9"};
    const std::string name = random.pickFrom(names);
    constexpr auto nodeType = OperationDOMNodeType::ScriptCollection;
    const Address address = makeFixedAddress(nodeType);
    const unsigned long typeNumber = Zem::DOMCollaboration::convertOperationNodeType(nodeType);
    const auto key = Zem::makeSharedConst<Zem::NodeAddressing::SimpleValueMapKey<std::string>>(name);
    if (author.getDocument().getScripts().getScript(name))
    {
        MapInsertOrRemoveOperation<MapRemoveTag> removal(address, typeNumber, key, nullptr);
        author.execute(removal);
        return;
    }
    const auto text = Zem::makeSharedConst<SimpleDataValue<std::string>>(makeWords(random, 5));
    MapInsertOrRemoveOperation<MapInsertTag> insertion(address, typeNumber, key, text);
    author.execute(insertion);
}

} // namespace

Generators makeDocumentChanges()
{
    return {{"document-property", 3, isForAll, setDocumentProperty}, {"script", 4, isForAll, changeScript}};
}

} // namespace ZemFarm
