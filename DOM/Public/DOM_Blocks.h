#pragma once

/// All kinds of block, and the closed visit over them.

#include "DOM_Block.h"
#include "DOM_FieldBlock.h"
#include "DOM_Paragraph.h"
#include "DOM_SectionTag.h"
#include "DOM_Shape.h"
#include "DOM_Table.h"

#include "Util_Assert.h"
#include "Util_Visitor.h"

#include <type_traits>

namespace Zem::DOM
{

/// Calls the one of `callables` that takes the class of `block`; together they must take every kind.
template<class BlockType, class... Callables>
requires std::is_same_v<std::remove_const_t<BlockType>, Block>
decltype(auto) visitBlock(BlockType& block, Callables&&... callables)
{
    Overloads<std::remove_cvref_t<Callables>...> overloads{std::forward<Callables>(callables)...};
    const auto as = [&]<class Kind>(std::type_identity<Kind>) -> decltype(auto)
    { return static_cast<std::conditional_t<std::is_const_v<BlockType>, const Kind, Kind>&>(block); };
    switch (block.getKind())
    {
    case BlockKind::Paragraph:
        return overloads(as(std::type_identity<Paragraph>()));
    case BlockKind::Table:
        return overloads(as(std::type_identity<Table>()));
    case BlockKind::SectionTag:
        return overloads(as(std::type_identity<SectionTag>()));
    case BlockKind::Shape:
        return overloads(as(std::type_identity<Shape>()));
    case BlockKind::FieldBlock:
        return overloads(as(std::type_identity<FieldBlock>()));
    }
    ZEM_FAIL("Invalid enum value");
}

} // namespace Zem::DOM

namespace Zem
{

/// Compares two blocks by value, whatever their kinds.
inline bool areDeeplyEqual(const DOM::Block& left, const DOM::Block& right)
{
    return left == right;
}

} // namespace Zem
