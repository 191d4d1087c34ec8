#pragma once

/// The matrices of pairs for operations on rows and columns of one table. A line is a row or a column. One matrix is
/// for two operations on lines of one axis, and one for the cells that travel with a line, past an operation on a
/// crossing one. One source file for each left operand holds its rules; `Docs/Engine.md` tells why they hold.

#include "CE_SetPropertyDataMerger.h"
#include "CE_TableOperands.h"
#include "CE_TieResolveCondition.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

using LinePairRule = OperationUPtr (*)(const TableOperand& first, const TableOperand& second,
                                       const SetPropertyDataMerger& merger, TieResolveCondition tieResolveCondition);

/// The rule of a pair on one axis; null where the left operand stays as it is.
/// `LineMatrix` in the tests names each of these pairs.
LinePairRule getLinePairRule(TableAction first, TableAction second);

using Cells = std::vector<CellData>;

/// Brings the cells that `first` carries past `second` on a crossing line. Returns whether anything changed.
using CellsPairRule = bool (*)(Cells& cells, const TableOperand& first, const TableOperand& second);

/// The rule of a pair across the axes; null where the left operand stays as it is. `CellsMatrix` in the tests names
/// each of these pairs.
CellsPairRule getCellsPairRule(TableAction first, TableAction second);

/// The cell with that index; the end if there is none.
inline Cells::iterator findCell(Cells& cells, unsigned long index)
{
    return std::find_if(cells.begin(), cells.end(), [&](const CellData& cell) { return cell.getIndex() == index; });
}

/// Two operations on the slots of one axis: the slot matrix tells what becomes of the first.
OperationUPtr includeLineSlotsPastSlots(const TableOperand& first, const TableOperand& second,
                                        const SetPropertyDataMerger&, TieResolveCondition tieResolveCondition);

OperationUPtr includeLineSettingPastSlots(const TableOperand& first, const TableOperand& second,
                                          const SetPropertyDataMerger&, TieResolveCondition);
OperationUPtr includeLineSettingPastSetting(const TableOperand& first, const TableOperand& second,
                                            const SetPropertyDataMerger& merger,
                                            TieResolveCondition tieResolveCondition);

bool includeCellsPastChangeOfIndices(Cells& cells, const TableOperand& first, const TableOperand& second);
bool includeCellsPastMarking(Cells& cells, const TableOperand& first, const TableOperand& second);
bool includeCellsPastRestoring(Cells& cells, const TableOperand& first, const TableOperand& second);

bool includeRestoredCellsPastInsertion(Cells& cells, const TableOperand& first, const TableOperand& second);
bool includeRestoredCellsPastRestoring(Cells& cells, const TableOperand& first, const TableOperand& second);

} // namespace Zem::CollaborationEngine
