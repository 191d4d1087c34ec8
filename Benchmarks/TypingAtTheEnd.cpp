// What does a paragraph cost that a walk passes? A place is found by a walk from the beginning of the text, so that a
// byte typed at its end pays for all paragraphs in front of it. The index of characters doesn't walk.

#include "DClb_DocumentOperationExecutor.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "DOM_Document.h"
#include "Editing/CS_Characters.h"
#include "Editing/CS_TextEditor.h"
#include "PlaneIndexUtils/DClb_TextWithTombstonesPositionUtils.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace
{

using namespace Zem;
using namespace Zem::CollaborationSession;
using DOMCollaboration::IndexExcludingTombstones;
namespace PositionUtils = DOMCollaboration::TextWithTombstonesPositionUtils;

constexpr std::string_view line = "Some words in a paragraph.";

/// A text document of many equal paragraphs, made by operations, as every document is.
class LongDocument
{
public:
    explicit LongDocument(unsigned long paragraphsCount)
        : _adapter(std::make_shared<DOMCollaboration::TextDocumentAdapter>(_document))
        , _notifications(std::make_shared<ObserverFanOut>())
        , _executor(_adapter, std::make_shared<DOMCollaboration::DocumentOperationTransformer>(), _notifications)
        , _editor(_adapter, _executor, *_notifications, TextEditor::getMainTextAddress())
    {
        std::string lines;
        for (unsigned long paragraph = 0; paragraph < paragraphsCount; ++paragraph)
        {
            lines += lines.empty() ? "" : "\n";
            lines += line;
        }
        _editor.replace(0, 0, lines);
    }

    DOM::Document _document;
    std::shared_ptr<DOMCollaboration::TextDocumentAdapter> _adapter;
    std::shared_ptr<ObserverFanOut> _notifications;
    DOMCollaboration::DocumentOperationExecutor _executor;
    TextEditor _editor;
};

/// Shows the time of one round for each paragraph of the document.
void countParagraphs(benchmark::State& state)
{
    state.counters["per paragraph"] =
        benchmark::Counter(static_cast<double>(state.range(0)),
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void FindTheLastByte(benchmark::State& state)
{
    const auto paragraphsCount = static_cast<unsigned long>(state.range(0));
    LongDocument document(paragraphsCount);
    const DOM::Blocks& blocks = document._document.getTextWithTombstones().getBlocks();
    const IndexExcludingTombstones lastByte(paragraphsCount * (line.size() + 3) - 2);
    for (auto _ : state)
    {
        const auto position = PositionUtils::getElementPosition(DOMCollaboration::ReadonlyBlocks(blocks), lastByte);
        const auto* byte =
            boost::get<DOMCollaboration::GenericCharPosition<true, DOMCollaboration::DOMTraits>>(&position);
        if (!byte || byte->_blockIndex != paragraphsCount - 1 || byte->_byteIndex != line.size() - 1)
        {
            state.SkipWithError("That isn't the last byte");
            break;
        }
    }
    countParagraphs(state);
}

void TypeOneByteAtTheEnd(benchmark::State& state)
{
    LongDocument document(static_cast<unsigned long>(state.range(0)));
    TextEditor& editor = document._editor;
    const std::string before = getCharacters(document._document.getTextWithTombstones());
    unsigned long typedCount = 0;
    for (auto _ : state)
    {
        const unsigned long end = editor.getIndex().getCharactersCount();
        editor.replace(end, end, "x");
        ++typedCount;
    }
    if (getCharacters(document._document.getTextWithTombstones()) != before + std::string(typedCount, 'x'))
    {
        state.SkipWithError("That isn't the text with what was typed at its end");
    }
    countParagraphs(state);
}

/// What a command costs of that: everything but the execution.
void MakeTheOperationOfAByteAtTheEnd(benchmark::State& state)
{
    LongDocument document(static_cast<unsigned long>(state.range(0)));
    const CharacterIndex& index = document._editor.getIndex();
    const unsigned long end = index.getCharactersCount();
    for (auto _ : state)
    {
        if (TextCommands::replaceCharacters(index, end, end, "x").size() != 1)
        {
            state.SkipWithError("A byte is one operation");
            break;
        }
    }
    countParagraphs(state);
}

BENCHMARK(FindTheLastByte)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(MakeTheOperationOfAByteAtTheEnd)->Arg(10)->Arg(1000)->Arg(100000);
BENCHMARK(TypeOneByteAtTheEnd)->Arg(10)->Arg(1000)->Arg(100000);

} // namespace
