// How characters and paragraphs look, by what was typed and set.

#include "Judge.h"

#include <algorithm>

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

} // namespace

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

} // namespace ZemFarm
