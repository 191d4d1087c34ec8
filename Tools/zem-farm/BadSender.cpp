#include "BadSender.h"

#include "Sharing/CS_InvalidOperationError.h"

#include "Describe.h"
#include "Random.h"
#include "Texts.h"
#include "Values.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MapOperation.h"
#include "CE_SetPropertyOperation.h"
#include "DClb_TextElement.h"

#include "Util_Cast.h"

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

OperationUPtr makeBadOperation(Random& random)
{
    constexpr unsigned long noProperty = 999;
    const Address mainText = makeFixedAddress(OperationDOMNodeType::TextWithTombstones);
    switch (random.pick(6))
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
    default:
        return makeBadScript();
    }
}

/// Whether nothing of an action happened, because it fits no document.
bool isRejection(const HistoryEntry& entry)
{
    return Zem::cast<EmptyOperation>(entry._action._operation.get()) && entry._refusal &&
           entry._refusal->_reason == RefusalReason::FitsNoDocument;
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
    receive(random.pick(_inbox->size() + 1));
    ClientBatch batch;
    batch._base = _revision;
    batch._firstNumber = ++_lastNumber;
    batch._actions.push_back({makeBadOperation(random), nullptr});
    const Zem::DOM::Document before = _server.getDocument();
    const Revision revision = _server.getRevision();
    try
    {
        _server.receive(_id, batch);
    }
    catch (const Zem::CollaborationSession::InvalidOperationError&)
    {
        // It was turned away at the door: its number is still to come.
        --_lastNumber;
        return before == _server.getDocument() && _server.getRevision() == revision
                   ? ""
                   : "an operation that was turned away changed the server";
    }
    const auto* answer = _inbox->empty() ? nullptr : std::get_if<ActionHappened>(&_inbox->back());
    if (!answer || answer->_revision != revision + 1 || _server.getRevision() != revision + 1)
    {
        return "the server didn't answer a bad operation with one entry: " + describe(*batch._actions[0]._operation);
    }
    if (!isRejection(*answer->_entry))
    {
        return "the server took a bad operation: " + describe(*batch._actions[0]._operation);
    }
    return before == _server.getDocument() ? "" : "a bad operation changed the document of the server";
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
