#pragma once

#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a conditional format got a new value.
class ZEM_EXPORT ConditionalFormatChangedObserver
{
public:
    virtual ~ConditionalFormatChangedObserver() = default;

    virtual void onConditionalFormatChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) = 0;
};

} // namespace Zem::DOMCollaboration
