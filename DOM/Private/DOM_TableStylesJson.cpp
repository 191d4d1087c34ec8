// The JSON forms of the styles and properties of cells, rows, columns and tables.

#include "DOM_CellStyle.h"
#include "DOM_Json.h"
#include "DOM_RowColumnStyle.h"
#include "DOM_TableStyle.h"

namespace Zem::DOM
{

template<class Props>
template<class Archive>
void RowColumnStyle<Props>::serialize(Archive& archive)
{
    serializeFields(archive, *this);
}

ZEM_JSON_OF_FIELDS(CellBorders)
ZEM_JSON_OF_FIELDS(CellMargins)
ZEM_JSON_OF_FIELDS(CellProps)
ZEM_JSON_OF_FIELDS(CellStyle)
ZEM_JSON_OF_FIELDS(RowHeightImpl)
ZEM_JSON_OF_FIELDS(RowPropsImpl<MemberTrait::Value>)
ZEM_JSON_OF_FIELDS(ColumnPropsImpl<MemberTrait::Value>)
ZEM_INSTANTIATE_JSON(RowColumnStyle<RowProps>)
ZEM_INSTANTIATE_JSON(RowColumnStyle<ColumnProps>)
ZEM_JSON_OF_FIELDS(TableBorders)
ZEM_JSON_OF_FIELDS(TableProps)
ZEM_JSON_OF_FIELDS(TableStyle)

} // namespace Zem::DOM
