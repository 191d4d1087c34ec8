#pragma once

/// Values as JSON text, for tests and tools. As `Util_Json.h`, it is included by .cpp files only.

#include "Util_Export.h"
#include "Util_Json.h"

#include <cereal/archives/json.hpp>

#include <sstream>
#include <string>
#include <string_view>

namespace Zem
{

/// How deep arrays and objects of a text may lie in each other. Readers call themselves for each level.
constexpr unsigned maximalJsonNesting = 1000;

/// Requires that a text which is about to be read, or handed out, isn't nested too deeply; it need not be JSON.
/// Fails: `cereal::Exception`, naming the depth.
ZEM_EXPORT void requireBoundedJsonNesting(std::string_view text);

/// The text of an archive, with "0.0" for each number "-0.0", which equals it. Requires: no blanks between the values.
ZEM_EXPORT std::string dropSignsOfZeros(std::string_view text);

namespace JsonDetails
{

/// The value of the one member of the object that an archive wrote, without the archive's line breaks and blanks.
/// Fails: `cereal::Exception` when it is nested too deeply.
ZEM_EXPORT std::string takeOnlyMember(std::string_view archiveText);

/// An object for an archive to read, whose one member is `text`.
/// Fails: `cereal::Exception` when `text` is nested too deeply, or isn't one value.
ZEM_EXPORT std::string makeOnlyMember(std::string_view text);

} // namespace JsonDetails

/// The JSON form of `value`, in one line. `Archive` is derived from cereal's, or that itself.
/// Fails: `cereal::Exception` when it is nested so deeply that `fromJson` would refuse it, or a number in it isn't
/// finite.
template<class T, class Archive = cereal::JSONOutputArchive>
std::string toJson(const T& value)
{
    std::ostringstream stream;
    {
        Archive archive(stream, cereal::JSONOutputArchive::Options::NoIndent());
        archive(value);
    }
    return JsonDetails::takeOnlyMember(stream.str());
}

/// The value whose JSON form `text` is.
/// Fails: `cereal::Exception` (of which `cereal::RapidJSONException` is one) on a text that isn't JSON, or isn't that
/// of a `T`.
template<class T>
T fromJson(std::string_view text)
{
    std::istringstream stream(JsonDetails::makeOnlyMember(text));
    cereal::JSONInputArchive archive(stream);
    T value{};
    archive(value);
    return value;
}

} // namespace Zem
