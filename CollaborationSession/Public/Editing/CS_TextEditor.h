#pragma once

#include "Editing/CS_CharacterIndex.h"
#include "Editing/CS_EditedDocument.h"
#include "Editing/CS_ObserverFanOut.h"
#include "Editing/CS_TextCommands.h"

#include "CE_OperationExecutor.h"
#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"

#include "Util_Export.h"

#include <map>
#include <memory>
#include <optional>
#include <string_view>

namespace Zem::CollaborationSession
{

/// Characters [begin, end) of a text.
struct CharacterRange
{
    unsigned long _begin = 0;
    unsigned long _end = 0;

    friend bool operator==(const CharacterRange&, const CharacterRange&) = default;
};

/// Edits one text of a document as a user does: it makes the operations of a command, executes them, and gives them
/// back, so that they can be sent, and taken back. Its index of characters goes with every change of the document, also
/// with those that others make.
///
///     auto notifications = std::make_shared<ObserverFanOut>();
///     DocumentOperationExecutor executor(document, transformer, notifications);
///     TextEditor editor(document, executor, *notifications, TextEditor::getMainTextAddress());
///     Operations typed = editor.replace(0, 0, "Hello");
///
/// It is used on the one thread that executes the document's operations.
class ZEM_EXPORT TextEditor
{
public:
    /// The address of the main text of a document, and of a detached text.
    static const CollaborationEngine::OperationNodeAddress& getMainTextAddress();

    /// `executor` tells `notifications` of what it changes in `document`, and outlives the editor.
    /// Fails: as `TextInDocument`.
    TextEditor(std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter> document,
               CollaborationEngine::OperationExecutor& executor, ObserverFanOut& notifications,
               CollaborationEngine::OperationNodeAddress address);

    /// Edits a document that is shared, or not: `document` outlives the editor, which follows a replacement of the
    /// whole by itself. Fails: as `TextInDocument`.
    TextEditor(EditedDocument& document, CollaborationEngine::OperationNodeAddress address);
    ~TextEditor();

    TextEditor(const TextEditor&) = delete;
    TextEditor& operator=(const TextEditor&) = delete;

    /// The index, fresh. Fails: `InvalidEditError` when there is no text at the address any more.
    const CharacterIndex& getIndex();

    /// The address that the text has by now, for one that is nested in others: operations on these move it. Fails: as
    /// `TextInDocument`.
    void setAddress(CollaborationEngine::OperationNodeAddress address);

    /// Counts the text anew, after the whole document was replaced. Fails: as `TextInDocument`.
    void reload();

    /// Each does what the command of `TextCommands` makes, and fails as that does; and with `InvalidEditError` when the
    /// text doesn't take it, in which case all is as it was.
    Operations replace(unsigned long begin, unsigned long end, std::string_view replacement);
    Operations setRunLook(unsigned long begin, unsigned long end, const LookChange& change);
    Operations setParagraphLook(unsigned long begin, unsigned long end, const LookChange& change);
    Operations setRunProperty(unsigned long begin, unsigned long end, DOMCollaboration::PropertyId propertyId,
                              const SharedConstPtr<CollaborationEngine::DataValue>& value);
    Operations setParagraphProperty(unsigned long begin, unsigned long end, DOMCollaboration::PropertyId propertyId,
                                    const SharedConstPtr<CollaborationEngine::DataValue>& value);
    Operations setLink(unsigned long begin, unsigned long end, DOM::HyperlinkConstPtr link);
    Operations addComment(unsigned long begin, unsigned long end, const UUID& uuid);
    Operations removeComment(unsigned long begin, unsigned long end, const UUID& uuid);

    /// Takes back what was executed, newest first. Requires: nothing else was executed since.
    void takeBack(Operations& operations);

    /// Selects the characters of [begin, end); a caret if there are none. A selection stays on its characters, and a
    /// caret behind the character that it was behind. Fails: `InvalidEditError` for a stretch that isn't in the text.
    void select(unsigned long begin, unsigned long end);

    /// What the user of this document, or another one, has selected in this text; empty if nothing, or elsewhere.
    std::optional<CharacterRange> findSelection();
    std::optional<CharacterRange> findSelection(ClientID owner);

    /// Where the others are in this text.
    std::map<ClientID, CharacterRange> getOtherSelections();

private:
    class IndexFeed;

    Operations perform(Operations operations, Meaning meaning);
    Operations performLook(Operations operations, const CharacterRange& range, LookTarget target,
                           const LookChange& change);
    std::optional<CharacterRange> convert(const Selection* selection);

    /// Null if the caller has one.
    std::unique_ptr<LocalDocument> _localDocument;
    EditedDocument& _document;
    std::shared_ptr<IndexFeed> _feed;
};

} // namespace Zem::CollaborationSession
