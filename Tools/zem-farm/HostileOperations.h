#pragma once

#include "Random.h"
#include "Texts.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_Operation.h"
#include "CE_RowOrColumn.h"
#include "DClb_TextElement.h"
#include "Sharing/CS_Messages.h"

namespace ZemFarm
{

/// What a stranger may send: operations of every kind, of which now and then every field is garbage, and more often
/// one; the latter come past the first looks at them. Some are as they should be.
class HostileOperations
{
public:
    /// The document, which must outlive it, is the one that the operations are for. `author` is whom they come from.
    HostileOperations(Random& random, DocumentKind kind, const Zem::DOM::Document& document,
                      Zem::CollaborationSession::ClientID author);

    Zem::CollaborationEngine::OperationUPtr makeOperation();

    Zem::CollaborationSession::Selection makeSelection();

    /// Sometimes the base of a batch that a client which has `revision` can send.
    Zem::CollaborationSession::Revision makeBase(Zem::CollaborationSession::Revision revision);

private:
    using Range = Zem::CollaborationUtils::IndexRange<unsigned long>;
    using Items = Zem::SharedConstPtr<Zem::CollaborationEngine::ItemsCollection>;
    using Value = Zem::SharedConstPtr<Zem::CollaborationEngine::DataValue>;
    using Key = Zem::SharedConstPtr<Zem::NodeAddressing::MapKey>;
    using Element = Zem::DOMCollaboration::TextWithTombstonesElement;

    bool isSpoiled();
    unsigned long makeNumber();
    unsigned long makeSlot();
    Range makeRange(unsigned long count);
    Address makeAddress();
    Address::Chunk makeChunk();
    unsigned long makeNodeType(Zem::DOMCollaboration::OperationDOMNodeType nodeType);
    Key makeKey();
    Value makeValue();
    Element makeElement();
    Items makeItems(unsigned long count);
    Zem::CollaborationEngine::Shadows makeShadows(const Address& address);

    Zem::CollaborationEngine::OperationUPtr makeSingle();
    Zem::CollaborationEngine::OperationUPtr makeComposite();
    void takePartOut(Zem::CollaborationEngine::Operation& operation);
    Zem::CollaborationEngine::OperationUPtr makeShadowed();
    std::unique_ptr<Zem::CollaborationEngine::AtomicOperation> makeAtomic();
    template<class Nested>
    std::unique_ptr<Zem::CollaborationEngine::AtomicOperation> makeRanges();
    template<class Nested>
    Nested makeNested(const Address& address, unsigned long nodeType, const Range& range);
    std::unique_ptr<Zem::CollaborationEngine::AtomicOperation> makeMove();
    std::unique_ptr<Zem::CollaborationEngine::AtomicOperation> makeOnMap();
    std::unique_ptr<Zem::CollaborationEngine::AtomicOperation> makeSetting();
    template<class Tag>
    std::unique_ptr<Zem::CollaborationEngine::AtomicOperation> makeOnLine();
    Zem::SharedConstPtr<Zem::CollaborationEngine::RowOrColumn> makeLine();
    void giveID(Zem::CollaborationEngine::Operation& operation);

    Random& _random;
    const Zem::DOM::Document& _document;
    Zem::CollaborationSession::ClientID _author;
    Places _places;
    /// The text that the next operation is on, unless that is spoiled.
    TextPlace _text;
    unsigned long _slotsCount = 0;
    /// One field in so many is garbage.
    unsigned long _spoiledOnceIn = 1;
    unsigned long _depth = 0;
};

} // namespace ZemFarm
