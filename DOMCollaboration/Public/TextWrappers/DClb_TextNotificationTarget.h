#pragma once

#include "Notifications/DClb_TextWithTombstonesChangedObserver.h"

#include "DOM_NativeNodeAddress.h"

#include <exception>
#include <memory>

namespace Zem::DOMCollaboration
{

/// Whom the wrappers of one text tell of its changes, and the text's native address, which the notifications extend.
/// A dead observer is told nothing. The target outlives the wrappers, which refer to it.
///
/// Where `_failure` is set, no exception of the observer comes out of a wrapper: the first one is kept there, so that
/// what a change consists of is brought to its end, and whoever set it throws it then. It must outlive the target.
struct TextNotificationTarget
{
    DOM::NativeNodeAddress _address;
    std::weak_ptr<TextWithTombstonesChangedObserver> _observer;
    std::exception_ptr* _failure = nullptr;
};

} // namespace Zem::DOMCollaboration
