// The JSON forms of sections, pages, headers and footers.

#include "DOM_HeaderFooterPair.h"
#include "DOM_IdentifiedJson.h"
#include "DOM_Json.h"
#include "DOM_SectionProps.h"
#include "DOM_UUIDContainerJson.h"

namespace Zem::DOM
{

template<class Archive>
void HeaderFooterPair::serialize(Archive& archive)
{
    JsonDetails::serializeIdentified(archive, *this);
}

ZEM_JSON_OF_FIELDS(PageProps)
ZEM_JSON_OF_FIELDS(SectionProps)
ZEM_JSON_OF_FIELDS(PageNumber)
ZEM_INSTANTIATE_JSON(HeaderFooterPair)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(UUIDContainer<HeaderFooterPair>)

} // namespace Zem::DOM
