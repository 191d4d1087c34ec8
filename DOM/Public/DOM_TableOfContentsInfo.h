#pragma once

#include "DOM_ParaProps.h"

#include "Util_UUID.h"

#include <string>
#include <vector>

namespace Zem::DOM
{

/// What a table of contents collects, and how it shows it.
struct ZEM_EXPORT TableOfContentsInfo
{
    std::string _title;
    /// The first and the last outline level that are collected; 0 for the highest.
    unsigned char _firstLevel = 0;
    unsigned char _lastLevel = 2;
    /// Named text styles whose paragraphs are collected besides.
    std::vector<UUID> _styleUUIDs;
    bool _hasPageNumbers = true;
    bool _hasHyperlinks = true;
    /// Between an entry and its page number.
    TabLeader _leader = TabLeader::Dots;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_title", &TableOfContentsInfo::_title),
                               field("_firstLevel", &TableOfContentsInfo::_firstLevel),
                               field("_lastLevel", &TableOfContentsInfo::_lastLevel),
                               field("_styleUUIDs", &TableOfContentsInfo::_styleUUIDs),
                               field("_hasPageNumbers", &TableOfContentsInfo::_hasPageNumbers),
                               field("_hasHyperlinks", &TableOfContentsInfo::_hasHyperlinks),
                               field("_leader", &TableOfContentsInfo::_leader));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

} // namespace Zem::DOM
