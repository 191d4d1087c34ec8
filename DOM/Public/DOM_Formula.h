#pragma once

#include "DOM_FormulaSyntaxTree.h"

#include "Util_TableIndices.h"

#include <boost/optional.hpp>

#include <string>
#include <utility>
#include <vector>

namespace Zem::DOM
{

/// A formula as typed, with the cells that it refers to. A formula of an array fills several cells from one: it stands
/// in the first of them, and `ArrayFormulaShift` in the others.
class ZEM_EXPORT Formula
{
public:
    Formula() = default;

    explicit Formula(std::string text)
        : _text(std::move(text))
    {
    }

    /// Without the leading sign of equality.
    const std::string& getText() const
    {
        return _text;
    }

    void setText(std::string text)
    {
        _text = std::move(text);
    }

    /// In the order in which the text names them.
    const std::vector<FormulaSyntaxTree::CellRange>& getCellRanges() const
    {
        return _cellRanges;
    }

    std::vector<FormulaSyntaxTree::CellRange>& getCellRanges()
    {
        return _cellRanges;
    }

    /// How many cells the result fills, columns first, then rows; empty if the formula isn't one of an array.
    const boost::optional<Size2D<unsigned long>>& getArrayFormulaSize() const
    {
        return _arrayFormulaSize;
    }

    void setArrayFormulaSize(const boost::optional<Size2D<unsigned long>>& size)
    {
        _arrayFormulaSize = size;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_text", &Formula::_text), field("_cellRanges", &Formula::_cellRanges),
                               field("_arrayFormulaSize", &Formula::_arrayFormulaSize));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    std::string _text;
    std::vector<FormulaSyntaxTree::CellRange> _cellRanges;
    boost::optional<Size2D<unsigned long>> _arrayFormulaSize;
};

/// Stands in a cell that an array formula fills: how far up and to the left the formula itself stands.
class ZEM_EXPORT ArrayFormulaShift
{
public:
    ArrayFormulaShift() = default;

    ArrayFormulaShift(unsigned long rows, unsigned long columns)
        : _rowsCount(rows)
        , _columnsCount(columns)
    {
    }

    unsigned long getRowsCount() const
    {
        return _rowsCount;
    }

    unsigned long getColumnsCount() const
    {
        return _columnsCount;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_rowsCount", &ArrayFormulaShift::_rowsCount),
                               field("_columnsCount", &ArrayFormulaShift::_columnsCount));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    unsigned long _rowsCount = 0;
    unsigned long _columnsCount = 0;
};

} // namespace Zem::DOM
