#pragma once

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of the document itself got a new value.
class ZEM_EXPORT DocumentPropsChangedObserver
{
public:
    virtual void onDocumentPropsChanged(unsigned long propertyId) = 0;

protected:
    ~DocumentPropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
