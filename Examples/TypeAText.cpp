// Types a text, sees what operations that takes, and takes it back.

#include "DClb_DocumentOperationExecutor.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "DOM_Document.h"
#include "Editing/CS_Characters.h"
#include "Editing/CS_TextEditor.h"

#include <iostream>

using namespace Zem;
using namespace Zem::CollaborationSession;

namespace
{

void show(const char* what, const DOM::Document& document)
{
    std::cout << what << ":\n" << getCharacters(document.getTextWithTombstones()) << "\n\n";
}

} // namespace

int main()
{
    DOM::Document document;
    const auto adapter = std::make_shared<DOMCollaboration::TextDocumentAdapter>(document);
    const auto transformer = std::make_shared<DOMCollaboration::DocumentOperationTransformer>();
    const auto notifications = std::make_shared<ObserverFanOut>();
    DOMCollaboration::DocumentOperationExecutor executor(adapter, transformer, notifications);
    TextEditor editor(adapter, executor, *notifications, TextEditor::getMainTextAddress());

    editor.replace(0, 0, "Dear Ada,\nhow are you?");
    show("Typed", document);

    Operations replaced = editor.replace(5, 8, "Zo\xC3\xAB");
    std::cout << "Replacing a name took " << replaced.size() << " operations: a marking, and an insertion.\n";
    show("Replaced", document);

    editor.takeBack(replaced);
    show("Taken back", document);

    const CharacterIndex& index = editor.getIndex();
    std::cout << index.getCharactersCount() << " characters in " << index.getParagraphsCount() << " paragraphs, "
              << document.getTextWithTombstones().getTombstones().getTombstonesCount() << " tombstones\n";
    return 0;
}
