#include "Util_JsonInput.h"

#include <utility>

namespace cereal
{

namespace
{

/// Reads the string at the place where the archive stands. `iterators` and `search` are private members of the archive:
/// its public functions give no way to the length of a string.
template<class Iterators, class Search>
void loadWholeString(JSONInputArchive& archive, Iterators JSONInputArchive::*iterators, Search search,
                     std::string& text)
{
    (archive.*search)();
    auto& iterator = (archive.*iterators).back();
    const auto& value = iterator.value();
    text.assign(value.GetString(), value.GetStringLength());
    ++iterator;
}

/// An explicit instantiation of a template may name private members; this one makes them known to a function.
template<auto iterators, auto search>
struct PrivateMembers
{
    friend void loadString(JSONInputArchive& archive, std::string& text)
    {
        loadWholeString(archive, iterators, search, text);
    }
};

template struct PrivateMembers<&JSONInputArchive::itsIteratorStack, &JSONInputArchive::search>;

void loadString(JSONInputArchive& archive, std::string& text);

template<class Wide, class Number>
void loadSmall(JSONInputArchive& archive, Number& number)
{
    Wide wide = 0;
    archive.loadValue(wide);
    number = static_cast<Number>(wide);
    if (number != wide)
    {
        throw Exception("The number " + std::to_string(wide) + " doesn't fit the member that it is read into");
    }
}

} // namespace

void load(JSONInputArchive& archive, char& number)
{
    loadSmall<std::int32_t>(archive, number);
}

void load(JSONInputArchive& archive, signed char& number)
{
    loadSmall<std::int32_t>(archive, number);
}

void load(JSONInputArchive& archive, unsigned char& number)
{
    loadSmall<std::uint32_t>(archive, number);
}

void load(JSONInputArchive& archive, short& number)
{
    loadSmall<std::int32_t>(archive, number);
}

void load(JSONInputArchive& archive, unsigned short& number)
{
    loadSmall<std::uint32_t>(archive, number);
}

void load(JSONInputArchive& archive, std::string& text)
{
    loadString(archive, text);
}

} // namespace cereal

namespace Zem
{

void JsonDetails::throwObjectOfAnotherClass(std::uint32_t id)
{
    throw cereal::Exception("Error while trying to deserialize a smart pointer. Id " + std::to_string(id) +
                            " belongs to an object of another class");
}

} // namespace Zem
