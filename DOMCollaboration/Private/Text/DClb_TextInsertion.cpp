// Putting flat elements, taken apart into bytes, runs and blocks, into the tree of a text:
//   1. what stands behind the start index in its paragraph or run moves to the end of the data;
//   2. bytes, runs and blocks go in behind the element in front of the start index.

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
        // The bytes in front of the tail stay in the run; so do those that the data brings in front of it, when the
        // start index lies between the run's tag and its first byte. Were the run to move whole then, its tag would
        // come behind these bytes, and they would be left without a run.
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
        const DOM::Runs& lastRuns = _lastParagraph.get().get().getRuns();
        ZEM_ASSERT_MESSAGE(!lastRuns.empty(), "!lastParagraph.get().getRuns().empty()");
        return *lastRuns.back();
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

void insertElements(const GenericBlockCollectionWrapper<false>& blocks, RangeInfo& range, InsertionData data)
{
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
