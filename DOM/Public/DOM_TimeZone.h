#pragma once

#include "DOM_FieldOperators.h"

#include "Util_Export.h"
#include "Util_Fields.h"

namespace Zem::DOM
{

/// The distance from coordinated universal time, in minutes; positive in the east.
class ZEM_EXPORT TimeZone
{
public:
    TimeZone() = default;

    explicit TimeZone(short offset)
        : _offset(offset)
    {
    }

    short getOffset() const
    {
        return _offset;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_offset", &TimeZone::_offset));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    short _offset = 0;
};

} // namespace Zem::DOM
