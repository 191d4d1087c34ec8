#pragma once

#include "Util_Export.h"

#include <boost/blank.hpp>
#include <boost/optional.hpp>
#include <boost/variant.hpp>

#include <string>

namespace Zem::DOM
{

/// The styles that every editor knows, and may show in the user's language.
enum class PredefinedStyleName : unsigned char
{
    Normal,
    Title,
    Subtitle,
    Heading1,
    Heading2,
    Heading3,
    Heading4,
    Heading5,
    Heading6,
    Heading7,
    Heading8,
    Heading9,
    BodyText,
    Quote,
    IntenseQuote,
    ListParagraph,
    Caption,
    Header,
    Footer,
    PageNumber,
    FootnoteText,
    FootnoteReference,
    EndnoteText,
    EndnoteReference,
    CommentText,
    Hyperlink,
    FollowedHyperlink,
    Emphasis,
    Strong,
    Code,
    ContentsHeading,
    Contents1,
    Contents2,
    Contents3,
    Contents4,
    Contents5,
    Contents6,
    Contents7,
    Contents8,
    Contents9,
    NormalTable,
    TableGrid
};

constexpr PredefinedStyleName getLastEnumerator(PredefinedStyleName)
{
    return PredefinedStyleName::TableGrid;
}

/// The name of a style: none, a predefined one, or one that a user gave it.
using StyleName = boost::variant<boost::blank, PredefinedStyleName, std::string>;

/// The English text of a predefined name.
ZEM_EXPORT const char* getText(PredefinedStyleName name);

/// The name as users read it; empty for no name.
ZEM_EXPORT boost::optional<std::string> resolveStyleName(const StyleName& name);

} // namespace Zem::DOM
