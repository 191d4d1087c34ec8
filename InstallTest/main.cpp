#include <DOM_Blocks.h>
#include <TextWrappers/DClb_BlockWrappers.h>
#include <Util_Assert.h>

#include <iostream>
#include <memory>
#include <string>

namespace
{

/// Looks at a text through read-only views: instantiations that the library offers, and that the compiler here doesn't
/// make.
bool canLookAtText()
{
    using namespace Zem;
    using namespace Zem::DOMCollaboration;
    DOM::Paragraph paragraph;
    paragraph.getRuns().push_back(std::make_unique<DOM::TextRun>("text"));
    DOM::TextWithTombstones text;
    text.getBlocks().push_back(std::make_unique<DOM::Paragraph>(paragraph));
    const TextNotificationTarget target{};
    const auto block = GenericTextWithTombstonesWrapper<true>(text, target).getBlocks().getElement(0);
    const auto runs = dynamic_cast<const GenericParagraphWrapper<true>&>(*block).getRuns();
    const auto run = runs.getElement(0);
    const auto bytes = dynamic_cast<const GenericTextRunWrapper<true>&>(*run).getText();
    return bytes.getSize() == 4 && runs.makeAddressToPara().getSize() == 1 && bytes.getAddressToRun().getSize() == 3;
}

bool canFailAnAssertion()
{
    try
    {
        ZEM_FAIL("reached");
    }
    catch (const Zem::AssertionFailure& failure)
    {
        std::cout << failure.what() << '\n';
        return failure.what() == std::string("reached");
    }
}

} // namespace

int main()
{
    Zem::setAssertionHandler(&Zem::throwAssertionFailure);
    Zem::setAssertionPrinting(false);
    return canFailAnAssertion() && canLookAtText() ? 0 : 1;
}
