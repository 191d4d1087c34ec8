// What users do with the keyboard: typing, pasting, deleting, replacing, setting the look of a stretch.

#include "Generators.h"
#include "Texts.h"
#include "Values.h"

#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"

#include <algorithm>
#include <array>
#include <string>

namespace ZemFarm
{

using Zem::CollaborationSession::LookChange;
using Zem::CollaborationSession::Operations;
using Zem::DOMCollaboration::PropertyId;
namespace DOM = Zem::DOM;

namespace
{

/// A stretch of characters, a long one only where there is too much.
struct Stretch
{
    unsigned long _begin;
    unsigned long _end;
};

Stretch pickStretch(Editor& editor, Random& random)
{
    const unsigned long count = editor.getIndex().getCharactersCount();
    const unsigned long begin = random.pick(count + 1);
    constexpr unsigned long enough = 80;
    const unsigned long length = count > enough ? random.pick(count / 2) : random.pick(5);
    return {begin, std::min(count, begin + length)};
}

template<class Edit>
void editSomeText(Participant& author, Random& random, Edit edit)
{
    const Places places = findPlaces(author.getKind(), author.getDocument(), random);
    if (const TextPlace* place = pickText(places, random))
    {
        author.edit(place->_address, [&](Editor& editor) { return edit(editor); });
    }
}

/// Keystrokes, one operation each.
void type(Participant& author, Random& random)
{
    const Places places = findPlaces(author.getKind(), author.getDocument(), random);
    const TextPlace* place = pickText(places, random);
    if (!place)
    {
        return;
    }
    unsigned long offset = ~0UL;
    for (unsigned long count = 1 + random.pick(4); count > 0; --count)
    {
        author.edit(place->_address,
                    [&](Editor& editor)
                    {
                        const unsigned long charactersCount = editor.getIndex().getCharactersCount();
                        offset = offset == ~0UL ? random.pick(charactersCount + 1) : std::min(offset, charactersCount);
                        Operations typed = editor.replace(offset, offset, makeWords(random, 1));
                        ++offset;
                        return typed;
                    });
    }
}

void breakLine(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](Editor& editor)
                 {
                     const unsigned long offset = random.pick(editor.getIndex().getCharactersCount() + 1);
                     return editor.replace(offset, offset, "\n");
                 });
}

std::string makePaste(Random& random)
{
    std::string paste;
    for (unsigned long count = random.pick(3); count > 0; --count)
    {
        paste += (random.isOnceIn(3) ? "" : makeWords(random, 6)) + '\n';
    }
    return paste + makeWords(random, 6);
}

void paste(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](Editor& editor)
                 {
                     const unsigned long offset = random.pick(editor.getIndex().getCharactersCount() + 1);
                     return editor.replace(offset, offset, makePaste(random));
                 });
}

void erase(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](Editor& editor)
                 {
                     const Stretch stretch = pickStretch(editor, random);
                     return editor.replace(stretch._begin, stretch._end, "");
                 });
}

void replace(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](Editor& editor)
                 {
                     const Stretch stretch = pickStretch(editor, random);
                     return editor.replace(stretch._begin, stretch._end,
                                           random.isOnceIn(3) ? makePaste(random) : makeWords(random, 4));
                 });
}

void formatRuns(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](Editor& editor)
                 {
                     const Stretch stretch = pickStretch(editor, random);
                     const PropertyChange change = makeChange<PropertyId::RunPropertyId>(nullptr, makeRunProps(random));
                     return editor.setRunProperty(stretch._begin, stretch._end, change._property, change._newValue);
                 });
}

void formatParagraphs(Participant& author, Random& random)
{
    editSomeText(
        author, random,
        [&](Editor& editor)
        {
            const Stretch stretch = pickStretch(editor, random);
            const PropertyChange change =
                random.isOnceIn(2) ? makeChange<PropertyId::ParagraphRunPropertyId>(nullptr, makeRunProps(random))
                                   : makeChange<PropertyId::ParaPropertyId>(nullptr, makeParaProps(random));
            return editor.setParagraphProperty(stretch._begin, stretch._end, change._property, change._newValue);
        });
}

LookChange makeRunLook(Random& random)
{
    switch (random.pick(5))
    {
    case 0:
        return LookChange::clearField(&DOM::RunProps::_weight);
    case 1:
        return LookChange::setField(&DOM::RunProps::_slant, DOM::FontSlant::Italic);
    case 2:
        return LookChange::clearField(&DOM::RunProps::_fontSize);
    case 3:
        return LookChange::setField(&DOM::RunProps::_fontSize, static_cast<float>(10 + random.pick(3)));
    default:
        return LookChange::setField(&DOM::RunProps::_weight,
                                    random.isOnceIn(2) ? DOM::FontWeight::Bold : DOM::FontWeight::Light);
    }
}

LookChange makeParagraphLook(Random& random)
{
    switch (random.pick(4))
    {
    case 0:
        return LookChange::clearField(&DOM::ParaProps::_alignment);
    case 1:
        return LookChange::setField(&DOM::ParaProps::_leftIndent, static_cast<float>(random.pick(3)));
    case 2:
        return LookChange::setField(PropertyId::ParagraphRunPropertyId, &DOM::RunProps::_weight, DOM::FontWeight::Bold);
    default:
        return LookChange::setField(&DOM::ParaProps::_alignment, random.isOnceIn(2) ? DOM::ParagraphAlignment::Center
                                                                                    : DOM::ParagraphAlignment::Justify);
    }
}

void setRunLook(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](Editor& editor)
                 {
                     const Stretch stretch = pickStretch(editor, random);
                     return editor.setRunLook(stretch._begin, stretch._end, makeRunLook(random));
                 });
}

void setParagraphLook(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](Editor& editor)
                 {
                     const Stretch stretch = pickStretch(editor, random);
                     return editor.setParagraphLook(stretch._begin, stretch._end, makeParagraphLook(random));
                 });
}

void setLink(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](Editor& editor)
                 {
                     const Stretch stretch = pickStretch(editor, random);
                     return editor.setLink(stretch._begin, stretch._end, makeHyperlink(random));
                 });
}

void comment(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](Editor& editor)
                 {
                     const Stretch stretch = pickStretch(editor, random);
                     const Zem::UUID uuid = makeUUID(random);
                     return random.isOnceIn(3) ? editor.removeComment(stretch._begin, stretch._end, uuid)
                                               : editor.addComment(stretch._begin, stretch._end, uuid);
                 });
}

} // namespace

Generators makeTextEdits()
{
    return {{"type", 12, isForAll, type},
            {"break-line", 4, isForAll, breakLine},
            {"paste", 6, isForAll, paste},
            {"erase", 12, isForAll, erase},
            {"replace", 6, isForAll, replace},
            {"format-runs", 5, isForAll, formatRuns},
            {"format-paragraphs", 4, isForAll, formatParagraphs},
            {"look-of-runs", 5, isForAll, setRunLook},
            {"look-of-paragraphs", 4, isForAll, setParagraphLook},
            {"link", 2, isForAll, setLink},
            {"comment", 3, isForAll, comment}};
}

} // namespace ZemFarm
