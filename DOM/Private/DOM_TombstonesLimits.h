#pragma once

/// What must hold of a list for its tombstones to mean anything. Used by readers, which refuse other lists, and by
/// `checkInvariants`.

#include "CU_CollectionWithTombstones.h"
#include "CU_TombstonesStorage.h"

#include <optional>
#include <string>

namespace Zem::DOM::TombstonesLimits
{

/// No list has more tombstones, so that its places can be counted whatever lives among them.
constexpr unsigned long maximalCount = 1UL << 62;

/// How many live slots stand in front of the last tombstone. Linear in the ranges of tombstones.
unsigned long getSlotsBeforeLastTombstone(const CollaborationUtils::TombstonesStorage& tombstones);

/// Why a list of `liveCount` live slots can't have these tombstones; empty if it can.
std::optional<std::string> findMisfit(const CollaborationUtils::TombstonesStorage& tombstones, unsigned long liveCount);

/// Fails: `BaseRuntimeError` where `findMisfit` finds something.
void requireFit(const CollaborationUtils::TombstonesStorage& tombstones, unsigned long liveCount);

/// The first element that is null.
template<class Elements>
std::optional<unsigned long> findNull(const Elements& elements)
{
    for (unsigned long index = 0; index < elements.size(); ++index)
    {
        if (!elements[index])
        {
            return index;
        }
    }
    return std::nullopt;
}

/// What is wrong with a collection whose elements `kind` names; empty if nothing is.
template<class V>
std::optional<std::string> findProblem(const CollaborationUtils::CollectionWithTombstones<V>& collection,
                                       const std::string& kind)
{
    if (const std::optional<unsigned long> null = findNull(collection.getElements()))
    {
        return kind + " " + std::to_string(*null) + " of a table is null.";
    }
    const auto misfit = findMisfit(collection.getTombstones(), collection.getElements().size());
    return misfit ? std::optional(kind + "s: " + *misfit) : std::nullopt;
}

} // namespace Zem::DOM::TombstonesLimits
