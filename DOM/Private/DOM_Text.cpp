// The text tree: blocks, runs, paragraphs, texts.

#include "DOM_Block.h"
#include "DOM_NumberingRef.h"
#include "DOM_Paragraph.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_Run.h"
#include "DOM_RunStyle.h"
#include "DOM_TextWithTombstones.h"

#include "Util_DeepComparison.h"
#include "Util_DeepCopy.h"

namespace Zem::DOM
{

Block::~Block() = default;

Run::Run(RunKind kind)
    : _kind(kind)
{
}

Run::Run(const Run&) = default;
Run::Run(Run&&) noexcept = default;
Run& Run::operator=(const Run&) = default;
Run& Run::operator=(Run&&) noexcept = default;
Run::~Run() = default;

bool areStylesEqual(const Run& left, const Run& right)
{
    return areDeeplyEqual(left.getSharedStyle(), right.getSharedStyle());
}

Paragraph::Paragraph() = default;

Paragraph::Paragraph(const Paragraph& other)
    : BlockImpl(other)
    , _runs(deepCopy(other._runs))
    , _sharedStyle(other._sharedStyle)
    , _sharedParaMarkStyle(other._sharedParaMarkStyle)
    , _numRef(deepCopy(other._numRef))
{
}

Paragraph::Paragraph(Paragraph&&) noexcept = default;

Paragraph& Paragraph::operator=(const Paragraph& other)
{
    return *this = Paragraph(other);
}

Paragraph& Paragraph::operator=(Paragraph&&) noexcept = default;
Paragraph::~Paragraph() = default;

bool operator==(const Paragraph& left, const Paragraph& right)
{
    return areDeeplyEqual(left._sharedStyle, right._sharedStyle) &&
           areDeeplyEqual(left._sharedParaMarkStyle, right._sharedParaMarkStyle) &&
           areDeeplyEqual(left._numRef, right._numRef) && areDeeplyEqual(left._runs, right._runs);
}

TextWithTombstones::TextWithTombstones() = default;

TextWithTombstones::TextWithTombstones(const TextWithTombstones& other)
    : _blocks(deepCopy(other._blocks))
    , _tombstones(other._tombstones)
{
}

TextWithTombstones::TextWithTombstones(TextWithTombstones&&) noexcept = default;

TextWithTombstones& TextWithTombstones::operator=(const TextWithTombstones& other)
{
    return *this = TextWithTombstones(other);
}

TextWithTombstones& TextWithTombstones::operator=(TextWithTombstones&&) noexcept = default;
TextWithTombstones::~TextWithTombstones() = default;

bool operator==(const TextWithTombstones& left, const TextWithTombstones& right)
{
    return left._tombstones == right._tombstones && areDeeplyEqual(left._blocks, right._blocks);
}

} // namespace Zem::DOM
