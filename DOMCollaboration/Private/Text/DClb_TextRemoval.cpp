// Taking flat elements out of the tree of a text, from the end of the range to its beginning. What stays behind of a
// run or a paragraph whose beginning goes is kept aside, and joins what stands in front of the range at the end.

#include "PlaneIndexUtils/DClb_TextWithTombstonesPositionUtils.h"
#include "Text/DClb_TextEditing.h"
#include "Text/DClb_TextMerging.h"

#include "DOM_PlaneSize.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>

namespace Zem::DOMCollaboration
{

namespace
{

/// From this many blocks on they go together.
constexpr unsigned long manyBlocks = 64;

/// The runs of a paragraph go together. Blocks go one by one, so that the observer is told of each. Each moves all
/// blocks behind it; where many go, their elements are taken first, and then they go in one step, of which the observer
/// is told once.
class ElementsExtractor
{
public:
    ElementsExtractor(const GenericBlockCollectionWrapper<false>& blocks, IndexExcludingTombstones beginIndex,
                      IndexExcludingTombstones endIndex, bool takesBlocksTogether)
        : _blocks(blocks)
        , _remaining((endIndex - beginIndex).get())
        , _isAtTextBegin(beginIndex.get() == 0)
        , _takesBlocksTogether(takesBlocksTogether)
    {
        _extracted.reserve(_remaining);
    }

    /// `lastPlace` is that of the last element of the range.
    TextWithTombstonesElementVector extract(const PlanePlace& lastPlace)
    {
        _place = lastPlace;
        while (_remaining > 0)
        {
            extractAtPlace();
        }
        takeEmptiedBlocks();
        mergeRest();
        std::reverse(_extracted.begin(), _extracted.end());
        return std::move(_extracted);
    }

private:
    void extractAtPlace()
    {
        switch (_place._kind)
        {
        case PlaceKind::AtomicBlock:
            return extractBlock();
        case PlaceKind::ParaTag:
            return extractParagraph();
        case PlaceKind::ParaMark:
            return extractMark();
        case PlaceKind::AtomicRun:
            return extractRuns();
        case PlaceKind::TextRunTag:
            keepBytesFrom(0);
            return extractRuns();
        case PlaceKind::Char:
            return extractBytes();
        case PlaceKind::TextEnd:
            break;
        }
        ZEM_FAIL("Unexpected rich text end");
    }

    void extractBlock()
    {
        _emptiedBlocks.push_back(_extracted.size());
        _extracted.push_back(SharedConstPtr<DOM::Block>());
        _firstEmptiedBlock = _place._blockIndex;
        if (!_takesBlocksTogether)
        {
            takeEmptiedBlocks();
        }
        --_remaining;
        moveBack();
    }

    /// Takes the blocks out whose elements have been taken.
    void takeEmptiedBlocks()
    {
        if (_emptiedBlocks.empty())
        {
            return;
        }
        const auto range = IndexRange<unsigned long>::fromCount(_firstEmptiedBlock, _emptiedBlocks.size());
        for (std::unique_ptr<DOM::Block>& block : _blocks.removeElements(range))
        {
            _extracted[_emptiedBlocks.back()] = SharedConstPtr<DOM::Block>(std::move(block));
            _emptiedBlocks.pop_back();
        }
    }

    void extractParagraph()
    {
        GenericRunCollectionWrapper<false> runs = getRuns();
        if (runs.getSize() > 0)
        {
            const DOM::Runs& runsToMerge = _runsToMerge;
            ZEM_ASSERT(runsToMerge.empty());
            _runsToMerge = runs.removeElements(IndexRange<unsigned long>(0, runs.getSize()));
        }
        extractBlock();
    }

    /// The tree has no part of its own for a mark.
    void extractMark()
    {
        _extracted.push_back(ParagraphMark());
        --_remaining;
        moveBack();
    }

    /// The runs that the range covers up to the present one go together, each with its tag and the bytes that it still
    /// has.
    void extractRuns()
    {
        const IndexRange<unsigned long> covered(findFirstCoveredRun(), _place._runIndex + 1);
        DOM::Runs removed = getRuns().removeElements(covered);
        std::for_each(removed.rbegin(), removed.rend(),
                      [&](std::unique_ptr<DOM::Run>& run) { pushRun(std::move(run)); });
        _place = PlanePlace{PlaceKind::TextRunTag, _place._blockIndex, covered.getBegin(), 0};
        moveBack();
    }

    unsigned long findFirstCoveredRun() const
    {
        const DOM::Runs& runs = getParagraph().getParagraph().getRuns();
        const auto getSizeBefore = [&](unsigned long end) { return DOM::PlaneSize::of(derefPtr(runs[end - 1])); };
        unsigned long first = _place._runIndex + 1;
        for (unsigned long left = _remaining; first > 0 && getSizeBefore(first) <= left; --first)
        {
            left -= getSizeBefore(first);
        }
        return first;
    }

