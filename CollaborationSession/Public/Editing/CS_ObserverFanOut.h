#pragma once

#include "Notifications/DClb_NotificationTable.h"

#include "Util_CallableRef.h"
#include "Util_Export.h"

#include <exception>
#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// Passes each notification on to several observers, in the order in which they came, so that a document's one executor
/// serves views, indices and whoever else wants to know. It keeps none of them alive: those that are gone are passed
/// over, and forgotten when the next one comes. One that throws keeps nothing from those behind it: the first exception
/// goes on when all have been told.
class ZEM_EXPORT ObserverFanOut final : public DOMCollaboration::ExecutorNotificationObserver
{
public:
    /// While it stands, no exception of an observer goes on: what can't be stopped half-way is brought to its end
    /// first, and then `rethrow` is called.
    class ZEM_EXPORT Postponement
    {
    public:
        /// Requires: no other one stands ("isAlone").
        explicit Postponement(ObserverFanOut& fanOut);

        Postponement(const Postponement&) = delete;
        Postponement& operator=(const Postponement&) = delete;

        ~Postponement()
        {
            _fanOut._postponement = nullptr;
        }

        /// Tells somebody else, whose exception is held up like one of an observer.
        void tell(CallableRef<void()> notify);

        /// Throws the first exception that was held up, if there was one.
        void rethrow() const;

    private:
        friend ObserverFanOut;

        ObserverFanOut& _fanOut;
        std::exception_ptr _first;
    };

    /// Must not be called from within a notification.
    void add(std::weak_ptr<DOMCollaboration::ExecutorNotificationObserver> observer);

#define ZEM_DECLARE(name, parameters, arguments) void name parameters override;
    ZEM_NOTIFICATIONS(ZEM_DECLARE)
#undef ZEM_DECLARE

private:
    void forEach(CallableRef<void(DOMCollaboration::ExecutorNotificationObserver&)> notify);
    void throwOrPostpone(const std::exception_ptr& failure) const;

    std::vector<std::weak_ptr<DOMCollaboration::ExecutorNotificationObserver>> _observers;
    Postponement* _postponement = nullptr;
};

} // namespace Zem::CollaborationSession
