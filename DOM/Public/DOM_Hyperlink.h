#pragma once

#include "DOM_FieldOperators.h"

#include "Util_Export.h"
#include "Util_Fields.h"

#include <memory>
#include <string>
#include <utility>

namespace Zem::DOM
{

/// Where a click leads to: an address, a place in it, and what is shown when the mouse rests on the text.
class ZEM_EXPORT Hyperlink
{
public:
    Hyperlink() = default;

    explicit Hyperlink(std::string url)
        : _url(std::move(url))
    {
    }

    const std::string& getURL() const
    {
        return _url;
    }

    void setURL(std::string url)
    {
        _url = std::move(url);
    }

    /// The name of a bookmark; with an empty address, one of this document.
    const std::string& getAnchor() const
    {
        return _anchor;
    }

    void setAnchor(std::string anchor)
    {
        _anchor = std::move(anchor);
    }

    const std::string& getTooltip() const
    {
        return _tooltip;
    }

    void setTooltip(std::string tooltip)
    {
        _tooltip = std::move(tooltip);
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_url", &Hyperlink::_url), field("_anchor", &Hyperlink::_anchor),
                               field("_tooltip", &Hyperlink::_tooltip));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    std::string _url;
    std::string _anchor;
    std::string _tooltip;
};

using HyperlinkConstPtr = std::shared_ptr<const Hyperlink>;

} // namespace Zem::DOM
