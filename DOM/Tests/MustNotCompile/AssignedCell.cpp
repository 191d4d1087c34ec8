// error: use of deleted function|deleted (copy assignment )?operator|overload resolution selected deleted
#include "DOM_Table.h"

void replace(Zem::DOM::Table& table)
{
    Zem::DOM::Cell& cell = table.getOrCreateCell(Zem::RowIndex(0), Zem::ColumnIndex(0));
#ifdef MUST_NOT_COMPILE
    cell = Zem::DOM::Cell();
#else
    cell.getSharedStyle() = nullptr;
#endif
}
