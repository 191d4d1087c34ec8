#include "DOM_FieldBlock.h"

#include "Util_DeepComparison.h"

namespace Zem::DOM
{

FieldBlock::FieldBlock() = default;

FieldBlock::FieldBlock(FieldInfo fieldInfo)
    : _fieldInfo(std::move(fieldInfo))
{
}

FieldBlock::FieldBlock(const FieldBlock&) = default;
FieldBlock::FieldBlock(FieldBlock&&) noexcept = default;
FieldBlock& FieldBlock::operator=(const FieldBlock&) = default;
FieldBlock& FieldBlock::operator=(FieldBlock&&) noexcept = default;
FieldBlock::~FieldBlock() = default;

bool operator==(const FieldBlock& left, const FieldBlock& right)
{
    return DefineDeepComparisonDetails::areMembersDeeplyEqual(left, right);
}

} // namespace Zem::DOM
