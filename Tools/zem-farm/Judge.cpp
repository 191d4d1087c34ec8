#include "Judge.h"

#include <algorithm>
#include <queue>
#include <set>

namespace ZemFarm
{

std::string print(const ShownText& text)
{
    std::string line;
    for (const ShownCharacter& character : text._characters)
    {
        line += character._value == "\n" ? "/" : character._value;
    }
    return line;
}

Judge::Judge(const ShownText& start)
{
    _characters.resize(2);
    _order = {textBegin, textEnd};
    const auto give = [this](Character character, const Fields& fields)
    {
        for (const auto& [field, value] : fields)
        {
            _characters[character]._fields[field].push_back({noDeed, 0, value});
        }
    };
    _characters[textBegin]._value = "\n";
    give(textBegin, start._firstParagraph);
    Character last = textBegin;
    for (const ShownCharacter& shown : start._characters)
    {
        last = addCharacter(shown._value, noDeed, last, textEnd);
        give(last, shown._fields);
    }
}

Judge::Character Judge::addCharacter(std::string value, Deed insertion, Character left, Character right)
{
    const Character character = _characters.size();
    _characters.emplace_back();
    _characters.back()._value = value;
    _characters.back()._insertion = insertion;
    if (value != "\n")
    {
        _byValue.emplace(std::move(value), character);
    }
    _order.insert(std::find(_order.begin(), _order.end(), right), character);
    order(left, character);
    order(character, right);
    return character;
}

void Judge::order(Character first, Character second)
{
    _characters[first]._followers.push_back(second);
    _characters[second]._precursors.push_back(first);
}

/// Brings the list into an order that agrees with all that is known; what is free stays where it is.
void Judge::sort()
{
    std::vector<std::size_t> place(_characters.size());
    for (std::size_t index = 0; index < _order.size(); ++index)
    {
        place[_order[index]] = index;
    }
    std::vector<std::size_t> waitsFor(_characters.size());
    std::priority_queue<std::pair<std::size_t, Character>, std::vector<std::pair<std::size_t, Character>>,
                        std::greater<>>
        free;
    for (Character character = 0; character < _characters.size(); ++character)
    {
        waitsFor[character] = _characters[character]._precursors.size();
        if (waitsFor[character] == 0)
        {
            free.emplace(place[character], character);
        }
    }
    std::vector<Character> sorted;
    for (; !free.empty();)
    {
        const Character character = free.top().second;
        free.pop();
        sorted.push_back(character);
        for (const Character follower : _characters[character]._followers)
        {
            if (--waitsFor[follower] == 0)
            {
                free.emplace(place[follower], follower);
            }
        }
    }
    if (sorted.size() != _order.size())
    {
        throw Misjudged("nobody can put the characters in an order that all agree to");
    }
    _order = std::move(sorted);
}

/// A flag for each character that surely stands behind, or in front of, another.
std::vector<bool> Judge::findAll(Character from, std::vector<Character> CharacterState::*way) const
{
    std::vector<bool> found(_characters.size());
    std::vector<Character> rest = {from};
    while (!rest.empty())
    {
        const Character character = rest.back();
        rest.pop_back();
        for (const Character next : _characters[character].*way)
        {
            if (!found[next])
            {
                found[next] = true;
                rest.push_back(next);
            }
        }
    }
    return found;
}

bool Judge::isBreak(Character character) const
{
    return _characters[character]._value == "\n";
}

bool Judge::knows(const View& view, Deed deed) const
{
    return deed == noDeed || (deed < view.size() && view[deed]);
}

bool Judge::isKnown(const View& view, Character character) const
{
    return knows(view, _characters[character]._insertion);
}

bool Judge::isInForce(Deed deed, const View& view) const
{
    if (deed == noDeed)
    {
        return true;
    }
    const std::vector<Deed>& undos = _deeds[deed]._undos;
    return knows(view, deed) &&
           std::none_of(undos.begin(), undos.end(), [&](Deed undo) { return isInForce(undo, view); });
}

bool Judge::isLive(Character character, const View& view) const
{
    const CharacterState& state = _characters[character];
    return isInForce(state._insertion, view) && std::none_of(state._deletions.begin(), state._deletions.end(),
                                                             [&](Deed deletion) { return isInForce(deletion, view); });
}

/// Whether the paragraph that an end begins has its look yet, whatever became of the end.
bool Judge::looksOn(Character paragraphEnd) const
{
    const CharacterState& state = _characters[paragraphEnd];
    return isInForce(state._insertion, _serverView) &&
           std::none_of(state._lookDeletions.begin(), state._lookDeletions.end(),
                        [&](Deed deletion) { return isInForce(deletion, _serverView); });
}

std::string Judge::printLive(const View& view) const
{
    std::string line;
    for (const Character character : _order)
    {
        const bool isShown = character > textEnd && isLive(character, view);
        line += !isShown ? "" : isBreak(character) ? "/" : _characters[character]._value;
    }
    return line;
}

/// The characters of a text. Ends of paragraphs look alike: that which is to come first is taken first.
std::vector<Judge::Character> Judge::identify(const ShownText& text, const View& view) const
{
    const auto fail = [&](const std::string& what)
    { throw Misjudged(what + ": \"" + print(text) + "\" in place of \"" + printLive(view) + '"'); };
    std::map<Character, std::size_t> waitsFor;
    for (const Character character : _order)
    {
        if (character > textEnd && isLive(character, view))
        {
            waitsFor.emplace(character, 0);
        }
    }
    std::map<Character, std::size_t> shownAt;
    for (std::size_t index = 0; index < text._characters.size(); ++index)
    {
        const std::string& value = text._characters[index]._value;
        const auto found = _byValue.find(value);
        if (value != "\n" && (found == _byValue.end() || waitsFor.count(found->second) == 0))
        {
            fail("there is \"" + value + '"');
        }
        if (value != "\n" && !shownAt.emplace(found->second, index).second)
        {
            fail("there is \"" + value + "\" twice");
        }
    }
    if (waitsFor.size() != text._characters.size())
    {
        fail("something is missing or too much");
    }
    // Who must come directly behind whom, of those that live.
    std::map<Character, std::set<Character>> followers;
    for (const auto& [character, count] : waitsFor)
    {
        std::vector<Character> rest = {character};
        std::set<Character> passed;
        while (!rest.empty())
        {
            const Character at = rest.back();
            rest.pop_back();
            for (const Character next : _characters[at]._followers)
            {
                if (waitsFor.count(next) > 0)
                {
                    followers[character].insert(next);
                }
                else if (passed.insert(next).second)
                {
                    rest.push_back(next);
                }
            }
        }
    }
    for (const auto& [character, next] : followers)
    {
        for (const Character follower : next)
        {
            ++waitsFor[follower];
        }
    }
    const auto getDeadline = [&](Character character)
    {
        const std::vector<bool> behind = findAll(character, &CharacterState::_followers);
        std::size_t deadline = text._characters.size();
        for (const auto& [other, index] : shownAt)
        {
            deadline = behind[other] ? std::min(deadline, index) : deadline;
        }
        return deadline;
    };
    std::set<Character> freeBreaks;
    for (const auto& [character, count] : waitsFor)
    {
        if (count == 0 && isBreak(character))
        {
            freeBreaks.insert(character);
        }
    }
    std::vector<Character> identified;
    for (const ShownCharacter& shown : text._characters)
    {
        Character character = textEnd;
        if (shown._value != "\n")
        {
            character = _byValue.at(shown._value);
            if (waitsFor.at(character) > 0)
            {
                fail('"' + shown._value + "\" stands too far in front");
            }
        }
        else if (freeBreaks.empty())
        {
            fail("a line break stands too far in front");
        }
        else
        {
            character = *freeBreaks.begin();
            if (freeBreaks.size() > 1)
            {
                character = *std::min_element(freeBreaks.begin(), freeBreaks.end(),
                                              [&](Character left, Character right)
                                              { return getDeadline(left) < getDeadline(right); });
            }
            freeBreaks.erase(character);
        }
        identified.push_back(character);
        for (const Character follower : followers[character])
        {
            if (--waitsFor.at(follower) == 0 && isBreak(follower))
            {
                freeBreaks.insert(follower);
            }
        }
    }
    return identified;
}

Judge::DeedState& Judge::addDeed(View view)
{
    _deeds.emplace_back();
    _deeds.back()._view = std::move(view);
    _serverView.resize(_deeds.size());
    return _deeds.back();
}

Judge::Deed Judge::replace(const ShownText& text, View view, const Replacement& replacement)
{
    const std::vector<Character> seen = identify(text, view);
    keepOrder(seen);
    const Deed deed = _deeds.size();
    DeedState& state = addDeed(std::move(view));
    state._left = replacement._begin == 0 ? textBegin : seen[replacement._begin - 1];
    state._right = replacement._end == seen.size() ? textEnd : seen[replacement._end];
    describeDeletion(seen, replacement, state);
    const Character model = findModel(seen, replacement);
    Character left = state._left;
    for (const std::string& value : replacement._inserted)
    {
        left = addCharacter(value, deed, left, state._right);
        _characters[left]._model = model;
        state._inserted.push_back(left);
    }
    return deed;
}

/// The paragraphs that a deletion joins look like the first of them. Whole ones go with their looks.
void Judge::describeDeletion(const std::vector<Character>& seen, const Replacement& replacement, DeedState& deed)
{
    if (replacement._begin == replacement._end)
    {
        return;
    }
    deed._deletes = true;
    const Deed number = _deeds.size() - 1;
    std::vector<Character> ends;
    for (std::size_t index = replacement._begin; index < replacement._end; ++index)
    {
        _characters[seen[index]]._deletions.push_back(number);
        if (isBreak(seen[index]))
        {
            ends.push_back(seen[index]);
        }
    }
    if (!ends.empty() && isBreak(deed._left) && ends.back() == seen[replacement._end - 1])
    {
        // What takes the place of whole paragraphs is typed into the next one.
        std::rotate(ends.rbegin(), ends.rbegin() + 1, ends.rend());
        std::swap(ends.front(), deed._left);
    }
    for (const Character end : ends)
    {
        _characters[end]._lookDeletions.push_back(number);
    }
}

/// The character that what is typed is to look like: the first that it replaces, or the one in front, or the one
/// behind, or the end that begins the empty paragraph.
Judge::Character Judge::findModel(const std::vector<Character>& seen, const Replacement& replacement) const
{
    const Character inFront = replacement._begin == 0 ? textBegin : seen[replacement._begin - 1];
    const Character behind = replacement._end == seen.size() ? textEnd : seen[replacement._end];
    if (replacement._begin < replacement._end && !isBreak(seen[replacement._begin]))
    {
        return seen[replacement._begin];
    }
    return !isBreak(inFront) ? inFront : behind != textEnd && !isBreak(behind) ? behind : inFront;
}

Judge::Deed Judge::set(const ShownText& text, View view, const Setting& setting)
{
    const std::vector<Character> seen = identify(text, view);
    keepOrder(seen);
    const Deed deed = _deeds.size();
    DeedState& state = addDeed(std::move(view));
    state._fields = setting._fields;
    state._isOfParagraphs = setting._isOfParagraphs;
    std::size_t begin = setting._begin;
    std::size_t end = setting._end;
    if (setting._isOfParagraphs)
    {
        for (; begin > 0 && !isBreak(seen[begin - 1]); --begin)
        {
        }
        // The last character may be an end of the paragraph itself.
        for (end = std::max(begin, end > setting._begin ? end - 1 : end); end < seen.size() && !isBreak(seen[end]);
             ++end)
        {
        }
        state._first = begin == 0 ? textBegin : seen[begin - 1];
        state._set.push_back(state._first);
        state._end = end == seen.size() ? textEnd : seen[end];
    }
    else
    {
        state._first = seen[begin];
        state._end = seen[end - 1];
    }
    state._set.insert(state._set.end(), seen.begin() + static_cast<std::ptrdiff_t>(begin),
                      seen.begin() + static_cast<std::ptrdiff_t>(end));
    return deed;
}

Judge::Deed Judge::undo(View view, Deed undone)
{
    const Deed deed = _deeds.size();
    addDeed(std::move(view))._undone = undone;
    _deeds[undone]._undos.push_back(deed);
    return deed;
}

bool Judge::showsUndo(const View& view, const std::vector<Deed>& undone)
{
    const std::vector<bool> before = findLive(view);
    View known = view;
    const std::size_t count = _deeds.size();
    known.resize(count);
    for (const Deed deed : undone)
    {
        undo({}, deed);
        known.push_back(true);
    }
    const bool isShown = findLive(known) != before;
    for (const Deed deed : undone)
    {
        _deeds[deed]._undos.pop_back();
    }
    _deeds.resize(count);
    _serverView.resize(count);
    return isShown;
}

std::vector<bool> Judge::findLive(const View& view) const
{
    std::vector<bool> live(_characters.size());
    for (Character character = textEnd + 1; character < _characters.size(); ++character)
    {
        live[character] = isLive(character, view);
    }
    return live;
}

void Judge::play(Deed deed)
{
    _played.push_back(deed);
    _serverView[deed] = true;
    DeedState& state = _deeds[deed];
    state._place = _played.size();
    placeInserted(state);
    for (const Character character : state._inserted)
    {
        giveLook(character, state);
    }
    if (!state._fields.empty())
    {
        apply(deed);
    }
    Deed undone = deed;
    while (_deeds[undone]._undone != noDeed)
    {
        undone = _deeds[undone]._undone;
    }
    updateValues(undone);
    // Paragraphs that were joined have the settings that any of them was given at the same moment.
    for (const Deed earlier : _played)
    {
        const bool isJoining = state._deletes || state._undone != noDeed;
        if (isJoining && _deeds[earlier]._isOfParagraphs && !knows(state._view, earlier))
        {
            applyToParagraphs(earlier);
        }
    }
}

/// What came to the same place earlier stands in front. The place is the same unless something that its author knew to
/// be deleted lies there, too.
void Judge::placeInserted(const DeedState& deed)
{
    if (deed._inserted.empty())
    {
        return;
    }
    const std::vector<bool> behind = findAll(deed._left, &CharacterState::_followers);
    const std::vector<bool> notBehind = findAll(deed._left, &CharacterState::_precursors);
    const std::vector<bool> inFront = findAll(deed._right, &CharacterState::_precursors);
    const std::vector<bool> notInFront = findAll(deed._right, &CharacterState::_followers);
    std::vector<Character> there;
    for (Character character = textEnd + 1; character < _characters.size(); ++character)
    {
        const CharacterState& state = _characters[character];
        const bool isBound =
            character == deed._left || character == deed._right || notBehind[character] || notInFront[character];
        const bool isOwn = std::find(deed._inserted.begin(), deed._inserted.end(), character) != deed._inserted.end();
        if (isBound || isOwn || !knows(_serverView, state._insertion))
        {
            continue;
        }
        if (isKnown(deed._view, character))
        {
            return;
        }
        if (behind[character] && inFront[character])
        {
            there.push_back(character);
        }
    }
    for (const Character character : there)
    {
        order(character, deed._inserted.front());
    }
    sort();
}

} // namespace ZemFarm
