#pragma once

/// How deletions of one thing are counted. Each deletion holds it down; it lives when nothing does. A marking is the
/// first deletion, a leaving any further one. A restoring ends all holds; brought past a leaving it becomes a releasing
/// of all that it knew. The undoing of a leaving is a releasing of that one hold.

#include "CE_Shadows.h"

#include <boost/optional.hpp>

namespace Zem::CollaborationEngine
{

/// What lies on a restoring past a leaving: it let go all deletions that it knew, and the leaving holds on.
inline Shadows makeHoldsPastLeaving()
{
    Shadows shadows;
    shadows._holdersCount = 1;
    shadows._releasesAll = true;
    return shadows;
}

/// The holds of a releasing alone.
inline Shadows makeHolds(const Shadows& shadows)
{
    Shadows holds;
    holds._holdersCount = shadows._holdersCount;
    holds._releasesAll = shadows._releasesAll;
    return holds;
}

/// How many deletions a leaving finds past another leaving. One that holds nothing down neither counts nor is counted.
inline unsigned long countHoldersPastLeaving(unsigned long first, unsigned long second)
{
    return first == 0 || second == 0 ? first : first + 1;
}

/// How many deletions are left when two releasings have let go; empty if the second one let go what the first one
/// would. A releasing of one deletion counts as one of those that a releasing of all didn't know: most come later than
/// that.
boost::optional<unsigned long> countHoldersPastReleasing(const Shadows& first, const Shadows& second);

} // namespace Zem::CollaborationEngine
