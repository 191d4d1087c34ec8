#include "Util_Json.h"

#include <optional>
#include <string>

namespace Zem
{

namespace
{

void requireIncrease(const char* name, unsigned long begin, unsigned long end)
{
    if (begin >= end)
    {
        throw cereal::Exception(std::string("A table range has no ") + name + " from " + std::to_string(begin) +
                                " to " + std::to_string(end));
    }
}

} // namespace

template<class Archive>
void BoolOpt::save(Archive& archive) const
{
    archive(cereal::make_nvp("value", _value));
}

/// Any number is welcome; all but 0 and 1 mean that there is no value.
template<class Archive>
void BoolOpt::load(Archive& archive)
{
    double value = noValue;
    archive(cereal::make_nvp("value", value));
    _value = value == 0 ? 0 : value == 1 ? 1 : noValue;
}

template<class Archive>
void CellIndex::serialize(Archive& archive)
{
    archive(cereal::make_nvp("cellIndices.rowIndex", rowIndex), cereal::make_nvp("cellIndices.colIndex", colIndex));
}

template<class Archive>
void TableRange::save(Archive& archive) const
{
    archive(cereal::make_nvp("_beginRow", _beginRow), cereal::make_nvp("_beginColumn", _beginColumn),
            cereal::make_nvp("_endRow", _endRow), cereal::make_nvp("_endColumn", _endColumn));
}

/// Fails: `cereal::Exception` on an empty range.
template<class Archive>
void TableRange::load(Archive& archive)
{
    RowIndex beginRow;
    ColumnIndex beginColumn;
    RowIndex endRow;
    ColumnIndex endColumn;
    archive(cereal::make_nvp("_beginRow", beginRow), cereal::make_nvp("_beginColumn", beginColumn),
            cereal::make_nvp("_endRow", endRow), cereal::make_nvp("_endColumn", endColumn));
    requireIncrease("rows", beginRow.get(), endRow.get());
    requireIncrease("columns", beginColumn.get(), endColumn.get());
    *this = TableRange(beginRow, beginColumn, endRow, endColumn);
}

template<class Archive>
void UUID::save(Archive& archive) const
{
    archive(cereal::make_nvp("_value", toString()));
}

/// Fails: `cereal::Exception` on a text that is no UUID.
template<class Archive>
void UUID::load(Archive& archive)
{
    std::string text;
    archive(cereal::make_nvp("_value", text));
    const std::optional<UUID> uuid = fromString(text);
    if (!uuid)
    {
        throw cereal::Exception("\"" + text + "\" is not a UUID");
    }
    *this = *uuid;
}

ZEM_INSTANTIATE_JSON(RowIndex)
ZEM_INSTANTIATE_JSON(ColumnIndex)
ZEM_INSTANTIATE_JSON(CellIndex)
ZEM_INSTANTIATE_JSON(Size2D<float>)
ZEM_INSTANTIATE_JSON(Size2D<unsigned>)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(BoolOpt)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(TableRange)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(UUID)
ZEM_JSON_OF_FIELDS(FloatNumber)
ZEM_JSON_OF_FIELDS(UUIDable)

} // namespace Zem
