#pragma once

#include "Util_Export.h"
#include "Util_UUID.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a comment got a new value.
class ZEM_EXPORT CommentPropsChangedObserver
{
public:
    virtual void onCommentPropsChanged(const UUID& uuid, unsigned long propertyId) = 0;

protected:
    ~CommentPropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
