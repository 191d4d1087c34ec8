// What users do with the keyboard: typing, pasting, deleting, replacing, setting the look of a stretch.

#include "Generators.h"
#include "Texts.h"
#include "Values.h"

#include "DOM_RunProps.h"

#include <algorithm>
#include <array>
#include <string>

namespace ZemFarm
{

using Zem::CollaborationSession::Operations;
using Zem::CollaborationSession::TextEditor;
using Zem::DOMCollaboration::PropertyId;

namespace
{

/// A stretch of characters, a long one only where there is too much.
struct Stretch
{
    unsigned long _begin;
    unsigned long _end;
};

Stretch pickStretch(TextEditor& editor, Random& random)
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
        author.edit(place->_address, [&](TextEditor& editor) { return edit(editor); });
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
                    [&](TextEditor& editor)
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
                 [&](TextEditor& editor)
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
                 [&](TextEditor& editor)
                 {
                     const unsigned long offset = random.pick(editor.getIndex().getCharactersCount() + 1);
                     return editor.replace(offset, offset, makePaste(random));
                 });
}

void erase(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](TextEditor& editor)
                 {
                     const Stretch stretch = pickStretch(editor, random);
                     return editor.replace(stretch._begin, stretch._end, "");
                 });
}

void replace(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](TextEditor& editor)
                 {
                     const Stretch stretch = pickStretch(editor, random);
                     return editor.replace(stretch._begin, stretch._end,
                                           random.isOnceIn(3) ? makePaste(random) : makeWords(random, 4));
                 });
}

void formatRuns(Participant& author, Random& random)
{
    editSomeText(author, random,
                 [&](TextEditor& editor)
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
        [&](TextEditor& editor)
        {
            const Stretch stretch = pickStretch(editor, random);
            const PropertyChange change =
                random.isOnceIn(2) ? makeChange<PropertyId::ParagraphRunPropertyId>(nullptr, makeRunProps(random))
                                   : makeChange<PropertyId::ParaPropertyId>(nullptr, makeParaProps(random));
            return editor.setParagraphProperty(stretch._begin, stretch._end, change._property, change._newValue);
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
            {"format-paragraphs", 4, isForAll, formatParagraphs}};
}

} // namespace ZemFarm
