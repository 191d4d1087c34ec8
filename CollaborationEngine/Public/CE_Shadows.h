#pragma once

/// What keeps a shadowed operation from having an effect.

#include "CE_DataValue.h"

#include "Util_SharedConstPtr.h"

#include <vector>

namespace Zem::CollaborationEngine
{

/// An element on the path of an operation that was marked or removed.
struct DeadPlace
{
    enum class Kind
    {
        Element,
        Row,
        Column
    };

    friend bool operator==(const DeadPlace& left, const DeadPlace& right)
    {
        return left._chunkIndex == right._chunkIndex && left._kind == right._kind;
    }

    template<class Archive>
    void serialize(Archive& archive);

    /// The chunk of the operation's address that names the element. The size of the address stands for the row or
    /// column at which the operation itself is aimed.
    unsigned long _chunkIndex = 0;
    Kind _kind = Kind::Element;
    /// The value that was removed from a map, where it is known: only that one brings the operation back.
    SharedConstPtr<DataValue> _removedValue;
};

/// Why a `ShadowedOperation` has no effect. With none of these reasons nothing brings it back.
struct Shadows
{
    bool areForGood() const
    {
        return _deadPlaces.empty() && _holdersCount == 0;
    }

    template<class Archive>
    void serialize(Archive& archive);

    std::vector<DeadPlace> _deadPlaces;
    /// For a restoring: how many deletions hold its slots down still, once it has let go. It takes effect at 0.
    unsigned long _holdersCount = 0;
    /// Whether the restoring let go all deletions that were known where it was made, and not one alone.
    bool _releasesAll = false;
};

} // namespace Zem::CollaborationEngine
