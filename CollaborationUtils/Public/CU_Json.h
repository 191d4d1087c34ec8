#pragma once

/// The JSON forms of this module's templates. As `Util_Json.h`, it is included by .cpp files only.

#include "CU_CollectionWithTombstones.h"
#include "CU_IndexRange.h"

#include "Util_Json.h"

namespace Zem::CollaborationUtils
{

template<class UnsignedIndex>
template<class Archive>
void IndexRange<UnsignedIndex>::save(Archive& archive) const
{
    ZEM_ASSERT(_begin < _end);
    archive(cereal::make_nvp("_begin", _begin), cereal::make_nvp("_end", _end));
}

template<class UnsignedIndex>
template<class Archive>
void IndexRange<UnsignedIndex>::load(Archive& archive)
{
    UnsignedIndex begin{};
    UnsignedIndex end{};
    archive(cereal::make_nvp("_begin", begin), cereal::make_nvp("_end", end));
    *this = IndexRange(begin, end);
}

template<class V>
template<class Archive>
void CollectionWithTombstones<V>::serialize(Archive& archive)
{
    archive(cereal::make_nvp("_elements", _elements), cereal::make_nvp("_tombstones", _tombstones));
}

} // namespace Zem::CollaborationUtils
