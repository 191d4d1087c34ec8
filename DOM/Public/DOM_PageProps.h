#pragma once

#include "DOM_Border.h"

#include "Util_Export.h"

#include <boost/optional.hpp>

#include <memory>

namespace Zem::DOM
{

enum class PageOrientation : unsigned char
{
    Portrait,
    Landscape
};

constexpr PageOrientation getLastEnumerator(PageOrientation)
{
    return PageOrientation::Landscape;
}

/// A page's size and margins. A field without a value is left to the defaults. Lengths are in points.
struct ZEM_EXPORT PageProps
{
    boost::optional<float> _width;
    boost::optional<float> _height;
    boost::optional<PageOrientation> _orientation;
    boost::optional<float> _leftMargin;
    boost::optional<float> _rightMargin;
    boost::optional<float> _topMargin;
    boost::optional<float> _bottomMargin;
    /// Added to the inner margin, for the binding.
    boost::optional<float> _gutter;
    /// From the page's edge.
    boost::optional<float> _headerDistance;
    boost::optional<float> _footerDistance;
    boost::optional<Border> _border;
    boost::optional<Color> _background;

    static constexpr auto fields()
    {
        return std::make_tuple(
            field("_width", &PageProps::_width), field("_height", &PageProps::_height),
            field("_orientation", &PageProps::_orientation), field("_leftMargin", &PageProps::_leftMargin),
            field("_rightMargin", &PageProps::_rightMargin), field("_topMargin", &PageProps::_topMargin),
            field("_bottomMargin", &PageProps::_bottomMargin), field("_gutter", &PageProps::_gutter),
            field("_headerDistance", &PageProps::_headerDistance),
            field("_footerDistance", &PageProps::_footerDistance), field("_border", &PageProps::_border),
            field("_background", &PageProps::_background));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using PagePropsConstPtr = std::shared_ptr<const PageProps>;

} // namespace Zem::DOM
