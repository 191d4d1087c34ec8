#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

#include "Util_Assert.h"

namespace Zem::DOMCollaboration
{

namespace
{

struct DoNothing
{
    void operator()() const
    {
    }
};

struct FailUnexpectedCall
{
    [[noreturn]] void operator()() const
    {
        ZEM_FAIL("Unexpected observer call.");
    }
};

} // namespace

std::shared_ptr<ExecutorNotificationObserver> makeEmptyExecutorNotificationObserver()
{
    return std::make_shared<SingleActionExecutorNotificationObserver<DoNothing>>(DoNothing());
}

std::shared_ptr<ExecutorNotificationObserver> makeAssertExecutorNotificationObserver()
{
    return std::make_shared<SingleActionExecutorNotificationObserver<FailUnexpectedCall>>(FailUnexpectedCall());
}

} // namespace Zem::DOMCollaboration
