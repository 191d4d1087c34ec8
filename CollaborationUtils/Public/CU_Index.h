#pragma once

/// The two spaces in which the places of a list with tombstones are counted. They are types of their own, so that an
/// index of one space isn't taken for one of the other.

#include "Util_TaggedValue.h"

namespace Zem::CollaborationUtils
{

struct IndexIncludingTombstonesTag
{
};

struct IndexExcludingTombstonesTag
{
};

/// A place in the sequence of live elements and tombstones together, as operations name it.
using IndexIncludingTombstones = TaggedValue<unsigned long, IndexIncludingTombstonesTag>;

/// A distance between two places of that sequence.
using SignedIndexIncludingTombstones = TaggedValue<long, IndexIncludingTombstonesTag>;

/// A place among the live elements alone, as the document knows it.
using IndexExcludingTombstones = TaggedValue<unsigned long, IndexExcludingTombstonesTag>;

/// Whether a question about a list counts its tombstones.
enum class WithTombstones
{
    No = 0,
    Yes = 1
};

} // namespace Zem::CollaborationUtils
