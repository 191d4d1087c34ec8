#pragma once

#include "DOM_FieldOperators.h"

#include "Util_Export.h"
#include "Util_Fields.h"
#include "Util_UUID.h"

#include <boost/optional.hpp>

namespace Zem::DOM
{

/// A paragraph's place in a numbering: the list, the level in it, and the number to begin anew with.
struct ZEM_EXPORT NumberingRef
{
    UUID _listUUID;
    /// 0 for the outermost level.
    unsigned char _level = 0;
    boost::optional<unsigned long> _restartAt;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_listUUID", &NumberingRef::_listUUID), field("_level", &NumberingRef::_level),
                               field("_restartAt", &NumberingRef::_restartAt));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

} // namespace Zem::DOM
