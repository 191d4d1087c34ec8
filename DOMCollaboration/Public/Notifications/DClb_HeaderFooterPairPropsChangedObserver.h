#pragma once

#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a pair of header and footer got a new value.
class ZEM_EXPORT HeaderFooterPairPropsChangedObserver
{
public:
    virtual void onHeaderFooterPairPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) = 0;

protected:
    ~HeaderFooterPairPropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
