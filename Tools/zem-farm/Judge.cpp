#include "Judge.h"

#include <algorithm>
#include <iterator>
#include <queue>
#include <set>

namespace ZemFarm
{

namespace
{

/// Links and comments don't grow at their ends: what is typed has them if it is typed between two characters that do.
bool isOfBothSides(const std::string& field)
{
    return field == "link" || field.rfind("comment ", 0) == 0;
}

/// How the field of a paragraph's mark begins, which says how what is typed in an empty paragraph looks.
const std::string markPrefix = "mark ";

bool hasBefore(const std::string& name, const std::string& prefix)
{
    return name.rfind(prefix, 0) == 0;
}

std::string print(const std::vector<std::string>& values)
{
    std::string line;
    for (const std::string& value : values)
    {
        line += (line.empty() ? "\"" : " or \"") + value + '"';
    }
    return line;
}

} // namespace

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

void Judge::giveLook(Character character, const DeedState& deed)
{
    if (isBreak(character))
    {
        giveParagraphLook(character, deed);
    }
    else
    {
        giveLookOfModel(character);
        giveLinks(character, deed);
    }
    addConcurrentSettings(character, deed);
}

void Judge::giveLookOfModel(Character character)
{
    const Character model = _characters[character]._model;
    if (!isBreak(model))
    {
        for (const auto& [field, values] : _characters[model]._fields)
        {
            if (!isOfBothSides(field))
            {
                _characters[character]._fields[field] = values;
            }
        }
        return;
    }
    for (const auto& [field, values] : findParagraphLook(model))
    {
        if (hasBefore(field, markPrefix))
        {
            _characters[character]._fields[field.substr(markPrefix.size())] = values;
        }
    }
}

/// A paragraph's second half looks like the first.
void Judge::giveParagraphLook(Character character, const DeedState& deed)
{
    _characters[character]._fields = findParagraphLook(deed._left);
}

/// The look of the paragraph that a character is in, or was: all looks if nobody said which of several.
std::map<std::string, Judge::Values> Judge::findParagraphLook(Character character) const
{
    std::map<std::string, Values> look;
    const std::vector<Paragraph> paragraphs = findParagraphs();
    const auto place = std::find(_order.begin(), _order.end(), character);
    const auto found = std::find_if(paragraphs.rbegin(), paragraphs.rend(),
                                    [&](const Paragraph& paragraph)
                                    {
                                        const Character begin = paragraph._begins.front();
                                        return std::find(_order.begin(), place, begin) != place || begin == character;
                                    });
    bool isFirst = true;
    for (const Character begin : findLooks(*found))
    {
        for (const auto& [field, values] : _characters[begin]._fields)
        {
            Values& given = look[field];
            if (!isFirst)
            {
                given.push_back({noDeed, 0, "", false, Value::State::Either});
            }
            for (Value value : values)
            {
                const bool isOn = value._state == Value::State::On;
                value._state = isOn && !isFirst ? Value::State::Either : value._state;
                given.push_back(value);
            }
        }
        isFirst = false;
    }
    return look;
}

void Judge::giveLinks(Character character, const DeedState& deed)
{
    const auto isBeside = [&](Character other) { return other > textEnd && !isBreak(other); };
    if (!isBeside(deed._left) || !isBeside(deed._right))
    {
        return;
    }
    const auto getSeen = [&](Character other, const std::string& field)
    {
        std::string seen;
        for (const Value& value : _characters[other]._fields[field])
        {
            seen = isInForce(value._setting, deed._view) ? value._value : seen;
        }
        return seen;
    };
    const std::map<std::string, Values> fields = _characters[deed._left]._fields;
    for (const auto& [field, values] : fields)
    {
        if (!isOfBothSides(field))
        {
            continue;
        }
        const std::vector<std::string> left = findAllowed(deed._left, field);
        const bool wasSame = getSeen(deed._left, field) == getSeen(deed._right, field);
        const bool isSame = left.size() == 1 && left == findAllowed(deed._right, field);
        if (!wasSame && !isSame)
        {
            continue;
        }
        Values& given = _characters[character]._fields[field];
        given = values;
        for (Value& value : given)
        {
            value._isSure = value._isSure && isSame && wasSame;
            const bool isOn = value._state == Value::State::On;
            value._state = isOn && !value._isSure ? Value::State::Either : value._state;
        }
    }
}

/// Settings at the same moment, that came to the server before the character did.
void Judge::addConcurrentSettings(Character character, const DeedState& deed)
{
    const std::vector<bool> inFront = findAll(character, &CharacterState::_precursors);
    const std::vector<bool> behind = findAll(character, &CharacterState::_followers);
    for (const Deed played : _played)
    {
        const DeedState& setting = _deeds[played];
        if (setting._fields.empty() || knows(deed._view, played) || setting._isOfParagraphs != isBreak(character))
        {
            continue;
        }
        const bool isInside = inFront[setting._first] && behind[setting._end];
        const bool isOutside = behind[setting._first] || inFront[setting._end];
        if (isInside)
        {
            addValues(character, played, true);
            continue;
        }
        if (!isOutside)
        {
            addValues(character, played, false);
        }
        // Where a setting ends exactly there, either is right.
        for (auto& [field, values] : _characters[character]._fields)
        {
            for (Value& value : values)
            {
                value._isSure = value._isSure && value._setting != played;
                const bool becomesUnsure = value._setting == played && value._state == Value::State::On;
                value._state = becomesUnsure ? Value::State::Either : value._state;
            }
        }
    }
}

/// Which characters get a setting, of all that are there when it comes to the server: those that its author saw, and
/// those that came in between.
std::vector<Judge::Answer> Judge::findCovered(Deed deed) const
{
    const DeedState& setting = _deeds[deed];
    const std::vector<bool> behindFirst = findAll(setting._first, &CharacterState::_followers);
    const std::vector<bool> inFrontOfFirst = findAll(setting._first, &CharacterState::_precursors);
    const std::vector<bool> inFrontOfEnd = findAll(setting._end, &CharacterState::_precursors);
    const std::vector<bool> behindEnd = findAll(setting._end, &CharacterState::_followers);
    std::vector<Answer> covered(_characters.size(), Answer::No);
    for (Character character = 0; character < _characters.size(); ++character)
    {
        if (knows(_serverView, _characters[character]._insertion))
        {
            covered[character] = covers(setting, character, behindFirst, inFrontOfFirst, inFrontOfEnd, behindEnd);
        }
    }
    return covered;
}

Judge::Answer Judge::covers(const DeedState& setting, Character character, const std::vector<bool>& behindFirst,
                            const std::vector<bool>& inFrontOfFirst, const std::vector<bool>& inFrontOfEnd,
                            const std::vector<bool>& behindEnd) const
{
    const Deed deed = static_cast<Deed>(&setting - _deeds.data());
    const Deed insertion = _characters[character]._insertion;
    const bool isLater = insertion != noDeed && knows(_deeds[insertion]._view, deed);
    if (isLater)
    {
        return Answer::No;
    }
    const bool isSet = std::find(setting._set.begin(), setting._set.end(), character) != setting._set.end();
    const bool isSeen = isLive(character, setting._view);
    if (isSet || isSeen)
    {
        return isSet ? Answer::Yes : Answer::No;
    }
    if (inFrontOfFirst[character] || behindEnd[character])
    {
        return Answer::No;
    }
    // Of what was deleted for its author nobody said.
    const bool isInside = behindFirst[character] && inFrontOfEnd[character] && !isKnown(setting._view, character);
    return isInside ? Answer::Yes : Answer::Maybe;
}

void Judge::apply(Deed deed)
{
    if (_deeds[deed]._isOfParagraphs)
    {
        applyToParagraphs(deed);
        return;
    }
    const std::vector<Answer> covered = findCovered(deed);
    for (const Character character : _order)
    {
        const CharacterState& state = _characters[character];
        if (character <= textEnd || isBreak(character) || !knows(_serverView, state._insertion))
        {
            continue;
        }
        if (covered[character] != Answer::No)
        {
            addValues(character, deed, covered[character] == Answer::Yes);
        }
    }
    // What was typed at the same moment looks like the character that it was typed behind; where the setting ends
    // exactly there, either is right.
    for (Character character = textEnd + 1; character < _characters.size(); ++character)
    {
        const CharacterState& state = _characters[character];
        const bool isThere = knows(_serverView, state._insertion) && !isKnown(_deeds[deed]._view, character);
        if (!isThere || isBreak(character) || covered[character] == Answer::Yes)
        {
            continue;
        }
        for (const auto& [field, value] : _deeds[deed]._fields)
        {
            const auto& fields = _characters[state._model]._fields;
            const auto found = fields.find(field);
            const bool modelHasIt = !isOfBothSides(field) && found != fields.end() && !isBreak(state._model) &&
                                    std::any_of(found->second.begin(), found->second.end(),
                                                [&](const Value& other) { return other._setting == deed; });
            if (modelHasIt)
            {
                addValues(character, deed, false);
            }
        }
    }
}

/// A setting of paragraphs holds for each that has a character of the stretch, whichever of several that were joined it
/// looks like.
void Judge::applyToParagraphs(Deed deed)
{
    const std::vector<Answer> covered = findCovered(deed);
    for (const Paragraph& paragraph : findParagraphs())
    {
        bool isOfParagraph = false;
        for (const Character begin : paragraph._begins)
        {
            isOfParagraph = isOfParagraph || covered[begin] != Answer::No;
            if (covered[begin] != Answer::No)
            {
                addValues(begin, deed, covered[begin] == Answer::Yes);
            }
        }
        const bool hasCharacter =
            std::any_of(paragraph._characters.begin(), paragraph._characters.end(),
                        [&](Character character) { return !isBreak(character) && covered[character] == Answer::Yes; });
        for (const Character looks : findLooks(paragraph))
        {
            if (hasCharacter || isOfParagraph)
            {
                addValues(looks, deed, hasCharacter || covered[paragraph._begins.front()] == Answer::Yes);
            }
        }
    }
    // In an empty paragraph, what is typed looks like the mark.
    for (Character character = textEnd + 1; character < _characters.size(); ++character)
    {
        const CharacterState& state = _characters[character];
        const bool isThere = knows(_serverView, state._insertion) && !isKnown(_deeds[deed]._view, character);
        if (!isThere || isBreak(character) || !isBreak(state._model) || covered[state._model] == Answer::No)
        {
            continue;
        }
        for (const auto& [field, value] : _deeds[deed]._fields)
        {
            if (hasBefore(field, markPrefix))
            {
                Values& values = _characters[character]._fields[field.substr(markPrefix.size())];
                values.push_back({deed, _deeds[deed]._place, value, false, Value::State::Either});
            }
        }
    }
}

/// Gives a character what a setting sets, in its place among all settings.
void Judge::addValues(Character character, Deed deed, bool isSure)
{
    for (const auto& [field, text] : _deeds[deed]._fields)
    {
        Values& values = _characters[character]._fields[field];
        const auto same =
            std::find_if(values.begin(), values.end(), [&](const Value& value) { return value._setting == deed; });
        if (same != values.end())
        {
            same->_isSure = same->_isSure || isSure;
            continue;
        }
        const auto later = std::find_if(values.begin(), values.end(),
                                        [&](const Value& value) { return value._place > _deeds[deed]._place; });
        values.insert(later, {deed, _deeds[deed]._place, text, isSure, Value::State::On});
    }
    updateValues(deed);
}

/// Puts the values that a setting gave into force, or out of force. A value that something lay over when it went may be
/// what the field goes back to.
void Judge::updateValues(Deed deed)
{
    const bool isOn = isInForce(deed, _serverView);
    for (CharacterState& state : _characters)
    {
        for (auto& [field, values] : state._fields)
        {
            for (std::size_t index = 0; index < values.size(); ++index)
            {
                Value& value = values[index];
                if (value._setting != deed)
                {
                    continue;
                }
                const bool wasOff = value._state == Value::State::Off;
                const bool isBelow = index + 1 < values.size() && !wasOff;
                value._state = isOn      ? value._isSure ? Value::State::On : Value::State::Either
                               : isBelow ? Value::State::Either
                                         : Value::State::Off;
            }
        }
    }
}

std::vector<Judge::Paragraph> Judge::findParagraphs() const
{
    std::vector<Paragraph> paragraphs;
    for (const Character character : _order)
    {
        const bool begins = character == textBegin || (isBreak(character) && isLive(character, _serverView));
        if (begins)
        {
            paragraphs.emplace_back();
            paragraphs.back()._begins.push_back(character);
        }
        else if (isBreak(character) && knows(_serverView, _characters[character]._insertion))
        {
            paragraphs.back()._begins.push_back(character);
        }
        else if (character != textEnd && isLive(character, _serverView))
        {
            paragraphs.back()._characters.push_back(character);
        }
    }
    return paragraphs;
}

/// The end whose look a paragraph has; several if nobody said which.
std::vector<Judge::Character> Judge::findLooks(const Paragraph& paragraph) const
{
    std::vector<Character> looks;
    std::copy_if(paragraph._begins.begin(), paragraph._begins.end(), std::back_inserter(looks),
                 [&](Character begin) { return looksOn(begin); });
    return looks.empty() ? paragraph._begins : looks;
}

std::vector<std::string> Judge::findAllowed(Character character, const std::string& field) const
{
    const auto found = _characters[character]._fields.find(field);
    const Values values = found == _characters[character]._fields.end() ? Values() : found->second;
    std::vector<std::string> allowed;
    for (auto value = values.rbegin(); value != values.rend(); ++value)
    {
        if (value->_state != Value::State::Off)
        {
            allowed.push_back(value->_value);
        }
        if (value->_state == Value::State::On)
        {
            return allowed;
        }
    }
    allowed.emplace_back();
    return allowed;
}

void Judge::compareText(const ShownText& text, const View& view) const
{
    identify(text, view);
}

void Judge::compare(const ShownText& text)
{
    const std::vector<Character> characters = identify(text, _serverView);
    compareTogether(characters);
    keepOrder(characters);
    compareLooks(text, characters);
}

/// What somebody saw in some order stays in it.
void Judge::keepOrder(const std::vector<Character>& characters)
{
    Character last = textBegin;
    for (const Character character : characters)
    {
        const std::vector<Character>& followers = _characters[last]._followers;
        if (std::find(followers.begin(), followers.end(), character) == followers.end())
        {
            order(last, character);
        }
        last = character;
    }
    sort();
}

/// What one typed in one go stays together.
void Judge::compareTogether(const std::vector<Character>& characters) const
{
    std::map<Character, std::size_t> places;
    for (std::size_t index = 0; index < characters.size(); ++index)
    {
        places.emplace(characters[index], index);
    }
    for (const Deed deed : _played)
    {
        const std::vector<Character>& inserted = _deeds[deed]._inserted;
        std::vector<std::size_t> at;
        for (const Character character : inserted)
        {
            if (places.count(character) > 0)
            {
                at.push_back(places.at(character));
            }
        }
        if (at.size() < 2 || at.back() - at.front() + 1 == at.size())
        {
            continue;
        }
        const std::vector<bool> behind = findAll(inserted.front(), &CharacterState::_followers);
        const std::vector<bool> inFront = findAll(inserted.back(), &CharacterState::_precursors);
        for (std::size_t index = at.front(); index <= at.back(); ++index)
        {
            const Character character = characters[index];
            const bool isOwn = std::find(at.begin(), at.end(), index) != at.end();
            const Deed other = _characters[character]._insertion;
            // Who saw it may put something there.
            const bool sawIt = other != noDeed && knows(_deeds[other]._view, deed);
            if (!isOwn && !sawIt && !(behind[character] && inFront[character]))
            {
                std::string typed;
                for (const Character own : inserted)
                {
                    typed += isBreak(own) ? "/" : _characters[own]._value;
                }
                throw Misjudged('"' + _characters[character]._value +
                                "\" stands amid what somebody typed in one go, \"" + typed + '"');
            }
        }
    }
}

void Judge::compareLooks(const ShownText& text, const std::vector<Character>& characters)
{
    std::map<Character, Paragraph> paragraphs;
    for (Paragraph& paragraph : findParagraphs())
    {
        const Character begin = paragraph._begins.front();
        paragraphs.emplace(begin, std::move(paragraph));
    }
    compareFields("the first paragraph", findLooks(paragraphs.at(textBegin)), text._firstParagraph);
    for (std::size_t index = 0; index < characters.size(); ++index)
    {
        const ShownCharacter& shown = text._characters[index];
        if (isBreak(characters[index]))
        {
            const bool isEmpty = index + 1 == characters.size() || isBreak(characters[index + 1]);
            const std::string what =
                isEmpty ? "an empty paragraph" : "the paragraph of \"" + text._characters[index + 1]._value + '"';
            compareFields(what, findLooks(paragraphs.at(characters[index])), shown._fields);
        }
        else
        {
            compareFields('"' + shown._value + '"', {characters[index]}, shown._fields);
        }
    }
}

void Judge::compareFields(const std::string& what, const std::vector<Character>& looks, const Fields& shown)
{
    std::set<std::string> names;
    for (const auto& [field, value] : shown)
    {
        names.insert(field);
    }
    for (const Character character : looks)
    {
        for (const auto& [field, values] : _characters[character]._fields)
        {
            names.insert(field);
        }
    }
    for (const std::string& field : names)
    {
        const auto found = shown.find(field);
        const std::string value = found == shown.end() ? std::string() : found->second;
        std::vector<std::string> allowed;
        for (const Character character : looks)
        {
            const std::vector<std::string> more = findAllowed(character, field);
            allowed.insert(allowed.end(), more.begin(), more.end());
        }
        if (std::find(allowed.begin(), allowed.end(), value) == allowed.end())
        {
            throw Misjudged(field + " of " + what + " is \"" + value + "\" in place of " + print(allowed));
        }
        if (looks.size() == 1)
        {
            keep(looks.front(), field, value);
        }
    }
}

/// Of several right values, what the document has is the right one from now on.
void Judge::keep(Character character, const std::string& field, const std::string& shown)
{
    Values& values = _characters[character]._fields[field];
    for (auto value = values.rbegin(); value != values.rend(); ++value)
    {
        if (value->_state == Value::State::Off)
        {
            continue;
        }
        const bool isShown = value->_value == shown;
        value->_state = isShown ? Value::State::On : Value::State::Off;
        if (isShown)
        {
            return;
        }
    }
}

} // namespace ZemFarm
