#include "Editing/CS_EditorCase.h"

#include <random>

namespace Zem::CollaborationSession
{

namespace
{

constexpr char32_t block = U'\u2588';
constexpr char32_t run = U'\uFFFC';

/// The characters of a text as code points, with atomic blocks and runs apart.
std::u32string read(const DOM::TextWithTombstones& text)
{
    std::u32string characters;
    for (const auto& element : TestSupport::flatten(text))
    {
        const char printed = TestSupport::printElement(element);
        const bool isByte = boost::get<short>(&element) != nullptr;
        if (isByte && isContinuationByte(printed))
        {
            characters.back() = (characters.back() << 6U) | (static_cast<unsigned char>(printed) & 0x3FU);
        }
        else if (isByte)
        {
            const auto byte = static_cast<unsigned char>(printed);
            characters += byte < 0x80U ? byte : byte < 0xE0U ? byte & 0x1FU : byte < 0xF0U ? byte & 0xFU : byte & 7U;
        }
        else if (printed == '}')
        {
            characters += U'\n';
        }
        else if (printed == '#' || printed == '$')
        {
            characters += block;
        }
        else if (printed == '~')
        {
            characters += run;
        }
    }
    if (!characters.empty() && characters.back() == U'\n')
    {
        characters.pop_back();
    }
    return characters;
}

/// What a replacement makes of a text, in a sentence: the stretch is replaced, but text doesn't come to stand directly
/// in front of an atomic block.
std::u32string replaceIn(const std::u32string& text, unsigned long begin, unsigned long end,
                         const std::u32string& replacement)
{
    std::u32string result = text.substr(0, begin) + replacement;
    const bool isInFrontOfBlock = end < text.size() && text[end] == block;
    if (isInFrontOfBlock && !result.empty() && result.back() != U'\n' && result.back() != block)
    {
        result += U'\n';
    }
    return result + text.substr(end);
}

class RandomEdits
{
public:
    RandomEdits(unsigned long seed, std::string_view notation)
        : _random(seed)
        , _edited(TestSupport::makeText(notation))
        , _model(read(_edited.getText()))
    {
    }

    void run(unsigned long editsCount)
    {
        const DOM::Document before = _edited._document;
        Operations operations;
        for (unsigned long edit = 0; edit < editsCount && !testing::Test::HasFailure(); ++edit)
        {
            Operations done = makeEdit();
            ASSERT_NO_FATAL_FAILURE(check());
            std::move(done.begin(), done.end(), std::back_inserter(operations));
        }
        const DOM::Document afterwards = _edited._document;
        _edited._editor.takeBack(operations);
        EXPECT_TRUE(before == _edited._document) << TestSupport::print(_edited.getText());
        _edited._editor.getIndex().checkInvariants();
        for (auto& operation : operations)
        {
            _edited.execute(std::move(operation));
        }
        EXPECT_TRUE(afterwards == _edited._document) << TestSupport::print(_edited.getText());
        _edited._editor.getIndex().checkInvariants();
    }

private:
    unsigned long pick(unsigned long count)
    {
        return std::uniform_int_distribution<unsigned long>(0, count - 1)(_random);
    }

    Operations makeEdit()
    {
        const unsigned long begin = pick(_model.size() + 1);
        const unsigned long longest = pick(3) == 0 ? 12 : 3;
        const unsigned long end = pick(2) == 0 ? begin : std::min(_model.size(), begin + pick(longest));
        std::u32string characters;
        std::string bytes;
        for (unsigned long count = pick(2) == 0 ? pick(2) : pick(6); count > 0; --count)
        {
            static const std::pair<char32_t, const char*> alphabet[] = {{U'\n', "\n"},
                                                                        {U'a', "a"},
                                                                        {U'b', "b"},
                                                                        {U'\u00E9', "\xC3\xA9"},
                                                                        {U'\u20AC', "\xE2\x82\xAC"},
                                                                        {U'\U0001F600', "\xF0\x9F\x98\x80"}};
            const auto& [character, utf8] = alphabet[pick(std::size(alphabet))];
            characters += character;
            bytes += utf8;
        }
        _trace += " [" + std::to_string(begin) + ", " + std::to_string(end) + ") \"" + bytes + "\"";
        _model = replaceIn(_model, begin, end, characters);
        return _edited._editor.replace(begin, end, bytes);
    }

    void check()
    {
        ASSERT_TRUE(_model == read(_edited.getText())) << TestSupport::print(_edited.getText()) << " after" << _trace;
        const CharacterIndex& index = _edited._editor.getIndex();
        index.checkInvariants();
        ASSERT_EQ(_model.size(), index.getCharactersCount());
        const unsigned long offset = pick(_model.size() + 1);
        ASSERT_EQ(offset, index.convertToOffset(index.convertToElement(offset)));
        ASSERT_TRUE(DOM::checkInvariants(_edited._document).empty());
    }

    std::mt19937_64 _random;
    DocumentUnderTest _edited;
    std::u32string _model;
    std::string _trace;
};

void runSeeds(unsigned long seedsCount, unsigned long editsCount, std::string_view notation)
{
    for (unsigned long seed = 0; seed < seedsCount && !testing::Test::HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", " + std::string(notation));
        RandomEdits(seed, notation).run(editsCount);
    }
}

TEST(RandomEdits, OfAnEmptyTextGiveWhatAPlainStringGives)
{
    runSeeds(60, 120, "");
}

TEST(RandomEdits, AmongAtomicThingsGiveWhatAPlainStringGives)
{
    for (const std::string_view notation :
         {"#", "{|ab}#{|cd}", "{|a~|b~}$##{~}{|c|d|e}#", "[xx]{[x]|a[xx]b}[x]#[xx]{[x]~}[x]{}#[x]", "###{}###"})
    {
        runSeeds(60, 25, notation);
    }
}

} // namespace

} // namespace Zem::CollaborationSession
