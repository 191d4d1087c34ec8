#pragma once

#include "Util_Clonable.h"
#include "Util_Export.h"

#include <memory>
#include <vector>

namespace Zem::DOM
{

/// The closed list of what can stand in a text.
enum class BlockKind : unsigned char
{
    Paragraph,
    Table,
    SectionTag,
    Shape,
    FieldBlock
};

/// The polymorphic base of the blocks. Its kind is kept beside the dynamic type, so that a walk over many blocks costs
/// no virtual call; `visitBlock` (DOM_Blocks.h) turns it into the class. Blocks compare by value, whatever their kinds.
class ZEM_EXPORT Block : public Clonable<Block>
{
public:
    ~Block() override;

    BlockKind getKind() const
    {
        return _kind;
    }

    friend bool operator==(const Block& left, const Block& right)
    {
        return left._kind == right._kind && left.isEqualToSameKind(right);
    }

protected:
    explicit Block(BlockKind kind)
        : _kind(kind)
    {
    }

    Block(const Block&) = default;
    Block(Block&&) noexcept = default;
    Block& operator=(const Block&) = default;
    Block& operator=(Block&&) noexcept = default;

private:
    /// Requires: `other` is of the dynamic type of this block.
    virtual bool isEqualToSameKind(const Block& other) const = 0;

    BlockKind _kind;
};

using Blocks = std::vector<std::unique_ptr<Block>>;

/// Implements what every kind of block does alike. `Derived` has an `operator==` of its own.
template<class Derived, BlockKind kind>
class BlockImpl : public Block
{
public:
    static constexpr BlockKind Kind = kind;

    void cloneTo(std::shared_ptr<Block>& target) const override
    {
        target = std::make_shared<Derived>(static_cast<const Derived&>(*this));
    }

    void cloneTo(std::unique_ptr<Block>& target) const override
    {
        target = std::make_unique<Derived>(static_cast<const Derived&>(*this));
    }

protected:
    BlockImpl()
        : Block(kind)
    {
    }

private:
    bool isEqualToSameKind(const Block& other) const override
    {
        return static_cast<const Derived&>(*this) == static_cast<const Derived&>(other);
    }
};

} // namespace Zem::DOM
