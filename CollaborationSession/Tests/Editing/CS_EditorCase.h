#pragma once

/// Edits of a text, three lines each, on which every law is checked.

#include "Editing/CS_Characters.h"
#include "Editing/CS_TextEditor.h"

#include "DClb_DocumentOperationExecutor.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "DOM_CheckInvariants.h"
#include "DOM_Document.h"
#include "TS_TextCase.h"
#include "TS_TextNotation.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>

namespace Zem::CollaborationSession
{

/// A text document with one text in it that is edited: the main text, unless another address is given.
class DocumentUnderTest
{
public:
    explicit DocumentUnderTest(DOM::TextWithTombstones text,
                               CollaborationEngine::OperationNodeAddress address = TextEditor::getMainTextAddress())
        : _adapter(makeAdapter(std::move(text)))
        , _notifications(std::make_shared<ObserverFanOut>())
        , _executor(_adapter, std::make_shared<DOMCollaboration::DocumentOperationTransformer>(), _notifications)
        , _editor(_adapter, _executor, *_notifications, std::move(address))
    {
    }

    DOM::TextWithTombstones& getText()
    {
        return _document.getTextWithTombstones();
    }

    std::shared_ptr<DOMCollaboration::TextDocumentAdapter> makeAdapter(DOM::TextWithTombstones text)
    {
        getText() = std::move(text);
        return std::make_shared<DOMCollaboration::TextDocumentAdapter>(_document);
    }

    /// Executes an operation that comes from elsewhere, as it stands.
    void execute(CollaborationEngine::OperationUPtr operation)
    {
        CollaborationEngine::OperationUPtr changedOp;
        EXPECT_FALSE(_executor.executeAndChangeIfNeeded(*operation, changedOp));
    }

    DOM::Document _document;
    std::shared_ptr<DOMCollaboration::TextDocumentAdapter> _adapter;
    std::shared_ptr<ObserverFanOut> _notifications;
    DOMCollaboration::DocumentOperationExecutor _executor;
    TextEditor _editor;
};

/// A main text in the notation of TS_TextNotation.h. After each edit these laws are checked: the index counts what a
/// recount counts, the document is sound, what was done can be taken back to exactly the document before, and done
/// again, unchanged, to exactly the document after.
class EditorCase
{
public:
    explicit EditorCase(std::string_view notation)
        : _edited(TestSupport::makeText(notation))
    {
    }

    EditorCase& replace(unsigned long begin, unsigned long end, std::string_view replacement)
    {
        const DOM::Document before = _edited._document;
        _operations = _edited._editor.replace(begin, end, replacement);
        checkLaws(before);
        return *this;
    }

    EditorCase& insert(unsigned long offset, std::string_view characters)
    {
        return replace(offset, offset, characters);
    }

    EditorCase& erase(unsigned long begin, unsigned long end)
    {
        return replace(begin, end, "");
    }

    /// Expects the text, dead slots in any notation.
    EditorCase& is(std::string_view notation)
    {
        EXPECT_EQ(TestSupport::normalize(notation), TestSupport::print(_edited.getText()));
        return *this;
    }

    /// Expects the text's characters, with "#" for atomic runs and blocks.
    EditorCase& reads(std::string_view expected)
    {
        std::string characters = getCharacters(_edited.getText());
        for (std::size_t place = characters.find(objectCharacter); place != std::string::npos;
             place = characters.find(objectCharacter))
        {
            characters.replace(place, objectCharacter.size(), "#");
        }
        EXPECT_EQ(expected, characters);
        return *this;
    }

    /// Expects the operations of the last edit, each as `TestSupport::print` shows it before it is executed, with
    /// semicolons between.
    EditorCase& did(std::string_view operations)
    {
        std::string printed;
        for (const auto& operation : _operations)
        {
            printed += (printed.empty() ? "" : "; ") + TestSupport::print(*operation);
        }
        EXPECT_EQ(operations, printed);
        return *this;
    }

    DocumentUnderTest& getEdited()
    {
        return _edited;
    }

private:
    void checkLaws(const DOM::Document& before)
    {
        _edited._editor.getIndex().checkInvariants();
        const auto faults = DOM::checkInvariants(_edited._document);
        EXPECT_TRUE(faults.empty()) << faults.front();

        const DOM::Document afterwards = _edited._document;
        _edited._editor.takeBack(_operations);
        EXPECT_TRUE(_edited._document == before) << TestSupport::print(_edited.getText());
        _edited._editor.getIndex().checkInvariants();
        for (const auto& operation : _operations)
        {
            CollaborationEngine::OperationUPtr changedOp;
            EXPECT_FALSE(_edited._executor.executeAndChangeIfNeeded(*operation, changedOp));
        }
        EXPECT_TRUE(_edited._document == afterwards) << TestSupport::print(_edited.getText());
        _edited._editor.getIndex().checkInvariants();
    }

    DocumentUnderTest _edited;
    Operations _operations;
};

} // namespace Zem::CollaborationSession
