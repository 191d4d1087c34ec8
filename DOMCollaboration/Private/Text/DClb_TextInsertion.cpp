// Putting flat elements into the tree of a text:
//   1. the data is taken apart into bytes, runs and blocks;
//   2. what stands behind the start index in its paragraph or run moves to the end of the data;
//   3. bytes, runs and blocks go in behind the element in front of the start index.

#include "PlaneIndexUtils/DClb_TextWithTombstonesPositionUtils.h"
#include "Text/DClb_TextEditing.h"
#include "Text/DClb_TextMerging.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include "Util_Assert.h"
#include "Util_Cast.h"
#include "Util_Lazy.h"
#include "Util_Visitor.h"

#include <functional>
#include <iterator>

namespace Zem::DOMCollaboration
{

namespace
{

/// The elements of an insertion as parts of the tree: bytes for the run in front of it, runs for the paragraph in front
/// of it, and blocks.
struct InsertionData
{
    std::string beginString;
    DOM::Runs beginRuns;
    DOM::Blocks blocks;
};

/// Builds runs and blocks from elements, each put where the elements in front of it opened a paragraph or a run.
class TreeBuilder
{
public:
    explicit TreeBuilder(DOM::Paragraph* openParagraph)
        : _currentPara(openParagraph)
    {
    }

    void operator()(const ParagraphMark&)
    {
        _currentPara = nullptr;
        closeRun();
    }

    void operator()(const SharedConstPtr<DOM::Block>& element)
    {
        closeRun();
        _blocks.push_back(cloneToUnique<DOM::Block>(derefPtr(element)));
        DOM::Block& block = *_blocks.back();
        _currentPara = block.getKind() == DOM::BlockKind::Paragraph ? &static_cast<DOM::Paragraph&>(block) : nullptr;
    }

    void operator()(const SharedConstPtr<DOM::Run>& element)
    {
        const auto* currentPara = _currentPara;
        ZEM_ASSERT(currentPara);
        closeRun();
        DOM::Runs& runs = _currentPara->getRuns();
        runs.push_back(cloneToUnique<DOM::Run>(derefPtr(element)));
        DOM::Run& run = *runs.back();
        _currentRun = run.getKind() == DOM::RunKind::TextRun ? &static_cast<DOM::TextRun&>(run) : nullptr;
    }

    void operator()(short element)
    {
        derefPtr(_currentRun);
        _currentText.push_back(byteCast(element));
    }

    DOM::Blocks takeBlocks()
    {
        closeRun();
        return std::move(_blocks);
    }

    void closeRun()
    {
        if (_currentRun && !_currentText.empty())
        {
            _currentRun->setText(_currentRun->getText() + _currentText);
        }
        _currentText.clear();
        _currentRun = nullptr;
    }

private:
    DOM::Paragraph* _currentPara;
    DOM::TextRun* _currentRun = nullptr;
    /// The bytes that follow the tag of the current run; they go into it in one piece.
    std::string _currentText;
    DOM::Blocks _blocks;
};

bool isByte(const TextWithTombstonesElement& element)
{
    return boost::get<short>(&element) != nullptr;
}

bool isBlock(const TextWithTombstonesElement& element)
{
    return boost::get<SharedConstPtr<DOM::Block>>(&element) != nullptr;
}

InsertionData takeApart(const TextWithTombstonesElementVector& elements)
{
    InsertionData data;
    const auto firstNoByte = std::find_if_not(elements.begin(), elements.end(), isByte);
    data.beginString.reserve(static_cast<std::size_t>(firstNoByte - elements.begin()));
    for (auto element = elements.begin(); element != firstNoByte; ++element)
    {
        data.beginString.push_back(byteCast(boost::get<short>(*element)));
    }
    const auto firstBlock = std::find_if(firstNoByte, elements.end(), isBlock);

    DOM::Paragraph scratch;
    TreeBuilder runsBuilder(&scratch);
    std::for_each(firstNoByte, firstBlock, boost::apply_visitor(runsBuilder));
    runsBuilder.closeRun();
    data.beginRuns = std::move(scratch.getRuns());

    TreeBuilder blocksBuilder(nullptr);
    std::for_each(firstBlock, elements.end(), boost::apply_visitor(blocksBuilder));
    data.blocks = blocksBuilder.takeBlocks();
    return data;
}

/// Moves the runs of a paragraph from `runIndex` on behind those of `receiver`, which isn't in the document yet.
void moveRuns(const GenericParagraphWrapper<false>& paragraph, unsigned long runIndex, DOM::Paragraph& receiver)
{
    GenericRunCollectionWrapper<false> runs = paragraph.getRuns();
    if (runIndex == runs.getSize())
    {
        return;
    }
    DOM::Runs moved = runs.removeElements(IndexRange<unsigned long>(runIndex, runs.getSize()));
    DOM::Runs& receiverRuns = receiver.getRuns();
    receiverRuns.insert(receiverRuns.end(), std::make_move_iterator(moved.begin()),
                        std::make_move_iterator(moved.end()));
}

/// Moves the bytes of a run from `byteIndex` on behind those of `receiver`, which isn't in the document yet.
void moveBytes(const GenericTextRunWrapper<false>& textRun, unsigned long byteIndex, DOM::Run& receiver)
{
    auto& receivingRun = cast<DOM::TextRun>(receiver);
    GenericTextWrapper<false> text = textRun.getText();
    receivingRun.setText(receivingRun.takeText() +
                         text.removeElements(IndexRange<unsigned long>(byteIndex, text.getSize())));
}

/// What stands at the start index, and behind it in its paragraph, goes to the end of the data.
class TailMover
{
public:
    explicit TailMover(InsertionData& data)
        : _data(data)
        , _lastParagraph([&data] { return std::ref(cast<DOM::Paragraph>(*data.blocks.back())); })
    {
    }

