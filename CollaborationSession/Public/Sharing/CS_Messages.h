#pragma once

/// What a `Client` and the `Server` tell each other. What carries messages keeps the order of each direction, and loses
/// none but those behind the last that arrived.

#include "DOM_Document.h"

#include "Editing/CS_Action.h"
#include "Editing/CS_Selection.h"
#include "Sharing/CS_DocumentKind.h"
#include "Sharing/CS_Refusal.h"

#include <memory>
#include <variant>
#include <vector>

namespace Zem::CollaborationSession
{

/// How many actions the history has. It counts every action that came in, also those of which nothing happened.
using Revision = unsigned long;

/// One action of the history: what really happened, with the data that it captured.
struct HistoryEntry
{
    ClientID _author = 0;
    /// The author's own count of its actions, from 1 on.
    unsigned long _number = 0;
    /// Its operation is an `EmptyOperation` if nothing happened.
    Action _action;
    /// Why less happened than its author meant.
    boost::optional<Refusal> _refusal;
};

using HistoryEntryPtr = std::shared_ptr<const HistoryEntry>;

/// What a client sends: actions that it carried out one after the other, in the state that the history of `_base`
/// entries made. While one is under way the client sends no other.
struct ClientBatch
{
    Revision _base = 0;
    /// The number of the first action. A batch whose actions have all arrived before is passed over.
    unsigned long _firstNumber = 1;
    std::vector<Action> _actions;
    /// Where the client's selection is behind the actions; null if nothing new is to be told.
    std::shared_ptr<const Selection> _selection;
};

/// The history has grown by an entry. Each action that a client sends comes back as one, in its order.
struct ActionHappened
{
    /// How many entries the history has with this one. A client passes over what it has already.
    Revision _revision = 0;
    HistoryEntryPtr _entry;
};

/// The selection of a client, in the state at which this message comes; null if the client left, or if what was
/// selected is gone. Its owner gets it, too, and takes it over unless the user has selected something else since: what
/// else came in at the server may have put it elsewhere.
struct SelectionMoved
{
    /// The state in which the selection is.
    Revision _revision = 0;
    ClientID _client = 0;
    std::shared_ptr<const Selection> _selection;
};

/// The client lacks entries that the server doesn't keep any more. Nothing else comes until it has joined anew, with
/// what is pending. A client that has come as far meanwhile passes over it.
struct TooFarBehind
{
    /// How many entries the history had.
    Revision _revision = 0;
};

using ServerMessage = std::variant<ActionHappened, SelectionMoved, TooFarBehind>;

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
