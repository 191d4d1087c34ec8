#pragma once

/// What a `Client` and the `Server` tell each other. What carries messages keeps the order of each direction, and loses
/// none but those behind the last that arrived.

#include "CE_Operation.h"
#include "DOM_Document.h"
#include "EditingState/DClb_DOMEditingState.h"

#include "Sharing/CS_DocumentKind.h"

#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace Zem::CollaborationSession
{

/// The server gives a number to each client that joins, from 1 on. None is given twice.
using ClientID = unsigned long;

/// How many operations the history has.
using Revision = unsigned long;

using Selection = DOMCollaboration::DOMEditingStateWithTS;
using Selections = std::map<ClientID, Selection>;

/// One operation of the history: what really happened, with the data that it captured.
struct HistoryEntry
{
    ClientID _author = 0;
    /// The author's own count of its operations, from 1 on.
    unsigned long _number = 0;
    std::shared_ptr<const CollaborationEngine::Operation> _operation;
};

using HistoryEntryPtr = std::shared_ptr<const HistoryEntry>;

/// What a client sends: operations that it executed one after the other, in the state that the history of `_base`
/// entries made. While one is under way the client sends no other.
struct ClientBatch
{
    Revision _base = 0;
    /// The number of the first operation. A batch whose operations have all arrived before is passed over.
    unsigned long _firstNumber = 1;
    std::vector<std::shared_ptr<const CollaborationEngine::Operation>> _operations;
    /// Where the client's selection is behind the operations; null if nothing new is to be told.
    std::shared_ptr<const Selection> _selection;
};

/// The history has grown by an entry.
struct OperationHappened
{
    HistoryEntryPtr _entry;
};

/// An operation of the client that gets this was rejected; it isn't in the history.
struct OperationRejected
{
    unsigned long _number = 0;
    std::string _reason;
};

/// The selection of a client, in the state at which this message comes; null if the client left, or if what was
/// selected is gone. Its owner gets it, too, and takes it over unless the user has selected something else since: what
/// else came in at the server may have put it elsewhere.
struct SelectionMoved
{
    ClientID _client = 0;
    std::shared_ptr<const Selection> _selection;
};

using ServerMessage = std::variant<OperationHappened, OperationRejected, SelectionMoved>;

/// What a client starts from: a document of some revision, and what happened since.
struct Snapshot
{
    DocumentKind _kind = DocumentKind::Text;
    std::shared_ptr<const DOM::Document> _document;
    Revision _revision = 0;
    std::vector<HistoryEntryPtr> _entries;
    /// In the state behind all entries.
    Selections _selections;
};

} // namespace Zem::CollaborationSession
