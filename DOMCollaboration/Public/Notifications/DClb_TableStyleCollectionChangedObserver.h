#pragma once

#include "Util_Export.h"
#include "Util_UUID.h"

namespace Zem::DOM
{

class NamedTableStyle;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of table styles that came into the document or left it.
class ZEM_EXPORT TableStyleCollectionChangedObserver
{
public:
    virtual void onTableStyleInserted(const UUID& uuid) = 0;

    virtual void onTableStyleRemoved(const DOM::NamedTableStyle& removed) = 0;

protected:
    ~TableStyleCollectionChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
