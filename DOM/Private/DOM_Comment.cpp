#include "DOM_Comment.h"

#include "Util_DeepCopy.h"

namespace Zem::DOM
{

Comment::Comment() = default;

Comment::Comment(const Comment& other)
    : UUIDable(other)
    , _info(other._info)
    , _blocks(deepCopy(other._blocks))
    , _nextCommentUUID(other._nextCommentUUID)
    , _isResolved(other._isResolved)
{
}

Comment::Comment(Comment&&) noexcept = default;

Comment& Comment::operator=(const Comment& other)
{
    return *this = Comment(other);
}

Comment& Comment::operator=(Comment&&) noexcept = default;
Comment::~Comment() = default;

} // namespace Zem::DOM
