// The JSON forms of field blocks and of what they hold.

#include "DOM_FieldBlock.h"
#include "DOM_Json.h"

namespace Zem::DOM
{

namespace FormulaSyntaxTree
{

template<class Archive>
void Expr::serialize(Archive&)
{
}

template<class Index, class ID>
template<class Archive>
void CellRangeEdge<Index, ID>::serialize(Archive& archive)
{
    serializeFields(archive, *this);
}

template<class Archive>
void CellRange::serialize(Archive& archive)
{
    archive(cereal::base_class<Expr>(this));
    serializeFields(archive, *this);
}

ZEM_INSTANTIATE_JSON(Expr)
ZEM_INSTANTIATE_JSON(RowEdge)
ZEM_INSTANTIATE_JSON(ColumnEdge)
ZEM_INSTANTIATE_JSON(CellRange)

} // namespace FormulaSyntaxTree

template<class T>
template<class Archive>
void BlockValue<T>::serialize(Archive& archive)
{
    serializeFields(archive, *this);
}

ZEM_JSON_OF_FIELDS(Formula)
ZEM_JSON_OF_FIELDS(ArrayFormulaShift)
ZEM_JSON_OF_FIELDS(TableOfContentsInfo)
ZEM_JSON_OF_FIELDS(FieldBlock)
ZEM_INSTANTIATE_JSON(BlockValue<FloatNumber>)
ZEM_INSTANTIATE_JSON(BlockValue<FormulaErrorType>)
ZEM_INSTANTIATE_JSON(BlockValue<bool>)

} // namespace Zem::DOM
