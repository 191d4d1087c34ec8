#pragma once

#include "Util_Export.h"
#include "Util_UUID.h"

namespace Zem::DOM
{

class NamedTextStyle;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of text styles that came into the document or left it.
class ZEM_EXPORT TextStyleCollectionChangedObserver
{
public:
    virtual void onTextStyleInserted(const UUID& uuid) = 0;

    virtual void onTextStyleRemoved(const DOM::NamedTextStyle& removed) = 0;

protected:
    ~TextStyleCollectionChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