    void pushRun(std::unique_ptr<DOM::Run> run)
    {
        _remaining -= DOM::PlaneSize::of(*run);
        if (auto* textRun = cast<DOM::TextRun>(run.get()))
        {
            pushBytes(textRun->takeText());
        }
        _extracted.push_back(SharedConstPtr<DOM::Run>(std::move(run)));
    }

    void extractBytes()
    {
        const unsigned long bytesUpToHere = _place._byteIndex + 1;
        if (_remaining <= bytesUpToHere)
        {
            return extractBytesOfRun(bytesUpToHere);
        }
        keepBytesFrom(bytesUpToHere);
        extractRuns();
    }

    /// The range begins inside this run, behind its tag.
    void extractBytesOfRun(unsigned long bytesUpToHere)
    {
        GenericTextWrapper<false> text = getTextRun().getText();
        const unsigned long runSize = text.getSize();
        const unsigned long elementsToRemove = _remaining;
        // A run can't lose all its text and keep its tag, unless what stays behind the range joins it: then the tag has
        // bytes again at once, and the rules have let the removal through.
        ZEM_ASSERT_MESSAGE(elementsToRemove < bytesUpToHere || bytesUpToHere < runSize || !_textToMerge.empty(),
                           "elementsToRemove < charPos.byteIndex + 1 || charPos.byteIndex + 1 < runSize");
        const unsigned long firstByte = bytesUpToHere - elementsToRemove;
        pushBytes(text.removeElements(IndexRange<unsigned long>(firstByte, bytesUpToHere)));
        _remaining = 0;
        _place._byteIndex = firstByte;
        moveBack();
    }

    /// The bytes of the present run from `byteIndex` on stay in the document.
    void keepBytesFrom(unsigned long byteIndex)
    {
        GenericTextWrapper<false> text = getTextRun().getText();
        if (byteIndex < text.getSize())
        {
            _textToMerge = text.removeElements(IndexRange<unsigned long>(byteIndex, text.getSize()));
        }
    }

    void pushBytes(const std::string& bytes)
    {
        std::for_each(bytes.rbegin(), bytes.rend(),
                      [&](char byte) { _extracted.push_back(static_cast<short>(static_cast<signed char>(byte))); });
    }

    /// To the element in front of the one that was taken.
    void moveBack()
    {
        if (_remaining > 0 || !_isAtTextBegin)
        {
            _place = PlaneWalk::getPlaceBefore(_blocks.getBlocks(), _place);
        }
    }

    /// `_place` is that of the element in front of the range by now.
    void mergeRest()
    {
        const std::string& textToMerge = _textToMerge;
        DOM::Runs& runsToMerge = _runsToMerge;
        if (_isAtTextBegin)
        {
            ZEM_ASSERT(textToMerge.empty() && runsToMerge.empty());
            return;
        }
        if (!textToMerge.empty())
        {
            insertText(TextWithTombstonesPositionUtils::makePosition(_blocks, _place), textToMerge, true);
        }
        if (!runsToMerge.empty())
        {
            insertRuns(TextWithTombstonesPositionUtils::makePosition(_blocks, _place), std::move(runsToMerge), true);
        }
    }

    GenericParagraphWrapper<false> getParagraph() const
    {
        auto block = _blocks.getElement(_place._blockIndex);
        return static_cast<GenericParagraphWrapper<false>&>(*block);
    }

    GenericRunCollectionWrapper<false> getRuns() const
    {
        return getParagraph().getRuns();
    }

    GenericTextRunWrapper<false> getTextRun() const
    {
        auto run = getRuns().getElement(_place._runIndex);
        return static_cast<GenericTextRunWrapper<false>&>(*run);
    }

    GenericBlockCollectionWrapper<false> _blocks;
    /// How many elements of the range are still to be taken; the last of them stands at `_place`.
    unsigned long _remaining;
    bool _isAtTextBegin;
    bool _takesBlocksTogether;
    PlanePlace _place;
    /// From the last element of the range to the first.
    TextWithTombstonesElementVector _extracted;
    /// Where in `_extracted` the blocks belong that are still to be taken, from the last to the first; they stand side
    /// by side from `_firstEmptiedBlock` on.
    std::vector<std::size_t> _emptiedBlocks;
    unsigned long _firstEmptiedBlock = 0;
    std::string _textToMerge;
    DOM::Runs _runsToMerge;
};

} // namespace

void extractElements(const GenericBlockCollectionWrapper<false>& blocks, RangeInfo& range)
{
    const IndexExcludingTombstones beginIndex = range.getStartIndex();
    const IndexExcludingTombstones endIndex = range.getEndIndex();
    ZEM_ASSERT(beginIndex < endIndex);
    const PlanePlace lastPlace = range.getAnchor().find(blocks.getBlocks(), endIndex - 1);
    const PlanePlace firstPlace = range.getAnchor().find(blocks.getBlocks(), beginIndex);
    const bool takesBlocksTogether = lastPlace._blockIndex - firstPlace._blockIndex >= manyBlocks;
    range._data = ElementsExtractor(blocks, beginIndex, endIndex, takesBlocksTogether).extract(lastPlace);
    range.setSize(range._data.size());
}

} // namespace Zem::DOMCollaboration
