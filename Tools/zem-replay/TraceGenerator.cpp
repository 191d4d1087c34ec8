#include "Trace.h"

#include "PlainText.h"

#include <algorithm>
#include <random>

namespace ZemReplay
{

namespace
{

/// A writer who types most of the time, corrects now and then, goes elsewhere, and pastes.
class Writer
{
public:
    explicit Writer(unsigned long seed)
        : _random(seed)
    {
    }

    Trace write(unsigned long patchesCount)
    {
        while (_trace._patches.size() < patchesCount)
        {
            writeBurst();
        }
        _trace._patches.resize(patchesCount);
        PlainText text;
        for (const Patch& patch : _trace._patches)
        {
            text.replace(patch._position, patch._deleteCount, _trace.getText(patch));
        }
        _trace._endContent = text.getUtf8();
        return std::move(_trace);
    }

private:
    unsigned long pick(unsigned long count)
    {
        return std::uniform_int_distribution<unsigned long>(0, count - 1)(_random);
    }

    void writeBurst()
    {
        const unsigned long kind = pick(20);
        if (kind < 14)
        {
            typeWords(1 + pick(12));
        }
        else if (kind < 17)
        {
            for (unsigned long count = std::min(_caret, 1 + pick(8)); count > 0; --count)
            {
                patch(_caret - 1, 1, "");
            }
        }
        else if (kind < 19)
        {
            _caret = pick(_length + 1);
        }
        else
        {
            const unsigned long count = std::min(_length - _caret, pick(40));
            patch(_caret, count, "pasted line\nand another one\n");
        }
    }

    void typeWords(unsigned long wordsCount)
    {
        static constexpr std::string_view letters = "etaoinshrdlucmfwypvbgkqjxz";
        for (unsigned long word = 0; word < wordsCount; ++word)
        {
            for (unsigned long letter = 1 + pick(9); letter > 0; --letter)
            {
                patch(_caret, 0, pick(50) == 0 ? "\xC3\xA9" : letters.substr(pick(letters.size()), 1));
            }
            patch(_caret, 0, pick(15) == 0 ? "\n" : " ");
        }
    }

    /// Adds a patch, and puts the caret behind what it inserts.
    void patch(unsigned long position, unsigned long deleteCount, std::string_view text)
    {
        Patch patch;
        patch._position = position;
        patch._deleteCount = deleteCount;
        patch._textBegin = _trace._texts.size();
        patch._textSize = text.size();
        patch._transaction = _trace._patches.size();
        _trace._texts += text;
        _trace._patches.push_back(patch);
        const unsigned long inserted = countCharacters(text);
        _length += inserted - deleteCount;
        _caret = position + inserted;
    }

    std::mt19937_64 _random;
    Trace _trace;
    unsigned long _length = 0;
    unsigned long _caret = 0;
};

} // namespace

Trace generateTrace(unsigned long seed, unsigned long patchesCount)
{
    Trace trace = Writer(seed).write(patchesCount);
    trace._name = "seed " + std::to_string(seed);
    return trace;
}

} // namespace ZemReplay
