#include "DOM_Cell.h"

#include "Util_DeepComparison.h"
#include "Util_DeepCopy.h"

namespace Zem::DOM
{

Cell::Cell() = default;

Cell::Cell(const Cell& other)
    : Cell(other, CopyStrategy::Everything)
{
}

Cell::Cell(const Cell& other, CopyStrategy strategy)
    : _sharedStyle(other._sharedStyle)
{
    if (strategy == CopyStrategy::Everything)
    {
        _text = deepCopy(other._text);
        _mergeProps = other._mergeProps;
        _pivotTable = deepCopy(other._pivotTable);
    }
}

Cell::Cell(Cell&&) noexcept = default;

Cell::~Cell() = default;

const TextWithTombstones& Cell::getTextWithTombstones() const
{
    static const TextWithTombstones emptyText;
    return _text ? *_text : emptyText;
}

TextWithTombstones& Cell::getTextWithTombstones()
{
    if (!_text)
    {
        _text = std::make_unique<TextWithTombstones>();
    }
    return *_text;
}

boost::optional<const PivotTable&> Cell::getPivotTable() const
{
    return _pivotTable ? boost::optional<const PivotTable&>(*_pivotTable) : boost::none;
}

CellData Cell::getCellData() const
{
    const TextWithTombstones& text = getTextWithTombstones();
    if (text.getBlocks().empty())
    {
        return boost::blank();
    }
    const Block& block = *text.getBlocks().front();
    if (block.getKind() != BlockKind::FieldBlock)
    {
        return &text;
    }
    return boost::apply_visitor([](const auto& data) -> CellData { return &data; },
                                static_cast<const FieldBlock&>(block).getFieldInfo());
}

const ArrayFormulaShift* Cell::getArrayFormulaShift() const
{
    const CellData data = getCellData();
    const auto* const shift = boost::get<const ArrayFormulaShift*>(&data);
    return shift ? *shift : nullptr;
}

bool Cell::isEmpty(WithTombstones withTombstones) const
{
    if (!getTextWithTombstones().getBlocks().empty() || _mergeProps.isMerge())
    {
        return false;
    }
    return withTombstones == WithTombstones::No ||
           (getTextWithTombstones().getTombstones().getTombstonesCount() == 0 && isDefaultStyle(_sharedStyle));
}

bool operator==(const Cell& left, const Cell& right)
{
    return left._mergeProps == right._mergeProps && areDeeplyEqual(left._sharedStyle, right._sharedStyle) &&
           areDeeplyEqual(left._pivotTable, right._pivotTable) &&
           left.getTextWithTombstones() == right.getTextWithTombstones();
}

} // namespace Zem::DOM
