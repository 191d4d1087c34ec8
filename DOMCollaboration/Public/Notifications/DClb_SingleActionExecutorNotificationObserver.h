#pragma once

#include "Notifications/DClb_NotificationTable.h"

#include <utility>

namespace Zem::DOMCollaboration
{

/// An observer that does one and the same thing at every notification, whatever that tells. `Action` is a callable
/// without arguments.
template<class Action>
class SingleActionExecutorNotificationObserver : public ExecutorNotificationObserver
{
public:
    explicit SingleActionExecutorNotificationObserver(Action action)
        : _action(std::move(action))
    {
    }

#define ZEM_ACT(name, parameters, arguments)                                                                           \
    void name parameters override                                                                                      \
    {                                                                                                                  \
        act arguments;                                                                                                 \
    }
    ZEM_NOTIFICATIONS(ZEM_ACT)
#undef ZEM_ACT

private:
    template<class... Arguments>
    void act(const Arguments&...)
    {
        _action();
    }

    Action _action;
};

} // namespace Zem::DOMCollaboration
