#pragma once

/// The parts of a formula that refer to cells, in a form that survives changes of the tables.

#include "DOM_FieldOperators.h"
#include "DOM_RowColumnIDs.h"

#include "Util_Clonable.h"
#include "Util_Export.h"
#include "Util_Fields.h"
#include "Util_TableIndices.h"
#include "Util_UUID.h"

#include <boost/variant.hpp>

#include <string>
#include <utility>

namespace Zem::DOM::FormulaSyntaxTree
{

using Zem::FieldOperators::operator==;

/// The polymorphic base of a formula's parts.
class ZEM_EXPORT Expr : public Clonable<Expr>
{
public:
    ~Expr() override;

    template<class Archive>
    void serialize(Archive& archive);

protected:
    Expr() = default;
    Expr(const Expr&) = default;
    Expr(Expr&&) noexcept = default;
    Expr& operator=(const Expr&) = default;
    Expr& operator=(Expr&&) noexcept = default;
};

/// One edge of a range of cells: a row or column, by its number or by its id. A fixed one stays as it is when the
/// formula is copied to another cell.
template<class Index, class ID>
struct CellRangeEdge
{
    boost::variant<Index, ID> _id;
    bool _isFixed = false;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_id", &CellRangeEdge::_id), field("_isFixed", &CellRangeEdge::_isFixed));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using ColumnEdge = CellRangeEdge<ColumnIndex, ColumnID>;
using RowEdge = CellRangeEdge<RowIndex, RowID>;

/// A table, by its name or by its identity.
using TableAddress = boost::variant<std::string, UUID>;

/// A rectangle of cells of one table, or, where the two tables differ, of all tables from the first to the second. The
/// edges are the first and the last row and column, both included.
class ZEM_EXPORT CellRange final : public Expr
{
public:
    CellRange() = default;
    CellRange(TableAddress table, std::pair<ColumnEdge, ColumnEdge> columns, std::pair<RowEdge, RowEdge> rows);

    const TableAddress& getFirstTableAddress() const
    {
        return _firstTableAddress;
    }

    void setFirstTableAddress(TableAddress address)
    {
        _firstTableAddress = std::move(address);
    }

    const TableAddress& getSecondTableAddress() const
    {
        return _secondTableAddress;
    }

    void setSecondTableAddress(TableAddress address)
    {
        _secondTableAddress = std::move(address);
    }

    const std::pair<ColumnEdge, ColumnEdge>& getColumns() const
    {
        return _columns;
    }

    void setColumns(std::pair<ColumnEdge, ColumnEdge> columns)
    {
        _columns = std::move(columns);
    }

    const std::pair<RowEdge, RowEdge>& getRows() const
    {
        return _rows;
    }

    void setRows(std::pair<RowEdge, RowEdge> rows)
    {
        _rows = std::move(rows);
    }

    void cloneTo(std::shared_ptr<Expr>& target) const override;
    void cloneTo(std::unique_ptr<Expr>& target) const override;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_firstTableAddress", &CellRange::_firstTableAddress),
                               field("_secondTableAddress", &CellRange::_secondTableAddress),
                               field("_columns", &CellRange::_columns), field("_rows", &CellRange::_rows));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    TableAddress _firstTableAddress;
    TableAddress _secondTableAddress;
    std::pair<ColumnEdge, ColumnEdge> _columns;
    std::pair<RowEdge, RowEdge> _rows;
};

} // namespace Zem::DOM::FormulaSyntaxTree
