#pragma once

#include "Util_Fields.h"
#include "Util_UUID.h"

namespace Zem
{

/// The base of things with an identity. A default one has a fresh identity; a copy has that of its original.
class ZEM_EXPORT UUIDable
{
public:
    UUIDable()
        : UUIDable(UUID::generate())
    {
    }

    explicit UUIDable(const UUID& uuid)
        : _uuid(uuid)
    {
    }

    const UUID& getUUID() const
    {
        return _uuid;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_uuid", &UUIDable::_uuid));
    }

    template<class Archive>
    void serialize(Archive& archive);

protected:
    UUID _uuid;
};

} // namespace Zem
