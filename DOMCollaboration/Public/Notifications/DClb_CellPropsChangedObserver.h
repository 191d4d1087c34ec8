#pragma once

#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

namespace Zem::CollaborationEngine
{

class DataValue;

} // namespace Zem::CollaborationEngine

namespace Zem::DOMCollaboration
{

/// Is told that a property of a cell got a new value.
class ZEM_EXPORT CellPropsChangedObserver
{
public:
    virtual void onCellPropsChanged(const DOM::NativeNodeAddress& address,
                                    const CollaborationEngine::DataValue& oldValue,
                                    const CollaborationEngine::DataValue& newValue, unsigned long propertyId) = 0;

protected:
    ~CellPropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
