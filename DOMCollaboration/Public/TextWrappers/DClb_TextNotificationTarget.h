#pragma once

#include "Notifications/DClb_TextWithTombstonesChangedObserver.h"

#include "DOM_NativeNodeAddress.h"

#include <memory>

namespace Zem::DOMCollaboration
{

/// Whom the wrappers of one text tell of its changes, and the text's native address, which the notifications extend.
/// A dead observer is told nothing. The target outlives the wrappers, which refer to it.
struct TextNotificationTarget
{
    DOM::NativeNodeAddress _address;
    std::weak_ptr<TextWithTombstonesChangedObserver> _observer;
};

} // namespace Zem::DOMCollaboration
