#pragma once

#include "Util_Export.h"
#include "Util_UUID.h"

namespace Zem::DOM
{

class HeaderFooterPair;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of pairs of header and footer that came into the document or left it.
class ZEM_EXPORT HeaderFooterCollectionChangedObserver
{
public:
    virtual void onHeaderFooterInserted(const UUID& uuid) = 0;

    virtual void onHeaderFooterRemoved(const DOM::HeaderFooterPair& removed) = 0;

protected:
    ~HeaderFooterCollectionChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
