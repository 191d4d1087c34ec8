#pragma once

#include "DOM_PageProps.h"

#include "Util_BoolOpt.h"
#include "Util_Export.h"
#include "Util_UUID.h"

#include <boost/optional.hpp>

namespace Zem::DOM
{

enum class SectionStart : unsigned char
{
    Continuous,
    NextColumn,
    NextPage,
    EvenPage,
    OddPage
};

constexpr SectionStart getLastEnumerator(SectionStart)
{
    return SectionStart::OddPage;
}

enum class LineNumbersRestart : unsigned char
{
    Never,
    EachPage,
    EachSection
};

constexpr LineNumbersRestart getLastEnumerator(LineNumbersRestart)
{
    return LineNumbersRestart::EachSection;
}

/// How the pages of a section are laid out. A field without a value is left to the document's own properties.
struct ZEM_EXPORT SectionProps
{
    PageProps _pageProps;
    boost::optional<SectionStart> _start;
    boost::optional<unsigned char> _columnsCount;
    /// In points.
    boost::optional<float> _columnsGap;
    BoolOpt _hasColumnsSeparator;
    boost::optional<unsigned long> _firstPageNumber;
    boost::optional<LineNumbersRestart> _lineNumbersRestart;
    /// The pairs of header and footer for all pages, and for the first and the even ones where they differ; nil for
    /// none.
    UUID _headerFooterUUID;
    UUID _firstPageHeaderFooterUUID;
    UUID _evenPageHeaderFooterUUID;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_pageProps", &SectionProps::_pageProps), field("_start", &SectionProps::_start),
                               field("_columnsCount", &SectionProps::_columnsCount),
                               field("_columnsGap", &SectionProps::_columnsGap),
                               field("_hasColumnsSeparator", &SectionProps::_hasColumnsSeparator),
                               field("_firstPageNumber", &SectionProps::_firstPageNumber),
                               field("_lineNumbersRestart", &SectionProps::_lineNumbersRestart),
                               field("_headerFooterUUID", &SectionProps::_headerFooterUUID),
                               field("_firstPageHeaderFooterUUID", &SectionProps::_firstPageHeaderFooterUUID),
                               field("_evenPageHeaderFooterUUID", &SectionProps::_evenPageHeaderFooterUUID));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

} // namespace Zem::DOM
