#include "BadSender.h"

#include "Describe.h"
#include "Random.h"
#include "Texts.h"
#include "Values.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "DClb_TextElement.h"
#include "Sharing/CS_InvalidOperationError.h"

#include <algorithm>

namespace ZemFarm
{

using namespace Zem::CollaborationEngine;
using namespace Zem::CollaborationSession;
using Zem::DOMCollaboration::OperationDOMNodeType;

namespace
{

constexpr unsigned long farBehindTheEnd = 1000000;

unsigned long getNumber(OperationDOMNodeType nodeType)
{
    return Zem::DOMCollaboration::convertOperationNodeType(nodeType);
}

template<class Tag>
OperationUPtr makeRangeBehindTheEnd(const Address& address, Zem::SharedConstPtr<ItemsCollection> data)
{
    std::vector<ListModificationOperation<Tag>> nested;
    nested.emplace_back(address, getNumber(OperationDOMNodeType::TextWithTombstones), std::move(data),
                        IndexRange<unsigned long>::fromCount(farBehindTheEnd, 1));
    return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<Tag>>>(std::move(nested));
}

/// A property of a node that has none, or none of this kind, or a value of another class.
OperationUPtr makeBadSetting(OperationDOMNodeType nodeType, unsigned long propertyId)
{
    const auto value = Zem::makeSharedConst<SimpleDataValue<char>>('?');
    return std::make_unique<SetPropertyOperation>(makeFixedAddress(nodeType), getNumber(nodeType), propertyId, value,
                                                  value);
}

OperationUPtr makeBadScript()
{
    constexpr auto nodeType = OperationDOMNodeType::ScriptCollection;
    const auto key = Zem::makeSharedConst<Zem::NodeAddressing::SimpleValueMapKey<Zem::UUID>>(Zem::UUID());
    return std::make_unique<MapInsertOrRemoveOperation<MapInsertTag>>(
        makeFixedAddress(nodeType), getNumber(nodeType), key, Zem::makeSharedConst<SimpleDataValue<bool>>(true));
}

/// A setting of a run at the first slot of a text, where none stands: it is well formed, and fits no document.
OperationUPtr makeMisfit(Address address)
{
    address.appendItems(Zem::NodeAddressing::AddressInList(0));
    const PropertyChange change = makeChange<Zem::DOMCollaboration::PropertyId::RunPropertyId>(nullptr, nullptr);
    return std::make_unique<SetPropertyOperation>(std::move(address), getNumber(OperationDOMNodeType::Run),
                                                  Zem::DOMCollaboration::convertPropertyId(change._property),
                                                  change._oldValue, change._newValue);
}

OperationUPtr makeBadOperation(Random& random)
{
    constexpr unsigned long noProperty = 999;
    const Address mainText = makeFixedAddress(OperationDOMNodeType::TextWithTombstones);
    switch (random.pick(8))
    {
    case 0:
        return makeBadSetting(OperationDOMNodeType::DocumentProps, noProperty);
    case 1:
        return makeBadSetting(
            OperationDOMNodeType::DocumentProps,
            Zem::DOMCollaboration::convertPropertyId(Zem::DOMCollaboration::PropertyId::DocumentTimeZoneId));
    case 2:
        return makeBadSetting(OperationDOMNodeType::TextDocument, noProperty);
    case 3:
        return makeRangeBehindTheEnd<MarkAsRemovedTag>(mainText, nullptr);
    case 4:
        return makeRangeBehindTheEnd<RestoreTag>(
            mainText, Zem::makeSharedConst<Zem::DOMCollaboration::TextWithTombstonesItems>(
                          Zem::DOMCollaboration::TextWithTombstonesElementVector{static_cast<short>('x')}));
    case 5:
        return makeBadScript();
    default:
        return makeMisfit(mainText);
    }
}

/// Whether an action did nothing, because it fits no document, or none any more.
bool isRefused(const HistoryEntry& entry)
{
    return entry._refusal && (entry._refusal->_reason == RefusalReason::FitsNoDocument ||
                              entry._refusal->_reason == RefusalReason::TargetRemoved);
}

} // namespace

BadSender::BadSender(Server& server)
    : _server(server)
    , _inbox(std::make_shared<std::deque<ServerMessage>>())
{
    auto [id, snapshot] = server.join([inbox = _inbox](const ServerMessage& message) { inbox->push_back(message); });
    _id = id;
    _revision = snapshot._revision + snapshot._entries.size();
}

std::string BadSender::send(unsigned long seed)
{
    Random random(seed);
    // What it sent before has come back, and some of what others did since.
    const std::size_t count = countUpToOwnAnswer();
    receive(count + random.pick(_inbox->size() - count + 1));
    ClientBatch batch;
    batch._base = _revision;
    batch._firstNumber = ++_lastNumber;
    batch._actions.push_back({makeBadOperation(random), nullptr});
    const Zem::DOM::Document before = _server.getDocument();
    const Revision revision = _server.getRevision();
    const std::string fault = isTakenIn(batch) ? findFaultOfAnswer(revision) : findFaultOfRejection(revision);
    if (!fault.empty())
    {
        return fault + describe(*batch._actions.front()._operation);
    }
    return before == _server.getDocument() ? "" : "a bad operation changed the document of the server";
}

/// Whether the server takes in a batch, as one that a client can have sent.
bool BadSender::isTakenIn(const ClientBatch& batch)
{
    try
    {
        _server.receive(_id, batch);
        return true;
    }
    catch (const InvalidOperationError&)
    {
        --_lastNumber;
        return false;
    }
}

std::string BadSender::findFaultOfRejection(Revision before) const
{
    return _server.getRevision() == before ? "" : "a bad operation that was rejected stands in the history: ";
}

std::string BadSender::findFaultOfAnswer(Revision before) const
{
    const auto* answer = _inbox->empty() ? nullptr : std::get_if<ActionHappened>(&_inbox->back());
    if (!answer || answer->_revision != before + 1 || _server.getRevision() != before + 1)
    {
        return "the server didn't answer a bad operation with one entry: ";
    }
    return isRefused(*answer->_entry) ? "" : "the server took a bad operation: ";
}

/// How many messages there are up to the last answer to what it sent.
std::size_t BadSender::countUpToOwnAnswer() const
{
    const auto isOwn = [this](const ServerMessage& message)
    {
        const auto* happened = std::get_if<ActionHappened>(&message);
        return happened && happened->_entry->_author == _id;
    };
    return static_cast<std::size_t>(std::find_if(_inbox->rbegin(), _inbox->rend(), isOwn).base() - _inbox->begin());
}

void BadSender::receive(std::size_t count)
{
    for (; count > 0; --count)
    {
        _revision += std::get_if<ActionHappened>(&_inbox->front()) ? 1 : 0;
        _inbox->pop_front();
    }
}

} // namespace ZemFarm
