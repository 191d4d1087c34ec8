#pragma once

#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a frame got a new value.
class ZEM_EXPORT FramePropsChangedObserver
{
public:
    virtual void onFramePropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) = 0;

protected:
    ~FramePropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
