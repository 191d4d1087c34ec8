#include "DOM_NamedTextStyle.h"

#include "Util_DeepCopy.h"

namespace Zem::DOM
{

NamedTextStyle::NamedTextStyle() = default;

NamedTextStyle::NamedTextStyle(const NamedTextStyle& other)
    : UUIDable(other)
    , _name(other._name)
    , _type(other._type)
    , _parentUUID(other._parentUUID)
    , _nextStyleUUID(other._nextStyleUUID)
    , _runProps(other._runProps)
    , _paraProps(other._paraProps)
    , _numRef(deepCopy(other._numRef))
{
}

NamedTextStyle::NamedTextStyle(NamedTextStyle&&) noexcept = default;

NamedTextStyle& NamedTextStyle::operator=(const NamedTextStyle& other)
{
    return *this = NamedTextStyle(other);
}

NamedTextStyle& NamedTextStyle::operator=(NamedTextStyle&&) noexcept = default;
NamedTextStyle::~NamedTextStyle() = default;

} // namespace Zem::DOM
