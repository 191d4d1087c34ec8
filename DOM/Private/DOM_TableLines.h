#pragma once

/// The rows and columns of a table that hold something, and the cells in them. What is true of rows is true of columns,
/// so both are instances of the same templates; an axis says which, and what crosses its lines.
///
/// A line exists as an object only while it has a style or cells. Cells and lines are kept in balanced trees ordered by
/// live index. The index isn't stored, since it changes with every line inserted before; what is stored is the id, and
/// the list of lines turns it into the index whenever two are compared. As lines never change their order, the trees
/// stay in order whatever is inserted and removed.

#include "DOM_Cell.h"
#include "DOM_RowColumnStyle.h"
#include "DOM_TombstonesWithIDsStorage.h"

#include "Util_Assert.h"
#include "Util_SecretHash.h"
#include "Util_TableIndices.h"

#include <boost/intrusive/avl_set_hook.hpp>
#include <boost/intrusive/avltree.hpp>

#include <cstddef>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <utility>

namespace Zem::DOM
{

struct ColumnAxis;

struct RowAxis
{
    using Crossing = ColumnAxis;
    using Index = RowIndex;
    using Style = RowStyle;
};

struct ColumnAxis
{
    using Crossing = RowAxis;
    using Index = ColumnIndex;
    using Style = ColumnStyle;
};

template<class Axis>
struct Line;

template<class Axis>
using CellHook = boost::intrusive::avl_set_base_hook<boost::intrusive::tag<Axis>,
                                                     boost::intrusive::link_mode<boost::intrusive::normal_link>,
                                                     boost::intrusive::optimize_size<true>>;

/// A cell in its two lines.
struct CellSlot : CellHook<RowAxis>, CellHook<ColumnAxis>
{
    explicit CellSlot(Cell cell)
        : _cell(std::move(cell))
    {
    }

    template<class Axis>
    Line<Axis>& getLine() const
    {
        return *std::get<Line<Axis>*>(_lines);
    }

    Cell _cell;
    std::tuple<Line<RowAxis>*, Line<ColumnAxis>*> _lines;
};

/// Stands where the trees ask for an order of their own: all searches bring theirs along. The trees themselves ask only
/// to check what they are given, where "not less" is never an objection.
struct OrderGivenBySearches
{
    template<class T>
    bool operator()(const T&, const T&) const
    {
        return false;
    }
};

/// The cells of one line, by the index of the lines that cross it.
template<class Axis>
using LineCells = boost::intrusive::avltree<CellSlot, boost::intrusive::base_hook<CellHook<Axis>>,
                                            boost::intrusive::compare<OrderGivenBySearches>,
                                            boost::intrusive::constant_time_size<false>>;

using LineHook = boost::intrusive::avl_set_base_hook<boost::intrusive::link_mode<boost::intrusive::normal_link>,
                                                     boost::intrusive::optimize_size<true>>;

/// A row or column that has a style or cells.
template<class Axis>
struct Line : LineHook
{
    explicit Line(unsigned long id)
        : _id(id)
    {
    }

    bool isUnused() const
    {
        return !_style && _cells.empty();
    }

    const unsigned long _id;
    SharedStyleConstIPtr<typename Axis::Style> _style;
    LineCells<Axis> _cells;
};

/// All rows or all columns of a table.
template<class Axis>
class TableLines
{
public:
    using Index = typename Axis::Index;
    using LiveIndex = TombstonesWithIDsStorage::LiveIndex;
    using Place = TombstonesWithIDsStorage::Place;
    using OrderedLines = boost::intrusive::avltree<Line<Axis>, boost::intrusive::base_hook<LineHook>,
                                                   boost::intrusive::compare<OrderGivenBySearches>,
                                                   boost::intrusive::constant_time_size<false>>;

    TableLines() = default;

    explicit TableLines(TombstonesWithIDsStorage ids)
        : _ids(std::move(ids))
    {
    }

    /// With the lines of `other` and their styles, but without cells. Linear.
    TableLines(const TableLines& other)
        : _ids(other._ids)
    {
        _linesByID.reserve(other._linesByID.size());
        for (const Line<Axis>& line : other._orderedLines)
        {
            Line<Axis>& copy = _linesByID.try_emplace(line._id, line._id).first->second;
            copy._style = line._style;
            _orderedLines.push_back(copy);
        }
    }

