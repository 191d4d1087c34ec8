#include "DClb_DocumentOperationTransformer.h"
#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"
#include "TS_TextCase.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace Zem::DOMCollaboration
{

namespace
{

using namespace CollaborationEngine;

/// A text whose observer throws at every notification.
class UnwillinglyObservedText
{
public:
    explicit UnwillinglyObservedText(std::string_view notation)
        : _text(TestSupport::makeText(notation))
    {
    }

    /// Executes, and takes back; both must be carried out, and throw.
    void expectToBecome(OperationUPtr operation, std::string_view notation)
    {
        SCOPED_TRACE(TestSupport::print(*operation));
        const DOM::TextWithTombstones before = _text;
        OperationUPtr changedOp;
        EXPECT_THROW(_executor.executeAndChangeIfNeeded(*operation, changedOp), std::domain_error);
        EXPECT_FALSE(changedOp);
        EXPECT_EQ(TestSupport::normalize(notation), TestSupport::print(_text));
        EXPECT_THROW(_executor.reverse(*operation), std::domain_error);
        EXPECT_TRUE(before == _text) << TestSupport::print(_text);
    }

private:
    using Observer = SingleActionExecutorNotificationObserver<std::function<void()>>;

    DOM::Document _document;
    DOM::TextWithTombstones _text;
    std::shared_ptr<Observer> _observer = std::make_shared<Observer>([] { throw std::domain_error("unwilling"); });
    DocumentOperationExecutor _executor{
        std::make_shared<BlocksAdapterWithNodeAdapter>(_text, _document.getStyles(), nullptr, nullptr, nullptr, nullptr,
                                                       _document.getSharedObjectFactory()),
        std::make_shared<DocumentOperationTransformer>(), _observer};
};

} // namespace

TEST(TextWithTombstonesOperationExecutor, AnObserverThatThrowsLeavesTreeAndSlotsInStep)
{
    UnwillinglyObservedText text("{|ab}[..]{|cd}");
    text.expectToBecome(TestSupport::insert({{10, "}{|"}, {3, "~|"}}), "{|a~|b}[..]{|c}{|d}");
    text.expectToBecome(TestSupport::mark({{9, 10}, {3, 4}}), "{|a[b]}[..]{|[c]d}");
    text.expectToBecome(TestSupport::restore(5, "{}"), "{|ab}{}{|cd}");
}

} // namespace Zem::DOMCollaboration
