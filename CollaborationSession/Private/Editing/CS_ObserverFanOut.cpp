#include "Editing/CS_ObserverFanOut.h"

#include "Util_Assert.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

using DOMCollaboration::ExecutorNotificationObserver;

void ObserverFanOut::add(std::weak_ptr<ExecutorNotificationObserver> observer)
{
    _observers.erase(
        std::remove_if(_observers.begin(), _observers.end(), [](const auto& known) { return known.expired(); }),
        _observers.end());
    _observers.push_back(std::move(observer));
}

void ObserverFanOut::forEach(CallableRef<void(ExecutorNotificationObserver&)> notify)
{
    std::exception_ptr first;
    for (const auto& known : _observers)
    {
        const auto observer = known.lock();
        if (!observer)
        {
            continue;
        }
        try
        {
            notify(*observer);
        }
        catch (...)
        {
            first = first ? first : std::current_exception();
        }
    }
    if (first)
    {
        throwOrPostpone(first);
    }
}

void ObserverFanOut::throwOrPostpone(const std::exception_ptr& failure) const
{
    if (!_postponement)
    {
        std::rethrow_exception(failure);
    }
    if (!_postponement->_first)
    {
        _postponement->_first = failure;
    }
}

ObserverFanOut::Postponement::Postponement(ObserverFanOut& fanOut)
    : _fanOut(fanOut)
{
    const bool isAlone = _fanOut._postponement == nullptr;
    ZEM_ASSERT(isAlone);
    _fanOut._postponement = this;
}

void ObserverFanOut::Postponement::tell(CallableRef<void()> notify)
{
    try
    {
        notify();
    }
    catch (...)
    {
        _first = _first ? _first : std::current_exception();
    }
}

void ObserverFanOut::Postponement::rethrow() const
{
    if (_first)
    {
        std::rethrow_exception(_first);
    }
}

#define ZEM_PASS_ON(name, parameters, arguments)                                                                       \
    void ObserverFanOut::name parameters                                                                               \
    {                                                                                                                  \
        forEach([&](ExecutorNotificationObserver& observer) { observer.name arguments; });                             \
    }

ZEM_NOTIFICATIONS(ZEM_PASS_ON)

#undef ZEM_PASS_ON

} // namespace Zem::CollaborationSession
