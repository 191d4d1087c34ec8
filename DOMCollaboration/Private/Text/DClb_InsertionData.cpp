#include "Text/DClb_InsertionData.h"

#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>
#include <utility>

namespace Zem::DOMCollaboration
{

namespace
{

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
        _currentPara = cast<DOM::Paragraph>(_blocks.back().get());
        ZEM_ASSERT_MESSAGE(!_currentPara || _currentPara->getRuns().empty(), "paragraph.getRuns().empty()");
    }

    void operator()(const SharedConstPtr<DOM::Run>& element)
    {
        const auto* currentPara = _currentPara;
        ZEM_ASSERT(currentPara);
        closeRun();
        DOM::Runs& runs = _currentPara->getRuns();
        runs.push_back(cloneToUnique<DOM::Run>(derefPtr(element)));
        _currentRun = cast<DOM::TextRun>(runs.back().get());
        ZEM_ASSERT_MESSAGE(!_currentRun || _currentRun->getText().empty(), "textRun.getText().empty()");
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
        if (_currentRun)
        {
            _currentRun->setText(std::exchange(_currentText, {}));
        }
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

} // namespace

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

} // namespace Zem::DOMCollaboration
