#pragma once

/// A pivot table: a summary of a range of cells, worked out elsewhere and kept here with its last result.

#include "DOM_Block.h"
#include "DOM_CellStyle.h"
#include "DOM_FieldOperators.h"
#include "DOM_FormulaSyntaxTree.h"
#include "DOM_SharedStyle.h"

#include "Util_Export.h"
#include "Util_TableIndices.h"
#include "Util_TaggedValue.h"
#include "Util_UUIDable.h"

#include <map>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace Zem::DOM
{

struct PivotFieldIDTag
{
};

/// Names a column of the source range, as long as the pivot table lives.
using PivotFieldID = TaggedValue<unsigned long, PivotFieldIDTag>;

/// A column of the source range: its heading there, and what the pivot table calls it (empty for the heading).
struct PivotTableField
{
    std::string _fieldName;
    std::string _nameAlias;
    PivotFieldID _fieldID;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_fieldName", &PivotTableField::_fieldName),
                               field("_nameAlias", &PivotTableField::_nameAlias),
                               field("_fieldID", &PivotTableField::_fieldID));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

enum class PivotSortOrder : unsigned
{
    None,
    Ascending,
    Descending
};

constexpr PivotSortOrder getLastEnumerator(PivotSortOrder)
{
    return PivotSortOrder::Descending;
}

/// A field whose values make the rows or the columns of the pivot table.
struct PivotTableCategoryInfo
{
    PivotFieldID _fieldID;
    PivotSortOrder _sortOrder = PivotSortOrder::None;
    /// Whether each value is followed by the totals of what lies below it.
    bool _showTotals = true;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_fieldID", &PivotTableCategoryInfo::_fieldID),
                               field("_sortOrder", &PivotTableCategoryInfo::_sortOrder),
                               field("_showTotals", &PivotTableCategoryInfo::_showTotals));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

enum class PivotFunction : unsigned
{
    Sum,
    Count,
    CountNumbers,
    Average,
    Minimum,
    Maximum,
    Product,
    Deviation,
    Variance
};

constexpr PivotFunction getLastEnumerator(PivotFunction)
{
    return PivotFunction::Variance;
}

/// A field whose values are summed up, and how. One field may be summed up in several ways.
class ZEM_EXPORT ValueField : public UUIDable
{
public:
    ValueField() = default;

    ValueField(PivotFieldID fieldID, PivotFunction function)
        : _fieldID(fieldID)
        , _function(function)
    {
    }

    PivotFieldID getFieldID() const
    {
        return _fieldID;
    }

    PivotFunction getFunction() const
    {
        return _function;
    }

    static constexpr auto ownFields()
    {
        return std::make_tuple(field("_fieldID", &ValueField::_fieldID), field("_function", &ValueField::_function));
    }

    static constexpr auto fields()
    {
        return std::tuple_cat(UUIDable::fields(), ownFields());
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    PivotFieldID _fieldID;
    PivotFunction _function = PivotFunction::Sum;
};

/// One value of a pivot table, as it is shown. Copies are deep.
class ZEM_EXPORT PivotTableValue
{
public:
    PivotTableValue();
    PivotTableValue(Blocks blocks, SharedStyleConstIPtr<CellStyle> style);
    PivotTableValue(const PivotTableValue& other);
    PivotTableValue(PivotTableValue&&) noexcept;
    PivotTableValue& operator=(const PivotTableValue& other);
    PivotTableValue& operator=(PivotTableValue&&) noexcept;
    ~PivotTableValue();

    const Blocks& getBlocks() const
    {
        return _blocks;
    }

    const SharedStyleConstIPtr<CellStyle>& getSharedStyle() const
    {
        return _style;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_blocks", &PivotTableValue::_blocks), field("_style", &PivotTableValue::_style));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    Blocks _blocks;
    SharedStyleConstIPtr<CellStyle> _style;
};

/// The different values that each field had when the pivot table was last worked out.
class ZEM_EXPORT FieldCache : public UUIDable
{
public:
    using Values = std::map<PivotFieldID, std::vector<PivotTableValue>>;

    const Values& getFieldValueCache() const
    {
        return _fieldValueCache;
    }

    Values& getFieldValueCache()
    {
        return _fieldValueCache;
    }

    static constexpr auto ownFields()
    {
        return std::make_tuple(field("_fieldValueCache", &FieldCache::_fieldValueCache));
    }

    static constexpr auto fields()
    {
        return std::tuple_cat(UUIDable::fields(), ownFields());
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    Values _fieldValueCache;
};

enum class PivotLayoutType : unsigned char
{
    Compact,
    Outline,
    Tabular
};

constexpr PivotLayoutType getLastEnumerator(PivotLayoutType)
{
    return PivotLayoutType::Tabular;
}

class ZEM_EXPORT PivotTable : public UUIDable
{
public:
    using Categories = std::vector<PivotTableCategoryInfo>;

    PivotTable() = default;

    /// `size` is the width and the height of the cells that the result covers, the root's included.
    explicit PivotTable(const Size2D<unsigned>& size)
        : _size(size)
    {
    }

    /// Columns first, then rows.
    const Size2D<unsigned>& getSize() const
    {
        return _size;
    }

    /// The cells that are summed up, headings included.
    const FormulaSyntaxTree::CellRange& getRange() const
    {
        return _range;
    }

    void setRange(FormulaSyntaxTree::CellRange range)
    {
        _range = std::move(range);
    }

    const Categories& getRows() const
    {
        return _rows;
    }

    void setRows(Categories rows)
    {
        _rows = std::move(rows);
    }

    const Categories& getColumns() const
    {
        return _columns;
    }

    void setColumns(Categories columns)
    {
        _columns = std::move(columns);
    }

    const std::vector<ValueField>& getValues() const
    {
        return _values;
    }

    void setValues(std::vector<ValueField> values)
    {
        _values = std::move(values);
    }

    const std::vector<PivotTableField>& getFields() const
    {
        return _fields;
    }

    void setFields(std::vector<PivotTableField> fields)
    {
        _fields = std::move(fields);
    }

    const FieldCache& getFieldCache() const
    {
        return _fieldCache;
    }

    FieldCache& getFieldCache()
    {
        return _fieldCache;
    }

    PivotLayoutType getLayoutType() const
    {
        return _layoutType;
    }

    void setLayoutType(PivotLayoutType layoutType)
    {
        _layoutType = layoutType;
    }

    /// The result, row by row.
    const std::vector<PivotTableValue>& getCalculatedValues() const
    {
        return _calculatedValues;
    }

    void setCalculatedValues(std::vector<PivotTableValue> values)
    {
        _calculatedValues = std::move(values);
    }

    static constexpr auto ownFields()
    {
        return std::make_tuple(field("_range", &PivotTable::_range), field("_rows", &PivotTable::_rows),
                               field("_columns", &PivotTable::_columns), field("_values", &PivotTable::_values),
                               field("_fields", &PivotTable::_fields), field("_fieldCache", &PivotTable::_fieldCache),
                               field("_layoutType", &PivotTable::_layoutType),
                               field("_calculatedValues", &PivotTable::_calculatedValues),
                               field("_size", &PivotTable::_size));
    }

    static constexpr auto fields()
    {
        return std::tuple_cat(UUIDable::fields(), ownFields());
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    FormulaSyntaxTree::CellRange _range;
    Categories _rows;
    Categories _columns;
    std::vector<ValueField> _values;
    std::vector<PivotTableField> _fields;
    FieldCache _fieldCache;
    PivotLayoutType _layoutType = PivotLayoutType::Compact;
    std::vector<PivotTableValue> _calculatedValues;
    Size2D<unsigned> _size;
};

} // namespace Zem::DOM