    void operator()(const GenericAtomicRunPosition<false, DOMWrappersTraits>& position)
    {
        moveRunsIfBlocksCome(position._paragraph, position._runIndex);
    }

    void operator()(const GenericTextRunTagPosition<false, DOMWrappersTraits>& position)
    {
        moveRunsIfBlocksCome(position._paragraph, position._runIndex);
    }

    void operator()(const GenericCharPosition<false, DOMWrappersTraits>& position)
    {
        if (position._byteIndex == 0 && _data.beginString.empty())
        {
            moveRunsIfBlocksCome(position._paragraph, position._runIndex);
            return;
        }
        // The bytes in front of the tail, or those that the data brings in front of it, stay in the run.
        moveBytes(position._textRun, position._byteIndex, getReceivingRun());
        moveRunsIfBlocksCome(position._paragraph, position._runIndex + 1);
    }

    template<class Position>
    void operator()(const Position&)
    {
    }

private:
    void moveRunsIfBlocksCome(const GenericParagraphWrapper<false>& paragraph, unsigned long runIndex)
    {
        if (!_data.blocks.empty())
        {
            moveRuns(paragraph, runIndex, _lastParagraph.get());
        }
    }

    DOM::Run& getReceivingRun()
    {
        if (_data.blocks.empty())
        {
            return *_data.beginRuns.back();
        }
        auto& lastParagraph = _lastParagraph;
        ZEM_ASSERT(!lastParagraph.get().get().getRuns().empty());
        return *lastParagraph.get().get().getRuns().back();
    }

    InsertionData& _data;
    Lazy<std::reference_wrapper<DOM::Paragraph>> _lastParagraph;
};

void insertBehind(const GenericBlockCollectionWrapper<false>& blocks, const PlanePlace& placeBefore, InsertionData data)
{
    const bool endsRun = !data.beginRuns.empty() || !data.blocks.empty();
    const TextPosition position = TextWithTombstonesPositionUtils::makePosition(blocks, placeBefore);
    if (!data.beginString.empty())
    {
        insertText(position, data.beginString, endsRun);
    }
    if (!data.beginRuns.empty())
    {
        insertRuns(position, std::move(data.beginRuns), !data.blocks.empty());
    }
    if (!data.blocks.empty())
    {
        GenericBlockCollectionWrapper<false>(blocks).insertElements(std::move(data.blocks),
                                                                    placeBefore._blockIndex + 1);
    }
}

} // namespace

void insertRange(const GenericBlockCollectionWrapper<false>& blocks, RangeInfo& range)
{
    ZEM_ASSERT_MESSAGE(!range._data.empty(), "!_data.empty()");
    InsertionData data = takeApart(range._data);
    const IndexExcludingTombstones startIndex = range.getStartIndex();
    const PlanePlace place = range.getAnchor().find(blocks.getBlocks(), startIndex);
    if (startIndex.get() == 0)
    {
        ZEM_ASSERT(data.beginString.empty() && data.beginRuns.empty());
        GenericBlockCollectionWrapper<false>(blocks).insertElements(std::move(data.blocks), 0);
        return;
    }
    if (!data.beginRuns.empty() || !data.blocks.empty())
    {
        TailMover mover(data);
        const TextPosition position = TextWithTombstonesPositionUtils::makePosition(blocks, place);
        boost::apply_visitor(mover, position);
    }
    insertBehind(blocks, range.getAnchor().find(blocks.getBlocks(), startIndex - 1), std::move(data));
}

} // namespace Zem::DOMCollaboration
