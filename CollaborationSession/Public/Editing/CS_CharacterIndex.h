#pragma once

/// Where the characters of a text are, in logarithmic time.
///
/// The index holds one entry for each block of the text, in a sequence that knows the sum of any of its beginnings:
///
///     blocks           {|ab}   #   {|é}
///     elements           5     1     5       places of the plane: tags, bytes, marks, atomic runs and blocks
///     characters         3     1     2       every paragraph counts its line break, also the last one
///     continuation bytes 0     0     1       where there are none, a byte is a character, and none has to be looked at
///     paragraphs         1     0     1
///
/// So the block of a character is found in the logarithm of their number, and what remains is a walk over the runs of
/// one paragraph.
///
/// It is kept up to date by notifications: each costs what changed and a logarithm. Those of other texts are passed
/// over, by their addresses. When the place of the text itself may have changed (a row was inserted above its cell, a
/// block in front of its table), the index becomes stale; `refresh` builds it anew from the address that it has.
///
/// What a character is, and how offsets count them, is told in CS_Characters.h.

#include "Editing/CS_TextInDocument.h"

#include "CU_SummedSequence.h"
#include "DOM_Paragraph.h"
#include "Notifications/DClb_TextWithTombstonesChangedObserver.h"
#include "PlaneIndexUtils/DClb_PlanePlace.h"

#include "Util_Export.h"

#include <vector>

namespace Zem::CollaborationSession
{

/// What is counted of a block.
struct BlockSummary
{
    BlockSummary& operator+=(const BlockSummary& other)
    {
        _elements += other._elements;
        _characters += other._characters;
        _continuationBytes += other._continuationBytes;
        _paragraphs += other._paragraphs;
        return *this;
    }

    BlockSummary& operator-=(const BlockSummary& other)
    {
        _elements -= other._elements;
        _characters -= other._characters;
        _continuationBytes -= other._continuationBytes;
        _paragraphs -= other._paragraphs;
        return *this;
    }

    friend bool operator==(const BlockSummary&, const BlockSummary&) = default;

    unsigned long _elements = 0;
    /// Every paragraph counts its line break, also the last one.
    unsigned long _characters = 0;
    unsigned long _continuationBytes = 0;
    unsigned long _paragraphs = 0;
};

/// Where a block stands.
struct BlockPlace
{
    unsigned long _blockIndex = 0;
    /// The plane index of its first element.
    unsigned long _element = 0;
    /// The number of characters in front of it.
    unsigned long _character = 0;
    /// What it holds; nothing at the end of the text.
    BlockSummary _block;
};

class ZEM_EXPORT CharacterIndex final : public DOMCollaboration::TextWithTombstonesChangedObserver
{
public:
    /// Cost: linear in the text.
    explicit CharacterIndex(TextInDocument text);

    const TextInDocument& getTextInDocument() const
    {
        return _text;
    }

    /// How many characters the text has. The last paragraph's line break isn't one.
    unsigned long getCharactersCount() const;

    unsigned long getParagraphsCount() const
    {
        return _blocks.getTotal()._paragraphs;
    }

    unsigned long getBlocksCount() const
    {
        return _blocks.size();
    }

    /// The size of the plane.
    unsigned long getElementsCount() const
    {
        return _blocks.getTotal()._elements;
    }

    /// The block that holds the character behind an offset: the block behind the gap, or a paragraph that ends there.
    /// The end of the blocks for the number of characters of a text that ends with an atomic block, or is empty.
    /// Fails: "offset <= getCharactersCount()".
    BlockPlace findCharacter(unsigned long offset) const;

    /// The block that holds an element of the plane; the end for the size of the plane.
    /// Fails: "element <= getElementsCount()".
    BlockPlace findElement(unsigned long element) const;

    /// Fails: "blockIndex <= getBlocksCount()".
    BlockPlace getBlock(unsigned long blockIndex) const;

    /// The plane index of the first element of the character behind an offset. For the number of characters it is that
    /// of the last paragraph's mark, or the size of the plane. Cost: a logarithm, and the runs of one paragraph.
    /// Fails: "offset <= getCharactersCount()".
    unsigned long convertToElement(unsigned long offset) const;

    /// How many characters begin in front of an element of the plane. Cost: as `convertToElement`.
    /// Fails: "element <= getElementsCount()".
    unsigned long convertToOffset(unsigned long element) const;

    /// What stands at an element of the plane, or `TextEnd` behind the last. Cost: as `convertToElement`.
    /// Fails: "element <= getElementsCount()".
    DOMCollaboration::PlanePlace findPlace(unsigned long element) const;

    /// Fails: "blockIndex < blocks.size()"; "isParagraph" for another block.
    const DOM::Paragraph& getParagraph(unsigned long blockIndex) const;

    /// Says that the text may stand elsewhere, or be another one, by now. A text that isn't nested never does.
    void invalidate();

    /// Says that the whole document is another one by now.
    void reset()
    {
        _isStale = true;
    }

    bool isStale() const
    {
        return _isStale;
    }

    /// Builds the index anew if it is stale. Fails: `InvalidEditError` when there is no such text any more.
    void refresh();

    /// Asserts that the index isn't stale, and counts what a recount counts.
    void checkInvariants() const;

    /// Bytes on the heap.
    std::size_t getMemoryUsage() const
    {
        return _blocks.getMemoryUsage();
    }

    void onCharsRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
                        const std::string& removed) override;
    void onCharsInserted(const DOM::NativeNodeAddress& address,
                         const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onRunsRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
                       const ReadonlyVector<std::vector<std::unique_ptr<DOM::Run>>>& removed) override;
    void onRunsInserted(const DOM::NativeNodeAddress& address,
                        const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onBlocksRemoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones begin,
                         const ReadonlyVector<std::vector<std::unique_ptr<DOM::Block>>>& removed) override;
    void onBlocksInserted(const DOM::NativeNodeAddress& address,
                          const CollaborationUtils::IndexRange<unsigned long>& range) override;
    void onBlockMoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones from,
                      CollaborationUtils::IndexExcludingTombstones to) override;

private:
    struct BlockEntry : BlockSummary
    {
        using Summary = BlockSummary;

        const Summary& getSummary() const
        {
            return *this;
        }

        friend bool operator==(const BlockEntry&, const BlockEntry&) = default;
    };

    using Blocks = CollaborationUtils::SummedSequence<BlockEntry>;

    static BlockEntry makeEntry(const BlockSummary& summary);
    static std::vector<BlockEntry> countBlocks(const DOM::TextWithTombstones& text, unsigned long begin,
                                               unsigned long end);

    BlockPlace makePlace(const Blocks::Place& place) const;
    bool isMine(const DOM::NativeNodeAddress& address, unsigned long stepsBelow) const;
    bool holdsMine(const DOM::NativeNodeAddress& address) const;
    void add(unsigned long blockIndex, const BlockSummary& added);
    void subtract(unsigned long blockIndex, const BlockSummary& removed);

    TextInDocument _text;
    DOM::NativeNodeAddress _nativeAddress;
    Blocks _blocks;
    bool _isStale = false;
};

} // namespace Zem::CollaborationSession
