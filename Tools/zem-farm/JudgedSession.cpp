#include "JudgedSession.h"

#include "Random.h"
#include "ShownDocument.h"
#include "StartDocument.h"
#include "Texts.h"

#include <algorithm>
#include <utility>

namespace ZemFarm
{

using namespace Zem::CollaborationSession;

namespace
{

/// Where the characters of so many bytes begin that people read; and how many there are.
struct CodePoints
{
    unsigned long _first;
    unsigned long _count;
};

constexpr CodePoints codePoints[] = {{'!', '~' - '!' + 1}, {0xA1, 0x2F0 - 0xA1}, {0x4E00, 0x5000}, {0x10400, 0x8000}};

std::string encode(unsigned long codePoint, std::size_t size)
{
    if (size == 1)
    {
        return std::string(1, static_cast<char>(codePoint));
    }
    constexpr unsigned long restBits = 6;
    std::string bytes;
    for (std::size_t rest = 1; rest < size; ++rest, codePoint >>= restBits)
    {
        bytes.insert(bytes.begin(), static_cast<char>(0x80U | (codePoint & 0x3FU)));
    }
    const unsigned long lead = (0xF00U >> size) & 0xFFU;
    return bytes.insert(0, 1, static_cast<char>(lead | codePoint));
}

} // namespace

std::string UniqueCharacters::replace(std::string_view text)
{
    std::string unique;
    for (const std::string& character : splitCharacters(text))
    {
        unique += character == "\n" ? character : take(character.size());
    }
    return unique;
}

/// Where there are none of that size left, one that is longer.
std::string UniqueCharacters::take(std::size_t size)
{
    const CodePoints& points = codePoints[size - 1];
    unsigned long& next = _next[size];
    return next < points._count ? encode(points._first + next++, size) : take(size + 1);
}

JudgedSession::JudgedSession(const Setup& setup)
    : _startDocument(makeJudgedDocument(setup, [this](const std::string& text) { return _characters.replace(text); }))
    , _judge(showText(_startDocument.getTextWithTombstones()))
{
}

void JudgedSession::compare(const Zem::DOM::Document& document)
{
    _judge.compare(showText(document.getTextWithTombstones()));
}

void JudgedSession::take(std::size_t revision, const std::vector<Judge::Deed>& deeds)
{
    _history.resize(std::max(_history.size(), revision));
    _history[revision - 1] = deeds;
    for (const Judge::Deed deed : deeds)
    {
        _judge.play(deed);
    }
}

Witness::Witness(JudgedSession& session, const Client& client)
    : _session(session)
    , _client(client)
{
}

std::string Witness::makeUnique(std::string_view text)
{
    return _session._characters.replace(text);
}

ShownText Witness::look() const
{
    ShownText text = showText(_client.getDocument().getTextWithTombstones());
    _session._judge.compareText(text, makeView());
    return text;
}

/// What is in the history as far as the client has it, and what it did itself.
Judge::View Witness::makeView() const
{
    Judge::View view;
    const auto add = [&](const Deeds& deeds)
    {
        for (const Judge::Deed deed : deeds)
        {
            view.resize(std::max(view.size(), deed + 1));
            view[deed] = true;
        }
    };
    const std::size_t revision = std::min<std::size_t>(_client.getRevision(), _session._history.size());
    for (std::size_t index = 0; index < revision; ++index)
    {
        add(_session._history[index]);
    }
    for (const auto& [action, deeds] : _own)
    {
        add(*deeds);
    }
    return view;
}

void Witness::addOwn(Deeds deeds)
{
    const ActionID action = _client.getLastAction();
    _own[action] = std::make_shared<const Deeds>(std::move(deeds));
    _unsent.push_back(action);
}

void Witness::tellReplacement(const ShownText& text, unsigned long begin, unsigned long end, std::string_view inserted)
{
    addOwn({_session._judge.replace(text, makeView(), {begin, end, splitCharacters(inserted)})});
}

void Witness::tellSetting(const ShownText& text, unsigned long begin, unsigned long end, bool isOfParagraphs,
                          const LookChange& change)
{
    addOwn({_session._judge.set(text, makeView(), {begin, end, isOfParagraphs, showFields(change, isOfParagraphs)})});
}

void Witness::tellUndoing()
{
    const ActionID action = _client.getLastAction();
    const ActionID undone = _client.getUndone(action);
    const auto found = _own.find(undone);
    if (found == _own.end())
    {
        throw Misjudged("what was undone is no own action");
    }
    const Judge::View view = makeView();
    Deeds undos;
    for (const Judge::Deed deed : *found->second)
    {
        undos.push_back(_session._judge.undo(view, deed));
    }
    _undone[action] = undone;
    addOwn(std::move(undos));
}

/// Whether an action stands as it was done, or was done again; an undo is none.
bool Witness::standsFor(ActionID action) const
{
    return _undone.count(action) == 0 && _session._judge.isInForce(_own.at(action)->front(), makeView());
}

/// Of what was passed over, nothing may show.
void Witness::requireNothingToUndo(ActionID behind)
{
    const Judge::View view = makeView();
    for (auto own = _own.upper_bound(behind); own != _own.end(); ++own)
    {
        if (standsFor(own->first) && _session._judge.showsUndo(view, *own->second))
        {
            throw Misjudged("action " + std::to_string(own->first) + " could have been undone");
        }
    }
}

void Witness::tellUndo()
{
    ActionID done = _client.getUndone(_client.getLastAction());
    for (auto found = _undone.find(done); found != _undone.end(); found = _undone.find(done))
    {
        done = found->second;
    }
    requireNothingToUndo(done);
    tellUndoing();
}

void Witness::tellNoUndo()
{
    requireNothingToUndo(0);
}

/// Undone already, be it that it was done again then, or nothing of it is left to undo.
void Witness::tellNoUndoOf(ActionID action)
{
    const auto own = _own.find(action);
    const Judge::View view = makeView();
    const bool wasUndone =
        std::any_of(_undone.begin(), _undone.end(),
                    [&](const auto& undone)
                    {
                        const auto other = _own.find(undone.second);
                        return own != _own.end() && other != _own.end() && other->second == own->second;
                    });
    const bool isThere = own != _own.end() && !wasUndone && _session._judge.isInForce(own->second->front(), view);
    if (isThere && _session._judge.showsUndo(view, *own->second))
    {
        throw Misjudged("action " + std::to_string(action) + " could have been undone");
    }
}

/// Actions of which nothing is left aren't sent, and keystrokes go out as one.
void Witness::noteBatch(const ClientBatch& batch)
{
    if (_sent.count(batch._firstNumber) > 0)
    {
        return;
    }
    const std::vector<ActionRange> ranges = _client.getPendingActions();
    std::size_t index = 0;
    std::map<ActionID, std::shared_ptr<Deeds>> joined;
    for (const ActionID action : std::exchange(_unsent, {}))
    {
        for (; index < ranges.size() && ranges[index]._last < action; ++index)
        {
        }
        if (index == ranges.size() || action < ranges[index]._first)
        {
            _own.erase(action);
            _undone.erase(action);
            continue;
        }
        auto& deeds = joined[ranges[index]._last];
        deeds = deeds ? deeds : std::make_shared<Deeds>();
        const auto own = _own.at(action);
        deeds->insert(deeds->end(), own->begin(), own->end());
        _own[action] = deeds;
        _sent[batch._firstNumber + index] = deeds;
    }
}

void Witness::noteArrival(const ClientBatch& batch, std::size_t revisionBefore, std::size_t revisionAfter)
{
    const std::size_t count = revisionAfter - revisionBefore;
    const unsigned long first = batch._firstNumber + batch._actions.size() - count;
    for (std::size_t index = 0; index < count; ++index)
    {
        _session.take(revisionBefore + index + 1, *_sent.at(first + index));
    }
}

} // namespace ZemFarm
