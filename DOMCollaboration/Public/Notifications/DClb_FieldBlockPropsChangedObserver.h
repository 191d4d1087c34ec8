#pragma once

#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a field block got a new value.
class ZEM_EXPORT FieldBlockPropsChangedObserver
{
public:
    virtual void onFieldBlockPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) = 0;

protected:
    ~FieldBlockPropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
