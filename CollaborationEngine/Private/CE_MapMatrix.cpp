#include "CE_MapMatrix.h"

namespace Zem::CollaborationEngine
{

namespace
{

/// The left operand needs nothing of what the right one does.
constexpr MapPairRule asItIs = nullptr;

/// The one needs the key in the map, the other needs it out of it.
constexpr MapPairRule disjoint = nullptr;

// clang-format off
constexpr MapPairRule mapMatrix[mapActionsCount][mapActionsCount] = {
/* first \ second  insertion                          removal                        leaving                          releasing */
/* insertion */  { &includeKeyInsertionPastInsertion, disjoint,                      &includeKeyInsertionPastLeaving, asItIs },
/* removal   */  { disjoint,                          &includeKeyRemovalPastRemoval, disjoint,                        disjoint },
/* leaving   */  { &includeKeyLeavingPastInsertion,   disjoint,                      &includeKeyLeavingPastLeaving,   &includeKeyLeavingPastReleasing },
/* releasing */  { &includeKeyReleasingPastInsertion, disjoint,                      &includeKeyReleasingPastLeaving, &includeKeyReleasingPastReleasing },
};
// clang-format on

} // namespace

MapPairRule getMapPairRule(MapAction first, MapAction second)
{
    return mapMatrix[static_cast<unsigned long>(first)][static_cast<unsigned long>(second)];
}

} // namespace Zem::CollaborationEngine
