#pragma once

#include "DOM_FieldOperators.h"
#include "DOM_PageNumber.h"
#include "DOM_PageProps.h"
#include "DOM_TextWithTombstones.h"

#include "Util_Export.h"
#include "Util_UUIDable.h"

#include <boost/optional.hpp>

#include <utility>

namespace Zem::DOM
{

enum class HeaderFooterType
{
    Header = 0,
    Footer = 1
};

/// The header and footer of the pages of one style, which sections name by the pair's UUID.
class ZEM_EXPORT HeaderFooterPair : public UUIDable
{
public:
    using UUIDable::UUIDable;

    const TextWithTombstones& getHeader() const
    {
        return _header;
    }

    TextWithTombstones& getHeader()
    {
        return _header;
    }

    const TextWithTombstones& getFooter() const
    {
        return _footer;
    }

    TextWithTombstones& getFooter()
    {
        return _footer;
    }

    /// The pair of the pages that follow the first one of this style; nil for this pair itself.
    const UUID& getNextHeaderFooterUUID() const
    {
        return _nextHeaderFooterUUID;
    }

    void setNextHeaderFooterUUID(const UUID& nextHeaderFooterUUID)
    {
        _nextHeaderFooterUUID = nextHeaderFooterUUID;
    }

    const boost::optional<PageNumber>& getHeaderPageNumber() const
    {
        return _headerPageNumber;
    }

    void setHeaderPageNumber(boost::optional<PageNumber>&& pageNumber)
    {
        _headerPageNumber = std::move(pageNumber);
    }

    const boost::optional<PageNumber>& getFooterPageNumber() const
    {
        return _footerPageNumber;
    }

    void setFooterPageNumber(boost::optional<PageNumber>&& pageNumber)
    {
        _footerPageNumber = std::move(pageNumber);
    }

    /// May be null.
    const PagePropsConstPtr& getPageProps() const
    {
        return _pageProps;
    }

    void setPageProps(PagePropsConstPtr pageProps)
    {
        _pageProps = std::move(pageProps);
    }

    static constexpr auto ownFields()
    {
        return std::make_tuple(field("_header", &HeaderFooterPair::_header),
                               field("_footer", &HeaderFooterPair::_footer),
                               field("_nextHeaderFooterUUID", &HeaderFooterPair::_nextHeaderFooterUUID),
                               field("_headerPageNumber", &HeaderFooterPair::_headerPageNumber),
                               field("_footerPageNumber", &HeaderFooterPair::_footerPageNumber),
                               field("_pageProps", &HeaderFooterPair::_pageProps));
    }

    static constexpr auto fields()
    {
        return std::tuple_cat(UUIDable::fields(), ownFields());
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    TextWithTombstones _header;
    TextWithTombstones _footer;
    UUID _nextHeaderFooterUUID;
    boost::optional<PageNumber> _headerPageNumber;
    boost::optional<PageNumber> _footerPageNumber;
    PagePropsConstPtr _pageProps;
};

} // namespace Zem::DOM
