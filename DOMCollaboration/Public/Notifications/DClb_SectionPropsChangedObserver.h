#pragma once

#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a section tag got a new value.
class ZEM_EXPORT SectionPropsChangedObserver
{
public:
    virtual void onSectionPropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId) = 0;

protected:
    ~SectionPropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
