#pragma once

#include "DOM_RowColumnStyle.h"

#include "Util_DeepComparison.h"
#include "Util_Fields.h"

#include <tuple>

namespace Zem::DOMCollaboration
{

/// What an operation carries of a row or column beside its cells. `StylePtr` points at the shared style.
template<class StylePtr>
struct RowColumnProps
{
    /// The identity of the row or column within its table.
    unsigned long id = 0;
    StylePtr style;

    static constexpr auto fields()
    {
        return std::make_tuple(field("id", &RowColumnProps::id), field("style", &RowColumnProps::style));
    }

    /// Styles compare by content.
    friend bool operator==(const RowColumnProps& left, const RowColumnProps& right)
    {
        return left.id == right.id && areDeeplyEqual(left.style, right.style);
    }

    template<class Archive>
    void serialize(Archive& archive);
};

} // namespace Zem::DOMCollaboration
