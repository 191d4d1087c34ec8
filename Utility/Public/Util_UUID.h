#pragma once

#include "Util_Export.h"

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Zem
{

/// A unique identifier of 128 bits. The default one is nil: all bits zero.
class ZEM_EXPORT UUID
{
public:
    using Bytes = std::array<std::uint8_t, 16>;

    constexpr UUID() = default;

    constexpr explicit UUID(const Bytes& bytes)
        : _bytes(bytes)
    {
    }

    /// A fresh random identifier, version 4 of RFC 4122.
    static UUID generate();

    /// Reads the form of `toString`; empty for anything else.
    static std::optional<UUID> fromString(std::string_view text);

    /// Lower-case hexadecimal digits in groups of 8-4-4-4-12.
    std::string toString() const;

    bool isNil() const;

    const Bytes& getBytes() const
    {
        return _bytes;
    }

    friend constexpr bool operator==(const UUID&, const UUID&) = default;
    friend constexpr auto operator<=>(const UUID&, const UUID&) = default;

    template<class Archive>
    void save(Archive& archive) const;
    template<class Archive>
    void load(Archive& archive);

private:
    Bytes _bytes{};
};

ZEM_EXPORT std::size_t hash_value(const UUID& uuid);

} // namespace Zem

template<>
struct std::hash<Zem::UUID>
{
    std::size_t operator()(const Zem::UUID& uuid) const
    {
        return hash_value(uuid);
    }
};
