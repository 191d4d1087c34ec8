#pragma once

#include "DOM_Block.h"
#include "DOM_TextWithTombstones.h"

#include "Util_TableIndices.h"

namespace Zem::DOM
{

enum class ShapeGeometry : unsigned char
{
    Rectangle,
    RoundedRectangle,
    Ellipse,
    Line,
    Arrow
};

constexpr ShapeGeometry getLastEnumerator(ShapeGeometry)
{
    return ShapeGeometry::Arrow;
}

/// A drawn shape with a text inside, such as a text box or a slide's placeholder.
class ZEM_EXPORT Shape final : public BlockImpl<Shape, BlockKind::Shape>
{
public:
    const TextWithTombstones& getTextWithTombstones() const
    {
        return _text;
    }

    TextWithTombstones& getTextWithTombstones()
    {
        return _text;
    }

    ShapeGeometry getGeometry() const
    {
        return _geometry;
    }

    void setGeometry(ShapeGeometry geometry)
    {
        _geometry = geometry;
    }

    /// In points.
    const Size2D<float>& getSize() const
    {
        return _size;
    }

    void setSize(const Size2D<float>& size)
    {
        _size = size;
    }

    friend bool operator==(const Shape& left, const Shape& right)
    {
        return left._geometry == right._geometry && left._size == right._size && left._text == right._text;
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    ShapeGeometry _geometry = ShapeGeometry::Rectangle;
    Size2D<float> _size;
    TextWithTombstones _text;
};

} // namespace Zem::DOM
