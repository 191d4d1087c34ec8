#pragma once

/// How concurrent deletions of one thing are counted: it lives while the count is 0. A marking makes the count 1, each
/// leaving (a deletion of what is dead already) adds 1. A restoring makes it 0; transformed against a leaving, it
/// becomes a releasing of all deletions that it knew. The undoing of a leaving is a releasing that takes 1 away.

#include "CE_Shadows.h"

#include <boost/optional.hpp>

namespace Zem::CollaborationEngine
{

/// What a restoring is transformed into against a leaving: a releasing of all deletions that the restoring knew. The
/// one that it didn't know, the leaving, is left.
inline Shadows makeHoldsPastLeaving()
{
    Shadows shadows;
    shadows._holdersCount = 1;
    shadows._releasesAll = true;
    return shadows;
}

/// The count of a releasing, without what else shadows it.
inline Shadows makeHolds(const Shadows& shadows)
{
    Shadows holds;
    holds._holdersCount = shadows._holdersCount;
    holds._releasesAll = shadows._releasesAll;
    return holds;
}

/// How many deletions a leaving finds behind another leaving. One that finds none, a pseudo identity, stays so and
/// isn't counted by others.
inline unsigned long countHoldersPastLeaving(unsigned long first, unsigned long second)
{
    return first == 0 || second == 0 ? first : first + 1;
}

/// How many deletions `first` leaves behind `second`, which is a releasing, too; empty if `second` took away what
/// `first` would. Which deletions a releasing of all knew isn't kept: a releasing of one counts as one of those that it
/// didn't know, since most come later than it.
boost::optional<unsigned long> countHoldersPastReleasing(const Shadows& first, const Shadows& second);

} // namespace Zem::CollaborationEngine
