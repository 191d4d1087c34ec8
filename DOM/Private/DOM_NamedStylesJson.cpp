// The JSON forms of named styles and their collections.

#include "DOM_IdentifiedJson.h"
#include "DOM_Json.h"
#include "DOM_Styles.h"
#include "DOM_UUIDContainerJson.h"

namespace cereal
{

template<class Archive>
void serialize(Archive&, boost::blank&)
{
}

} // namespace cereal

namespace Zem::DOM
{

template<class Archive>
void NamedTextStyle::serialize(Archive& archive)
{
    JsonDetails::serializeIdentified(archive, *this);
}

template<class Archive>
void NamedTableStyle::serialize(Archive& archive)
{
    JsonDetails::serializeIdentified(archive, *this);
}

ZEM_INSTANTIATE_JSON(NamedTextStyle)
ZEM_JSON_OF_FIELDS(TablePartStyles)
ZEM_INSTANTIATE_JSON(NamedTableStyle)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(UUIDContainer<NamedTextStyle>)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(UUIDContainer<NamedTableStyle>)
ZEM_JSON_OF_FIELDS(Styles)

} // namespace Zem::DOM
