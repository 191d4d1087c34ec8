#include "Text/DClb_TextMerging.h"

#include "Util_Assert.h"
#include "Util_Visitor.h"

namespace Zem::DOMCollaboration
{

namespace
{

using ParaTagPosition = GenericParaTagPosition<false, DOMWrappersTraits>;
using AtomicRunPosition = GenericAtomicRunPosition<false, DOMWrappersTraits>;
using TextRunTagPosition = GenericTextRunTagPosition<false, DOMWrappersTraits>;
using CharPosition = GenericCharPosition<false, DOMWrappersTraits>;

void insertTextAt(const GenericTextRunWrapper<false>& textRun, unsigned long byteIndex, const std::string& text,
                  bool mustBeAtEnd)
{
    GenericTextWrapper<false> textRunString = textRun.getText();
    if (mustBeAtEnd)
    {
        ZEM_ASSERT(byteIndex == textRunString.getSize());
    }
    textRunString.insertElements(text, byteIndex);
}

void insertRunsAt(const GenericParagraphWrapper<false>& paragraph, unsigned long runIndex, DOM::Runs runs,
                  bool mustBeAtEnd)
{
    GenericRunCollectionWrapper<false> paraRuns = paragraph.getRuns();
    if (mustBeAtEnd)
    {
        ZEM_ASSERT(runIndex == paraRuns.getSize());
    }
    paraRuns.insertElements(std::move(runs), runIndex);
}

} // namespace

void insertText(const TextPosition& position, const std::string& text, bool mustBeAtEnd)
{
    boost::apply_visitor(Overloads{[&](const TextRunTagPosition& tag)
                                   { insertTextAt(tag._textRun, 0, text, mustBeAtEnd); },
                                   [&](const CharPosition& byte)
                                   { insertTextAt(byte._textRun, byte._byteIndex + 1, text, mustBeAtEnd); },
                                   [](const auto&) { ZEM_FAIL("Invalid element type"); }},
                         position);
}

void insertRuns(const TextPosition& position, DOM::Runs runs, bool mustBeAtEnd)
{
    const auto insertBehind = [&](const auto& run)
    { insertRunsAt(run._paragraph, run._runIndex + 1, std::move(runs), mustBeAtEnd); };
    boost::apply_visitor(Overloads{[&](const ParaTagPosition& tag)
                                   { insertRunsAt(tag._paragraph, 0, std::move(runs), mustBeAtEnd); },
                                   [&](const AtomicRunPosition& run) { insertBehind(run); },
                                   [&](const TextRunTagPosition& run) { insertBehind(run); },
                                   [&](const CharPosition& run) { insertBehind(run); },
                                   [](const auto&) { ZEM_FAIL("Invalid element type"); }},
                         position);
}

} // namespace Zem::DOMCollaboration
