#pragma once

#include "Util_Export.h"
#include "Util_UUID.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a text style got a new value.
class ZEM_EXPORT TextStylePropsChangedObserver
{
public:
    virtual void onTextStylePropsChanged(const UUID& uuid, unsigned long propertyId) = 0;

protected:
    ~TextStylePropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
