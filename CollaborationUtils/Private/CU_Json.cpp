#include "CU_Json.h"

#include <string>
#include <vector>

namespace Zem::CollaborationUtils
{

namespace
{

/// Fails: `cereal::Exception` on a range that begins before the end of the one before it.
void requireAscending(const std::vector<TombstonesStorage::PlacesRange>& ranges)
{
    for (std::size_t i = 1; i < ranges.size(); ++i)
    {
        if (ranges[i].getBegin() < ranges[i - 1].getEnd())
        {
            throw cereal::Exception(
                "The range of tombstones that begins at " + std::to_string(ranges[i].getBegin().get()) +
                " doesn't lie behind the one before it, which ends at " + std::to_string(ranges[i - 1].getEnd().get()));
        }
    }
}

} // namespace

template<class Archive>
void TombstonesStorage::save(Archive& archive) const
{
    const std::vector<PlacesRange> ranges = getRanges();
    archive(cereal::make_nvp("_tombstones", ranges));
}

template<class Archive>
void TombstonesStorage::load(Archive& archive)
{
    std::vector<PlacesRange> ranges;
    archive(cereal::make_nvp("_tombstones", ranges));
    requireAscending(ranges);
    *this = TombstonesStorage(ranges);
}

ZEM_INSTANTIATE_JSON_SAVE_LOAD(TombstonesStorage)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(IndexRange<unsigned long>)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(IndexRange<IndexIncludingTombstones>)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(IndexRange<IndexExcludingTombstones>)

} // namespace Zem::CollaborationUtils

namespace Zem
{

ZEM_INSTANTIATE_JSON(CollaborationUtils::IndexIncludingTombstones)
ZEM_INSTANTIATE_JSON(CollaborationUtils::SignedIndexIncludingTombstones)
ZEM_INSTANTIATE_JSON(CollaborationUtils::IndexExcludingTombstones)

} // namespace Zem
