// What everybody sees in the end, beside what should be.

#include "Judge.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace ZemFarm
{

namespace
{

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
