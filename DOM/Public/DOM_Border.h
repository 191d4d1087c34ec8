#pragma once

#include "DOM_Color.h"

#include "Util_Export.h"

#include <boost/optional.hpp>

namespace Zem::DOM
{

enum class BorderLine : unsigned char
{
    None,
    Solid,
    Double,
    Dotted,
    Dashed,
    DashDot,
    Thick,
    Wave
};

constexpr BorderLine getLastEnumerator(BorderLine)
{
    return BorderLine::Wave;
}

/// One edge of a paragraph, page, cell or table. Widths and distances are in points.
struct ZEM_EXPORT Border
{
    BorderLine _line = BorderLine::None;
    float _width = 0;
    float _distanceToText = 0;
    boost::optional<Color> _color;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_line", &Border::_line), field("_width", &Border::_width),
                               field("_distanceToText", &Border::_distanceToText), field("_color", &Border::_color));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

} // namespace Zem::DOM
