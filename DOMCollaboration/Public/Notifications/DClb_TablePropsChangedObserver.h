#pragma once

#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

namespace Zem::CollaborationEngine
{

class DataValue;

} // namespace Zem::CollaborationEngine

namespace Zem::DOMCollaboration
{

/// Is told that a property of a table got a new value.
class ZEM_EXPORT TablePropsChangedObserver
{
public:
    virtual void onTablePropsChanged(const DOM::NativeNodeAddress& address, unsigned long propertyId,
                                     const CollaborationEngine::DataValue& oldValue,
                                     const CollaborationEngine::DataValue& newValue) = 0;

protected:
    ~TablePropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
