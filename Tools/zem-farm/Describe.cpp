#include "Describe.h"

#include "Texts.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "DClb_TextElement.h"
#include "DOM_Runs.h"

#include "Util_Cast.h"
#include "Util_Visitor.h"

namespace ZemFarm
{

using namespace Zem::CollaborationEngine;
using namespace Zem::NodeAddressing;
namespace DOM = Zem::DOM;

namespace
{

char getLetter(const Zem::DOMCollaboration::TextWithTombstonesElement& element)
{
    if (const auto* byte = boost::get<short>(&element))
    {
        return static_cast<char>(*byte);
    }
    if (const auto* block = boost::get<Zem::SharedConstPtr<DOM::Block>>(&element))
    {
        return ZemFarm::getLetter(**block);
    }
    if (const auto* run = boost::get<Zem::SharedConstPtr<DOM::Run>>(&element))
    {
        return (*run)->getKind() == DOM::RunKind::TextRun ? '|' : '~';
    }
    return '}';
}

/// Where the range begins and what it holds, or how long it is.
template<class Nested>
std::string describeRange(const Nested& nested)
{
    std::string text = ' ' + std::to_string(nested.getRange().getBegin()) + ':';
    const auto* items = Zem::cast<Zem::DOMCollaboration::TextWithTombstonesItems>(nested.getData().get());
    if (!items)
    {
        return text + '+' + std::to_string(nested.getRange().getCount());
    }
    for (const auto& element : items->getCollection())
    {
        text += getLetter(element);
    }
    return text;
}

std::string describeRanges(const ListMultirangeOperation& operation)
{
    const auto list = [](const char* verb, const auto& ranges)
    {
        std::string text = verb;
        for (const auto& nested : ranges.getNestedOperations())
        {
            text += describeRange(nested);
        }
        return text;
    };
    return Zem::visitWith<std::string>(
        operation,
        [&](const ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>& ranges)
        { return list("insert", ranges); },
        [&](const ListMultirangeOperationImpl<ListModificationOperation<RemoveTag>>& ranges)
        { return list("remove", ranges); },
        [&](const ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>& ranges)
        { return list("mark", ranges); },
        [&](const ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>& ranges)
        { return list("restore", ranges); },
        [&](const ListMultirangeOperationImpl<ListLeaveTombstonesOperation>& ranges) { return list("leave", ranges); });
}

std::string describeOnNode(const AtomicOperation& operation)
{
    const auto* onNode = Zem::cast<HierarchicalOperation>(&operation);
    const std::string address = onNode ? describe(onNode->getNodeAddress()) + ' ' : "";
    if (const auto* ranges = Zem::cast<ListMultirangeOperation>(&operation))
    {
        return address + describeRanges(*ranges);
    }
    if (const auto* setting = Zem::cast<SetPropertyOperation>(&operation))
    {
        return address + "set " + std::to_string(setting->getPropertyID());
    }
    if (Zem::cast<MapInsertOrRemoveOperation<MapInsertTag>>(&operation))
    {
        return address + "insert key";
    }
    if (Zem::cast<MapInsertOrRemoveOperation<MapRemoveTag>>(&operation))
    {
        return address + "remove key";
    }
    return address + "other";
}

} // namespace

std::string describe(const Address& address)
{
    std::string text = "[";
    for (const auto& chunk : address.getItems())
    {
        text += text.size() > 1 ? " " : "";
        if (const auto* inList = boost::get<AddressInList>(&chunk))
        {
            text += std::to_string(inList->getIndex());
        }
        else if (const auto* inTable = boost::get<AddressInTable>(&chunk))
        {
            text += std::to_string(inTable->getRow().get()) + '/' + std::to_string(inTable->getColumn().get());
        }
        else if (const auto* fixed = boost::get<Address::FixedChunk>(&chunk))
        {
            text += 'n' + std::to_string(fixed->getNodeType());
        }
        else
        {
            text += "key";
        }
    }
    return text + ']';
}

std::string describe(const Operation& operation)
{
    return Zem::visitWith<std::string>(
        operation, [](const AtomicOperation& atomic) { return describeOnNode(atomic); },
        [](const CompositeOperation& composite)
        {
            std::string text = "(";
            for (const OperationUPtr& part : composite.getParts())
            {
                text += (text.size() > 1 ? "; " : "") + describe(*part);
            }
            return text + ')';
        },
        [](const EmptyOperation&) { return std::string("nothing"); },
        [](const ShadowedOperation& shadowed) { return "shadowed " + describeOnNode(shadowed.getOriginal()); });
}

} // namespace ZemFarm
