// The JSON forms of cells and pivot tables.

#include "DOM_Cell.h"
#include "DOM_IdentifiedJson.h"
#include "DOM_Json.h"
#include "DOM_PivotTable.h"
#include "DOM_TextLimits.h"

namespace Zem::DOM
{

template<class Archive>
void ValueField::serialize(Archive& archive)
{
    JsonDetails::serializeIdentified(archive, *this);
}

template<class Archive>
void PivotTableValue::serialize(Archive& archive)
{
    serializeFields(archive, *this);
    if constexpr (Archive::is_loading::value)
    {
        TextLimits::requireNoNull(_blocks);
    }
}

template<class Archive>
void FieldCache::serialize(Archive& archive)
{
    JsonDetails::serializeIdentified(archive, *this);
}

template<class Archive>
void PivotTable::serialize(Archive& archive)
{
    JsonDetails::serializeIdentified(archive, *this);
}

namespace
{

using TextUPtr = std::unique_ptr<TextWithTombstones>;

/// An empty text equals none, and is none where equal cells are written alike.
const TextUPtr& findWrittenText(cereal::JSONOutputArchive& archive, const TextUPtr& text)
{
    static const TextUPtr none;
    const bool isLeftOut = text && *text == TextWithTombstones() && JsonDetails::findMetPointers(archive);
    return isLeftOut ? none : text;
}

TextUPtr& findWrittenText(cereal::JSONInputArchive&, TextUPtr& text)
{
    return text;
}

} // namespace

template<class Archive>
void Cell::serialize(Archive& archive)
{
    archive(cereal::make_nvp("_text", findWrittenText(archive, _text)), cereal::make_nvp("_sharedStyle", _sharedStyle),
            cereal::make_nvp("_mergeProps", _mergeProps), cereal::make_nvp("_pivotTable", _pivotTable));
}

ZEM_JSON_OF_FIELDS(PivotTableField)
ZEM_JSON_OF_FIELDS(PivotTableCategoryInfo)
ZEM_INSTANTIATE_JSON(ValueField)
ZEM_INSTANTIATE_JSON(PivotTableValue)
ZEM_INSTANTIATE_JSON(FieldCache)
ZEM_INSTANTIATE_JSON(PivotTable)
ZEM_JSON_OF_FIELDS(CellMergeProps)
ZEM_INSTANTIATE_JSON(Cell)

} // namespace Zem::DOM
