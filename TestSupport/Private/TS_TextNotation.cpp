#include "TS_TextNotation.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"
#include "PlaneIndexUtils/DClb_TextWithTombstonesPositionUtils.h"

#include "Util_Cast.h"
#include "Util_Visitor.h"

#include <stdexcept>

namespace Zem::TestSupport
{

using DOMCollaboration::ParagraphMark;
using DOMCollaboration::TextWithTombstonesElement;
using DOMCollaboration::TextWithTombstonesElementVector;

namespace
{

template<class Base, class Kind>
TextWithTombstonesElement make()
{
    return SharedConstPtr<Base>(std::make_shared<Kind>());
}

TextWithTombstonesElement makeElement(char symbol)
{
    switch (symbol)
    {
    case '{':
        return make<DOM::Block, DOM::Paragraph>();
    case '}':
        return ParagraphMark();
    case '|':
        return make<DOM::Run, DOM::TextRun>();
    case '~':
        return make<DOM::Run, DOM::TabRun>();
    case '#':
        return make<DOM::Block, DOM::Shape>();
    case '$':
        return make<DOM::Block, DOM::SectionTag>();
    default:
        return static_cast<short>(static_cast<signed char>(symbol));
    }
}

void require(bool condition, const char* what)
{
    if (!condition)
    {
        throw std::invalid_argument(what);
    }
}

/// Builds the tree of a text from its live elements.
class TextBuilder
{
public:
    void operator()(const ParagraphMark&)
    {
        require(_paragraph != nullptr, "a mark without a paragraph");
        _paragraph = nullptr;
        _run = nullptr;
    }

    void operator()(const SharedConstPtr<DOM::Block>& block)
    {
        require(_paragraph == nullptr, "a block inside a paragraph");
        _blocks.push_back(cloneToUnique<DOM::Block>(*block));
        if (block->getKind() == DOM::BlockKind::Paragraph)
        {
            _paragraph = static_cast<DOM::Paragraph*>(_blocks.back().get());
        }
    }

    void operator()(const SharedConstPtr<DOM::Run>& run)
    {
        require(_paragraph != nullptr, "a run without a paragraph");
        _paragraph->getRuns().push_back(cloneToUnique<DOM::Run>(*run));
        _run = cast<DOM::TextRun>(_paragraph->getRuns().back().get());
    }

    void operator()(short byte)
    {
        require(_run != nullptr, "a byte without a run");
        _run->setText(_run->takeText() + byteCast(byte));
    }

