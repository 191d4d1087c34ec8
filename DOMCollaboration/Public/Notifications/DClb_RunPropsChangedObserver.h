#pragma once

#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a run got a new value.
class ZEM_EXPORT RunPropsChangedObserver
{
public:
    virtual void onRunPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) = 0;

protected:
    ~RunPropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