    TableLines& operator=(const TableLines&) = delete;

    TombstonesWithIDsStorage& getIDs()
    {
        return _ids;
    }

    const TombstonesWithIDsStorage& getIDs() const
    {
        return _ids;
    }

    /// The lines that exist, by their indices.
    const OrderedLines& getOrderedLines() const
    {
        return _orderedLines;
    }

    OrderedLines& getOrderedLines()
    {
        return _orderedLines;
    }

    bool contains(Index index) const
    {
        return index.get() < _ids.getLiveCount().get();
    }

    Index getIndex(const Line<Axis>& line) const
    {
        return Index(_ids.getLiveIndex(line._id).get());
    }

    /// Requires: there is such an index.
    unsigned long getID(Index index) const
    {
        return _ids.getID(_ids.convertIndex(LiveIndex(index.get())));
    }

    /// Null if the line holds nothing, or isn't there.
    Line<Axis>* findLine(Index index)
    {
        return contains(index) ? findLineByID(getID(index)) : nullptr;
    }

    const Line<Axis>* findLine(Index index) const
    {
        return const_cast<TableLines*>(this)->findLine(index);
    }

    Line<Axis>* findLineByID(unsigned long id)
    {
        const auto found = _linesByID.find(id);
        return found == _linesByID.end() ? nullptr : &found->second;
    }

    const Line<Axis>* findLineByID(unsigned long id) const
    {
        return const_cast<TableLines*>(this)->findLineByID(id);
    }

    /// The first existing line at `index` or behind it.
    typename OrderedLines::const_iterator lowerBound(Index index) const
    {
        return _orderedLines.lower_bound(index, ByIndex{*this});
    }

    /// Requires: there is such an index.
    Line<Axis>& getOrCreateLine(Index index)
    {
        const auto [entry, isNew] = _linesByID.try_emplace(getID(index), getID(index));
        if (isNew)
        {
            typename OrderedLines::insert_commit_data commitData;
            const bool isFree = _orderedLines.insert_unique_check(index, ByIndex{*this}, commitData).second;
            ZEM_ASSERT(isFree);
            _orderedLines.insert_unique_commit(entry->second, commitData);
        }
        return entry->second;
    }

    /// Forgets a line that has neither a style nor cells any more.
    void dropIfUnused(Line<Axis>& line)
    {
        if (line.isUnused())
        {
            _orderedLines.erase(_orderedLines.iterator_to(line));
            _linesByID.erase(line._id);
        }
    }

    std::size_t getMemoryUsage() const
    {
        /// What an entry of the standard library's hash table has beside its value.
        constexpr std::size_t entryOverhead = 2 * sizeof(void*);
        return _ids.getMemoryUsage() + _linesByID.bucket_count() * sizeof(void*) +
               _linesByID.size() * (sizeof(typename decltype(_linesByID)::value_type) + entryOverhead);
    }

    std::size_t getLinesCount() const
    {
        return _linesByID.size();
    }

    /// Orders lines and indices.
    struct ByIndex
    {
        bool operator()(const Line<Axis>& line, Index index) const
        {
            return _lines.getIndex(line) < index;
        }

        bool operator()(Index index, const Line<Axis>& line) const
        {
            return index < _lines.getIndex(line);
        }

        const TableLines& _lines;
    };

    /// Orders the cells of a crossing line by their line of this axis.
    struct CellsByIndex
    {
        bool operator()(const CellSlot& slot, Index index) const
        {
            return _lines.getIndex(slot.getLine<Axis>()) < index;
        }

        bool operator()(Index index, const CellSlot& slot) const
        {
            return index < _lines.getIndex(slot.getLine<Axis>());
        }

        const TableLines& _lines;
    };

private:
    TombstonesWithIDsStorage _ids;
    /// The ids come from files and from other users.
    std::unordered_map<unsigned long, Line<Axis>, SecretHasher> _linesByID;
    OrderedLines _orderedLines;
};

} // namespace Zem::DOM
