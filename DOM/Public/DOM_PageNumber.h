#pragma once

#include "DOM_NumberFormat.h"
#include "DOM_RunStyle.h"

#include "Util_Export.h"

#include <boost/optional.hpp>

namespace Zem::DOM
{

enum class PageNumberAlignment : unsigned char
{
    Left,
    Center,
    Right,
    Inside,
    Outside
};

constexpr PageNumberAlignment getLastEnumerator(PageNumberAlignment)
{
    return PageNumberAlignment::Outside;
}

/// The page number of a header or footer.
struct ZEM_EXPORT PageNumber
{
    PageNumberAlignment _alignment = PageNumberAlignment::Left;
    RunStyle _style;
    boost::optional<NumberFormat> _format;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_alignment", &PageNumber::_alignment), field("_style", &PageNumber::_style),
                               field("_format", &PageNumber::_format));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using PageNumberOpt = boost::optional<PageNumber>;

} // namespace Zem::DOM
