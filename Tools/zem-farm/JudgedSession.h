#pragma once

/// A session of one text, of which a judge hears everything that anybody does, and when it comes to the server.
///
/// The judge knows characters by what they are. So no two of a judged session are alike, but for the ends of
/// paragraphs.

#include "Judge.h"
#include "Script.h"

#include "DOM_Document.h"
#include "Editing/CS_LookChange.h"
#include "Sharing/CS_Client.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZemFarm
{

/// Characters of which no two are alike.
class UniqueCharacters
{
public:
    /// A string of as many characters as `text` has, with the same line breaks, and mostly of as many bytes.
    std::string replace(std::string_view text);

private:
    std::string take(std::size_t size);

    std::map<std::size_t, unsigned long> _next;
};

class Witness;

class JudgedSession
{
public:
    explicit JudgedSession(const Setup& setup);

    /// What the session starts from: paragraphs of text, and one at least.
    const Zem::DOM::Document& getStartDocument() const
    {
        return _startDocument;
    }

    /// Compares the document of the server, where everything has arrived. Fails: `Misjudged`.
    void compare(const Zem::DOM::Document& document);

private:
    friend class Witness;

    void take(std::size_t revision, const std::vector<Judge::Deed>& deeds);

    UniqueCharacters _characters;
    Zem::DOM::Document _startDocument;
    Judge _judge;
    /// What was done by each entry of the history.
    std::vector<std::vector<Judge::Deed>> _history;
};

/// Tells the judge what one participant does.
class Witness
{
public:
    using Client = Zem::CollaborationSession::Client;
    using ClientBatch = Zem::CollaborationSession::ClientBatch;
    using ActionID = Zem::CollaborationSession::ActionID;
    using LookChange = Zem::CollaborationSession::LookChange;

    Witness(JudgedSession& session, const Client& client);

    /// What is typed in place of a text, so that no two characters are alike.
    std::string makeUnique(std::string_view text);

    /// The text as its author sees it, before he does something. Fails: `Misjudged` if he can't see that.
    ShownText look() const;

    /// What its last own action was.
    void tellReplacement(const ShownText& text, unsigned long begin, unsigned long end, std::string_view inserted);
    void tellSetting(const ShownText& text, unsigned long begin, unsigned long end, bool isOfParagraphs,
                     const LookChange& change);

    /// The last own action undoes another one, or does it again: the one that was asked for, or the last that can be
    /// undone. Fails: `Misjudged` if that was a later one.
    void tellUndoing();
    void tellUndo();

    /// Nothing was undone. Fails: `Misjudged` if there was something.
    void tellNoUndo();
    void tellNoUndoOf(ActionID action);

    /// The client is to send this.
    void noteBatch(const ClientBatch& batch);

    /// A batch came to the server, and made the history longer.
    void noteArrival(const ClientBatch& batch, std::size_t revisionBefore, std::size_t revisionAfter);

private:
    using Deeds = std::vector<Judge::Deed>;

    Judge::View makeView() const;
    void addOwn(Deeds deeds);
    void requireNothingToUndo(ActionID behind);
    bool standsFor(ActionID action) const;

    JudgedSession& _session;
    const Client& _client;
    /// What was done by each own action that isn't gone. Keystrokes that went out as one are one.
    std::map<ActionID, std::shared_ptr<const Deeds>> _own;
    /// What undoes what.
    std::map<ActionID, ActionID> _undone;
    std::vector<ActionID> _unsent;
    /// By the numbers that the client gave them.
    std::map<unsigned long, std::shared_ptr<const Deeds>> _sent;
};

} // namespace ZemFarm
