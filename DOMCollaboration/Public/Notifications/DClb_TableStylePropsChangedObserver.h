#pragma once

#include "Util_Export.h"
#include "Util_UUID.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a table style got a new value.
class ZEM_EXPORT TableStylePropsChangedObserver
{
public:
    virtual void onTableStylePropsChanged(const UUID& uuid, unsigned long propertyId) = 0;

protected:
    ~TableStylePropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