    DOM::Blocks take()
    {
        require(_paragraph == nullptr, "a paragraph without a mark");
        return std::move(_blocks);
    }

private:
    DOM::Blocks _blocks;
    DOM::Paragraph* _paragraph = nullptr;
    DOM::TextRun* _run = nullptr;
};

void flattenRun(const DOM::Run& run, TextWithTombstonesElementVector& elements)
{
    const auto* textRun = cast<DOM::TextRun>(&run);
    if (!textRun)
    {
        elements.emplace_back(SharedConstPtr<DOM::Run>(cloneToUnique<DOM::Run>(run)));
        return;
    }
    auto emptyRun = std::make_unique<DOM::TextRun>(*textRun);
    emptyRun->setText(std::string());
    elements.emplace_back(SharedConstPtr<DOM::Run>(std::move(emptyRun)));
    for (const char byte : textRun->getText())
    {
        elements.emplace_back(static_cast<short>(static_cast<signed char>(byte)));
    }
}

void flattenBlock(const DOM::Block& block, TextWithTombstonesElementVector& elements)
{
    const auto* paragraph = cast<DOM::Paragraph>(&block);
    if (!paragraph)
    {
        elements.emplace_back(SharedConstPtr<DOM::Block>(cloneToUnique<DOM::Block>(block)));
        return;
    }
    auto emptyParagraph = std::make_unique<DOM::Paragraph>(*paragraph);
    emptyParagraph->getRuns().clear();
    elements.emplace_back(SharedConstPtr<DOM::Block>(std::move(emptyParagraph)));
    for (const std::unique_ptr<DOM::Run>& run : paragraph->getRuns())
    {
        flattenRun(*run, elements);
    }
    elements.emplace_back(ParagraphMark());
}

} // namespace

NotatedText parseSlots(std::string_view notation)
{
    NotatedText text;
    bool isLive = true;
    for (std::size_t index = 0; index < notation.size(); ++index)
    {
        const char symbol = notation[index];
        if (symbol == '[' || symbol == ']')
        {
            require(isLive == (symbol == '['), "brackets of dead slots don't match");
            isLive = !isLive;
        }
        else if (symbol == '<')
        {
            const std::size_t end = notation.find('>', index);
            require(end != std::string_view::npos, "a name without an end");
            text._positions[std::string(notation.substr(index + 1, end - index - 1))] = text._slots.size();
            index = end;
        }
        else
        {
            text._slots.push_back(ModelSlot{makeElement(symbol), isLive});
        }
    }
    require(isLive, "brackets of dead slots don't match");
    return text;
}

DOM::TextWithTombstones makeText(const ModelText& slots)
{
    DOM::TextWithTombstones text;
    TextBuilder builder;
    for (unsigned long slot = 0; slot < slots.size(); ++slot)
    {
        if (slots[slot]._isLive)
        {
            boost::apply_visitor(builder, slots[slot]._element);
        }
        else
        {
            text.getTombstones().replaceWithTombstone(CollaborationUtils::IndexIncludingTombstones(slot));
        }
    }
    text.getBlocks() = builder.take();
    return text;
}

DOM::TextWithTombstones makeText(std::string_view notation)
{
    return makeText(parseSlots(notation)._slots);
}

TextWithTombstonesElementVector makeElements(std::string_view notation)
{
    TextWithTombstonesElementVector elements;
    for (const char symbol : notation)
    {
        elements.push_back(makeElement(symbol));
    }
    return elements;
}

TextWithTombstonesElementVector flatten(const DOM::TextWithTombstones& text)
{
    TextWithTombstonesElementVector elements;
    for (const std::unique_ptr<DOM::Block>& block : text.getBlocks())
    {
        flattenBlock(*block, elements);
    }
    return elements;
}

char printElement(const TextWithTombstonesElement& element)
{
    return boost::apply_visitor(Overloads{[](const ParagraphMark&) { return '}'; },
                                          [](const SharedConstPtr<DOM::Block>& block)
                                          {
                                              switch (block->getKind())
                                              {
                                              case DOM::BlockKind::Paragraph:
                                                  return '{';
                                              case DOM::BlockKind::SectionTag:
                                                  return '$';
                                              default:
                                                  return '#';
                                              }
                                          },
                                          [](const SharedConstPtr<DOM::Run>& run)
                                          { return run->getKind() == DOM::RunKind::TextRun ? '|' : '~'; },
                                          [](short byte) { return byteCast(byte); }},
                                element);
}

std::string print(const TextWithTombstonesElementVector& elements)
{
    std::string line;
    for (const TextWithTombstonesElement& element : elements)
    {
        line += printElement(element);
    }
    return line;
}

std::string print(const DOM::TextWithTombstones& text)
{
    const TextWithTombstonesElementVector elements = flatten(text);
    ModelText slots;
    for (unsigned long live = 0; live < elements.size();)
    {
        const auto place = CollaborationUtils::IndexIncludingTombstones(slots.size());
        const bool isLive = text.getTombstones().convertIndex(place).has_value();
        slots.push_back(ModelSlot{isLive ? elements[live++] : TextWithTombstonesElement(), isLive});
    }
    while (!text.getTombstones().convertIndex(CollaborationUtils::IndexIncludingTombstones(slots.size())))
    {
        slots.push_back(ModelSlot{TextWithTombstonesElement(), false});
    }
    return print(slots);
}

std::string print(const ModelText& slots)
{
    std::string line;
    bool isLive = true;
    for (const ModelSlot& slot : slots)
    {
        if (slot._isLive != isLive)
        {
            line += isLive ? '[' : ']';
            isLive = slot._isLive;
        }
        line += isLive ? printElement(slot._element) : '.';
    }
    return isLive ? line : line + ']';
}

std::string normalize(std::string_view notation)
{
    return print(parseSlots(notation)._slots);
}

} // namespace Zem::TestSupport
