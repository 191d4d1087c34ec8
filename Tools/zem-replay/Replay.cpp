#include "Replay.h"

#include "PlainText.h"
#include "Progress.h"

#include "DClb_DocumentOperationExecutor.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "DOM_CheckInvariants.h"
#include "DOM_Document.h"
#include "Editing/CS_Characters.h"
#include "Editing/CS_TextEditor.h"

#include <exception>

namespace ZemReplay
{

using namespace Zem;
using CollaborationEngine::OperationUPtr;
using CollaborationSession::Operations;

namespace
{

/// One document on which one history is played.
class Player
{
public:
    Player(const Trace& trace, const Options& options)
        : _trace(trace)
        , _options(options)
        , _adapter(std::make_shared<DOMCollaboration::TextDocumentAdapter>(_document))
        , _notifications(std::make_shared<CollaborationSession::ObserverFanOut>())
        , _executor(_adapter, std::make_shared<DOMCollaboration::DocumentOperationTransformer>(), _notifications)
        , _editor(_adapter, _executor, *_notifications, CollaborationSession::TextEditor::getMainTextAddress())
    {
        if (_options._checkInterval > 0)
        {
            _plainText.replace(0, 0, _trace._startContent);
        }
    }

    /// Plays the history once, and adds to `result`.
    void play(ReplayResult& result)
    {
        result._operationsCount = 0;
        keep(_editor.replace(0, 0, _trace._startContent));
        result._playTimes.push_back(measure([&] { playPatches(); }));
        result._operationsCount = _operationsCount;
        compareText("at the end", _trace._endContent);
        if (_options._checkInterval > 0)
        {
            check("at the end");
        }
        if (_options._reverses)
        {
            takeBackAndDoAgain(result);
        }
        describe(result);
    }

private:
    void playPatches()
    {
        Progress progress(_trace._name, _trace._patches.size());
        unsigned long patchesCount = 0;
        for (const Patch& patch : _trace._patches)
        {
            playPatch(patch);
            progress.advance();
            ++patchesCount;
            if (_options._checkInterval > 0)
            {
                _plainText.replace(patch._position, patch._deleteCount, _trace.getText(patch));
                if (patchesCount % _options._checkInterval == 0)
                {
                    check("after " + getName(_trace, patch));
                }
            }
        }
    }

    void playPatch(const Patch& patch)
    {
        try
        {
            keep(_editor.replace(patch._position, patch._position + patch._deleteCount, _trace.getText(patch)));
        }
        catch (const std::exception& error)
        {
            fail("at " + getName(_trace, patch), error.what());
        }
    }

    void keep(Operations operations)
    {
        _operationsCount += operations.size();
        if (_options._reverses)
        {
            std::move(operations.begin(), operations.end(), std::back_inserter(_operations));
        }
    }

    void takeBackAndDoAgain(ReplayResult& result)
    {
        const DOM::Document played = _document;
        result._reverseTimes.push_back(measure([&] { takeBack(); }));
        if (!(_document == DOM::Document()))
        {
            fail("with all operations taken back", "the document isn't the empty one");
        }
        _editor.getIndex().checkInvariants();
        result._againTimes.push_back(measure([&] { doAgain(); }));
        if (!(_document == played))
        {
            fail("with all operations done again", "the document isn't the one from before");
        }
        _editor.getIndex().checkInvariants();
    }

    void takeBack()
    {
        Progress progress(_trace._name + ", backward", _operations.size());
        for (auto operation = _operations.rbegin(); operation != _operations.rend(); ++operation)
        {
            _executor.reverse(**operation);
            progress.advance();
        }
    }

    void doAgain()
    {
        Progress progress(_trace._name + ", again", _operations.size());
        for (const OperationUPtr& operation : _operations)
        {
            OperationUPtr changedOp;
            if (_executor.executeAndChangeIfNeeded(*operation, changedOp))
            {
                fail("doing again", "an operation was changed");
            }
            progress.advance();
        }
    }

    void check(const std::string& where)
    {
        compareText(where, _plainText.getUtf8());
        const std::vector<std::string> faults = DOM::checkInvariants(_document);
        if (!faults.empty())
        {
            fail(where, faults.front());
        }
        try
        {
            _editor.getIndex().checkInvariants();
        }
        catch (const std::exception& error)
        {
            fail(where, std::string("the index of characters: ") + error.what());
        }
    }

    void compareText(const std::string& where, const std::string& expected)
    {
        const std::string actual = CollaborationSession::getCharacters(_document.getTextWithTombstones());
        if (actual != expected)
        {
            fail(where, "the text isn't what it is to be: " + describeDifference(actual, expected));
        }
    }

    [[noreturn]] void fail(const std::string& where, const std::string& what) const
    {
        throw FailedComparison(_trace._name + ": " + where + ": " + what);
    }

    void describe(ReplayResult& result)
    {
        const CollaborationSession::CharacterIndex& index = _editor.getIndex();
        const auto& tombstones = _document.getTextWithTombstones().getTombstones();
        result._charactersCount = index.getCharactersCount();
        result._paragraphsCount = index.getParagraphsCount();
        result._slotsCount = index.getElementsCount() + tombstones.getTombstonesCount();
        result._deadRangesCount = tombstones.getRangesCount();
    }

    const Trace& _trace;
    const Options& _options;
    DOM::Document _document;
    std::shared_ptr<DOMCollaboration::TextDocumentAdapter> _adapter;
    std::shared_ptr<CollaborationSession::ObserverFanOut> _notifications;
    DOMCollaboration::DocumentOperationExecutor _executor;
    CollaborationSession::TextEditor _editor;
    PlainText _plainText;
    unsigned long _operationsCount = 0;
    Operations _operations;
};

} // namespace

std::string describeDifference(const std::string& actual, const std::string& expected)
{
    std::size_t byte = 0;
    while (byte < actual.size() && byte < expected.size() && actual[byte] == expected[byte])
    {
        ++byte;
    }
    const unsigned long character = countCharacters(std::string_view(actual).substr(0, byte));
    return "it has " + std::to_string(countCharacters(actual)) + " characters, not " +
           std::to_string(countCharacters(expected)) + ", and differs from character " + std::to_string(character) +
           " on";
}

ReplayResult replay(const Trace& trace, const Options& options)
{
    ReplayResult result;
    result._name = trace._name;
    for (unsigned long round = 0; round < options._repeatCount; ++round)
    {
        Player(trace, options).play(result);
    }
    return result;
}

} // namespace ZemReplay
