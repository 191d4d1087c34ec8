#pragma once

#include "DOM_Block.h"
#include "DOM_FieldOperators.h"
#include "DOM_TrackedObject.h"

#include "Util_Export.h"
#include "Util_UUIDable.h"

#include <utility>

namespace Zem::DOM
{

/// A comment on a part of the text, which names the comment by its UUID. The comments of a thread are chained, each
/// naming the one that answers it.
class ZEM_EXPORT Comment : public UUIDable
{
public:
    using UUIDable::UUIDable;

    Comment();
    Comment(const Comment& other);
    Comment(Comment&&) noexcept;
    Comment& operator=(const Comment& other);
    Comment& operator=(Comment&&) noexcept;
    ~Comment();

    /// Who wrote it, and when.
    const TrackChangesInfo& getInfo() const
    {
        return _info;
    }

    void setInfo(TrackChangesInfo info)
    {
        _info = std::move(info);
    }

    const Blocks& getBlocks() const
    {
        return _blocks;
    }

    Blocks& getBlocks()
    {
        return _blocks;
    }

    /// Nil for the last of its thread.
    const UUID& getNextCommentUUID() const
    {
        return _nextCommentUUID;
    }

    void setNextCommentUUID(const UUID& nextCommentUUID)
    {
        _nextCommentUUID = nextCommentUUID;
    }

    bool isResolved() const
    {
        return _isResolved;
    }

    void setResolved(bool isResolved)
    {
        _isResolved = isResolved;
    }

    static constexpr auto ownFields()
    {
        return std::make_tuple(field("_info", &Comment::_info), field("_blocks", &Comment::_blocks),
                               field("_nextCommentUUID", &Comment::_nextCommentUUID),
                               field("_isResolved", &Comment::_isResolved));
    }

    static constexpr auto fields()
    {
        return std::tuple_cat(UUIDable::fields(), ownFields());
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    TrackChangesInfo _info;
    Blocks _blocks;
    UUID _nextCommentUUID;
    bool _isResolved = false;
};

} // namespace Zem::DOM
