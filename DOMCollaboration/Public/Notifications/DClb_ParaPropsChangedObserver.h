#pragma once

#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a paragraph got a new value.
class ZEM_EXPORT ParaPropsChangedObserver
{
public:
    virtual void onParaPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) = 0;

protected:
    ~ParaPropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
