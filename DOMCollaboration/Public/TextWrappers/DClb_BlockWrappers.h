#pragma once

/// Views over a text and its blocks, through which every change of the block list goes. See DClb_RunWrappers.h.

#include "TextWrappers/DClb_RunWrappers.h"

#include "DOM_Blocks.h"
#include "DOM_TextWithTombstones.h"

namespace Zem::DOMCollaboration
{

template<bool isReadonly>
class GenericAtomicBlockWrapper;
template<bool isReadonly>
class GenericParagraphWrapper;

/// The base of the two kinds of view over one block.
template<bool isReadonly>
class GenericBlockWrapper : public Clonable<GenericBlockWrapper<isReadonly>>
{
public:
    using VisitorType = Visitor<TypeList<GenericAtomicBlockWrapper<isReadonly>, GenericParagraphWrapper<isReadonly>>>;
    using ConstVisitorType =
        Visitor<TypeList<const GenericAtomicBlockWrapper<isReadonly>, const GenericParagraphWrapper<isReadonly>>>;

    virtual void accept(VisitorType& visitor) = 0;
    virtual void accept(ConstVisitorType& visitor) const = 0;
};

/// A view over an atomic block. It knows no observer, since an atomic block is never changed through a view.
template<bool isReadonly>
class GenericAtomicBlockWrapper final
    : public WrapperImpl<GenericAtomicBlockWrapper<isReadonly>, GenericBlockWrapper<isReadonly>>
{
public:
    using Block = ConstIf<isReadonly, DOM::Block>;

    explicit GenericAtomicBlockWrapper(Block& block)
        : _block(&block)
    {
    }

    Block& getBlock() const
    {
        return *_block;
    }

    GenericAtomicBlockWrapper<true> asConst() const
    {
        return GenericAtomicBlockWrapper<true>(*_block);
    }

private:
    Block* _block;
};

/// A view over a paragraph.
template<bool isReadonly>
class GenericParagraphWrapper final
    : public WrapperImpl<GenericParagraphWrapper<isReadonly>, GenericBlockWrapper<isReadonly>>
{
public:
    using Paragraph = ConstIf<isReadonly, DOM::Paragraph>;

    GenericParagraphWrapper(Paragraph& paragraph, const TextNotificationTarget& target, unsigned long blockIndex)
        : _paragraph(&paragraph)
        , _target(&target)
        , _blockIndex(blockIndex)
    {
    }

    Paragraph& getParagraph() const
    {
        return *_paragraph;
    }

    GenericRunCollectionWrapper<isReadonly> getRuns() const
    {
        return GenericRunCollectionWrapper<isReadonly>(_paragraph->getRuns(), *_target, _blockIndex);
    }

    GenericParagraphWrapper<true> asConst() const
    {
        return GenericParagraphWrapper<true>(*_paragraph, *_target, _blockIndex);
    }

private:
    Paragraph* _paragraph;
    const TextNotificationTarget* _target;
    unsigned long _blockIndex;
};

/// The view over one block, of whichever kind.
template<bool isReadonly>
using BlockWrapperValue = InPlacePolymorphic<GenericBlockWrapper<isReadonly>, GenericAtomicBlockWrapper<isReadonly>,
                                             GenericParagraphWrapper<isReadonly>>;

/// The blocks of a text. Indices are live blocks.
template<bool isReadonly>
class ZEM_EXPORT GenericBlockCollectionWrapper
{
public:
    using Blocks = ConstIf<isReadonly, DOM::Blocks>;

    GenericBlockCollectionWrapper(Blocks& blocks, const TextNotificationTarget& target)
        : _blocks(&blocks)
        , _target(&target)
    {
    }

    unsigned long getSize() const
    {
        return _blocks->size();
    }

    /// The live blocks themselves, for walks that look at many of them.
    const DOM::Blocks& getBlocks() const
    {
        return *_blocks;
    }

    /// Fails: "index < size()"; "plainPtr" on a null entry.
    BlockWrapperValue<isReadonly> getElement(unsigned long index) const;

    /// Fails: "index <= blocks.size()"; "count > UnsignedIndex{0}" when there is nothing to insert.
    void insertElements(DOM::Blocks blocks, unsigned long index) requires(!isReadonly);

    /// Takes the blocks of `range` out and gives them back. Fails: "range.getEnd() <= blocks.size()".
    DOM::Blocks removeElements(IndexRange<unsigned long> range) requires(!isReadonly);

    GenericBlockCollectionWrapper<true> asConst() const
    {
        return GenericBlockCollectionWrapper<true>(*_blocks, *_target);
    }

private:
    Blocks* _blocks;
    const TextNotificationTarget* _target;
};

/// A whole text: its blocks and its tombstones.
template<bool isReadonly>
class GenericTextWithTombstonesWrapper
{
public:
    using Text = ConstIf<isReadonly, DOM::TextWithTombstones>;

    GenericTextWithTombstonesWrapper(Text& text, const TextNotificationTarget& target)
        : _text(&text)
        , _target(&target)
    {
    }

    GenericBlockCollectionWrapper<isReadonly> getBlocks() const
    {
        return GenericBlockCollectionWrapper<isReadonly>(_text->getBlocks(), *_target);
    }

    const CollaborationUtils::TombstonesStorage& getTombstones() const
    {
        return _text->getTombstones();
    }

    CollaborationUtils::TombstonesStorage& getTombstones() requires(!isReadonly)
    {
        return _text->getTombstones();
    }

    GenericTextWithTombstonesWrapper<true> asConst() const
    {
        return GenericTextWithTombstonesWrapper<true>(*_text, *_target);
    }

private:
    Text* _text;
    const TextNotificationTarget* _target;
};

extern template class GenericBlockCollectionWrapper<false>;

} // namespace Zem::DOMCollaboration
