#include "DOM_PivotTable.h"

#include "Util_DeepCopy.h"

namespace Zem::DOM
{

PivotTableValue::PivotTableValue() = default;

PivotTableValue::PivotTableValue(Blocks blocks, SharedStyleConstIPtr<CellStyle> style)
    : _blocks(std::move(blocks))
    , _style(std::move(style))
{
}

PivotTableValue::PivotTableValue(const PivotTableValue& other)
    : _blocks(deepCopy(other._blocks))
    , _style(other._style)
{
}

PivotTableValue::PivotTableValue(PivotTableValue&&) noexcept = default;

PivotTableValue& PivotTableValue::operator=(const PivotTableValue& other)
{
    return *this = PivotTableValue(other);
}

PivotTableValue& PivotTableValue::operator=(PivotTableValue&&) noexcept = default;
PivotTableValue::~PivotTableValue() = default;

} // namespace Zem::DOM
