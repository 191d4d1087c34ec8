#include "TS_MirrorObserver.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include "Util_Cast.h"
#include "Util_DeepComparison.h"
#include "Util_DeepCopy.h"

namespace Zem::TestSupport
{

using CollaborationUtils::IndexExcludingTombstones;
using CollaborationUtils::IndexRange;
using DOM::NativeNodeAddress;
using NodeAddressing::AddressInList;

namespace
{

constexpr unsigned long stepsToParagraph = 1;
constexpr unsigned long stepsToRun = 3;

unsigned long getIndexFromEnd(const NativeNodeAddress& address, unsigned long position)
{
    return address.getItemFromEndAs<AddressInList>(position)->getIndex();
}

DOM::Runs& getRuns(const DOM::Blocks& blocks, unsigned long blockIndex)
{
    return cast<DOM::Paragraph>(*blocks.at(blockIndex)).getRuns();
}

DOM::TextRun& getTextRun(const DOM::Blocks& blocks, const NativeNodeAddress& runAddress)
{
    const DOM::Runs& runs = getRuns(blocks, getIndexFromEnd(runAddress, 2));
    return cast<DOM::TextRun>(*runs.at(getIndexFromEnd(runAddress, 0)));
}

template<class T>
void copyInto(std::vector<std::unique_ptr<T>>& target, const std::vector<std::unique_ptr<T>>& source,
              const IndexRange<unsigned long>& range)
{
    for (unsigned long index = range.getBegin(); index < range.getEnd(); ++index)
    {
        target.insert(target.begin() + static_cast<std::ptrdiff_t>(index), deepCopy(source.at(index)));
    }
}

/// Takes out what was removed, and says whether it was there.
template<class T>
bool takeOut(std::vector<std::unique_ptr<T>>& target, unsigned long begin,
             const ReadonlyVector<std::vector<std::unique_ptr<T>>>& removed)
{
    if (begin + removed.size() > target.size())
    {
        return false;
    }
    bool isSame = true;
    for (const T& element : removed)
    {
        isSame &= *target[begin] == element;
        target.erase(target.begin() + static_cast<std::ptrdiff_t>(begin));
    }
    return isSame;
}

} // namespace

MirrorObserver::MirrorObserver(const DOM::TextWithTombstones& text, NativeNodeAddress address)
    : SingleActionExecutorNotificationObserver([] {})
    , _text(text)
    , _address(std::move(address))
    , _mirror(deepCopy(text.getBlocks()))
{
}

std::string MirrorObserver::findDifferences() const
{
    const bool isEqual = areDeeplyEqual(_mirror, _text.getBlocks());
    return isEqual ? _differences : _differences + "the mirror doesn't show what the text holds; ";
}

void MirrorObserver::onCharsRemoved(const NativeNodeAddress& address, IndexExcludingTombstones begin,
                                    const std::string& removed)
{
    if (!isMine(address, stepsToRun))
    {
        return;
    }
    DOM::TextRun& run = getTextRun(_mirror, address);
    std::string text = run.takeText();
    expect(text.compare(begin.get(), removed.size(), removed) == 0, "other bytes were removed than stood there; ");
    run.setText(text.erase(begin.get(), removed.size()));
}

void MirrorObserver::onCharsInserted(const NativeNodeAddress& address, const IndexRange<unsigned long>& range)
{
    if (!isMine(address, stepsToRun))
    {
        return;
    }
    const std::string& source = getTextRun(_text.getBlocks(), address).getText();
    DOM::TextRun& run = getTextRun(_mirror, address);
    run.setText(run.takeText().insert(range.getBegin(), source, range.getBegin(), range.getCount()));
}

void MirrorObserver::onRunsRemoved(const NativeNodeAddress& address, IndexExcludingTombstones begin,
                                   const ReadonlyVector<DOM::Runs>& removed)
{
    if (isMine(address, stepsToParagraph))
    {
        expect(takeOut(getRuns(_mirror, getIndexFromEnd(address, 0)), begin.get(), removed),
               "other runs were removed than stood there; ");
    }
}

void MirrorObserver::onRunsInserted(const NativeNodeAddress& address, const IndexRange<unsigned long>& range)
{
    if (isMine(address, stepsToParagraph))
    {
        const unsigned long blockIndex = getIndexFromEnd(address, 0);
        copyInto(getRuns(_mirror, blockIndex), getRuns(_text.getBlocks(), blockIndex), range);
    }
}

void MirrorObserver::onBlocksRemoved(const NativeNodeAddress& address, IndexExcludingTombstones begin,
                                     const ReadonlyVector<DOM::Blocks>& removed)
{
    if (isMine(address, 0))
    {
        expect(takeOut(_mirror, begin.get(), removed), "other blocks were removed than stood there; ");
    }
}

void MirrorObserver::onBlocksInserted(const NativeNodeAddress& address, const IndexRange<unsigned long>& range)
{
    if (isMine(address, 0))
    {
        copyInto(_mirror, _text.getBlocks(), range);
    }
}

bool MirrorObserver::isMine(const NativeNodeAddress& address, unsigned long stepsBelow) const
{
    return address.getSize() == _address.getSize() + stepsBelow && _address.isPrefixOf(address);
}

void MirrorObserver::expect(bool condition, const char* what)
{
    if (!condition)
    {
        _differences += what;
    }
}

} // namespace Zem::TestSupport
