#include "CE_TableMatrix.h"

namespace Zem::CollaborationEngine
{

namespace
{

/// Slots need nothing of properties.
constexpr LinePairRule asItIs = nullptr;

/// The line that is set was dead and stays so.
constexpr LinePairRule staysDead = nullptr;

constexpr LinePairRule bySlotMatrix = &includeLineSlotsPastSlots;
constexpr LinePairRule followSlots = &includeLineSettingPastSlots;
constexpr LinePairRule mergeValues = &includeLineSettingPastSetting;

// clang-format off
constexpr LinePairRule lineMatrix[tableActionsCount][tableActionsCount] = {
/* first \ second  insertion     removal       marking       restoring     leaving       releasing     move          setting */
/* insertion */  { bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, asItIs },
/* removal   */  { bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, asItIs },
/* marking   */  { bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, asItIs },
/* restoring */  { bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, asItIs },
/* leaving   */  { bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, asItIs },
/* releasing */  { bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, asItIs },
/* move      */  { bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, bySlotMatrix, asItIs },
/* setting   */  { followSlots,  followSlots,  followSlots,  followSlots,  staysDead,    staysDead,    followSlots,  mergeValues },
};
// clang-format on

/// The crossing line was dead and stays so, or a property of it is set, which isn't one of its cells.
constexpr CellsPairRule asTheyAre = nullptr;

/// A move and a setting carry no cells.
constexpr CellsPairRule noCells = nullptr;

constexpr CellsPairRule follow = &includeCellsPastChangeOfIndices;
constexpr CellsPairRule mark = &includeCellsPastMarking;
constexpr CellsPairRule clear = &includeCellsPastRestoring;
constexpr CellsPairRule followAndTakeOver = &includeRestoredCellsPastInsertion;
constexpr CellsPairRule clearAndTakeOver = &includeRestoredCellsPastRestoring;

// clang-format off
constexpr CellsPairRule cellsMatrix[tableActionsCount][tableActionsCount] = {
/* first \ second  insertion          removal  marking  restoring         leaving    releasing  move     setting */
/* insertion */  { follow,            follow,  mark,    clear,            asTheyAre, asTheyAre, follow,  asTheyAre },
/* removal   */  { follow,            follow,  mark,    clear,            asTheyAre, asTheyAre, follow,  asTheyAre },
/* marking   */  { follow,            follow,  mark,    clear,            asTheyAre, asTheyAre, follow,  asTheyAre },
/* restoring */  { followAndTakeOver, follow,  mark,    clearAndTakeOver, asTheyAre, asTheyAre, follow,  asTheyAre },
/* leaving   */  { follow,            follow,  mark,    clear,            asTheyAre, asTheyAre, follow,  asTheyAre },
/* releasing */  { followAndTakeOver, follow,  mark,    clearAndTakeOver, asTheyAre, asTheyAre, follow,  asTheyAre },
/* move      */  { noCells,           noCells, noCells, noCells,          noCells,   noCells,   noCells, noCells },
/* setting   */  { noCells,           noCells, noCells, noCells,          noCells,   noCells,   noCells, noCells },
};
// clang-format on

} // namespace

LinePairRule getLinePairRule(TableAction first, TableAction second)
{
    return lineMatrix[static_cast<unsigned long>(first)][static_cast<unsigned long>(second)];
}

CellsPairRule getCellsPairRule(TableAction first, TableAction second)
{
    return cellsMatrix[static_cast<unsigned long>(first)][static_cast<unsigned long>(second)];
}

} // namespace Zem::CollaborationEngine
