#pragma once

#include "Util_Export.h"
#include "Util_UUID.h"

namespace Zem::DOM
{

class Comment;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of comments that came into the document or left it.
class ZEM_EXPORT CommentCollectionChangedObserver
{
public:
    virtual void onCommentInserted(const UUID& uuid) = 0;

    virtual void onCommentRemoved(const DOM::Comment& removed) = 0;

protected:
    ~CommentCollectionChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
