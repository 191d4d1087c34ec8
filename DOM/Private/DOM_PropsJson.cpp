// The JSON forms of properties and of the small classes inside them.

#include "DOM_Json.h"
#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"

namespace Zem::DOM
{

ZEM_JSON_OF_FIELDS(RGBAColor)
ZEM_JSON_OF_FIELDS(ThemeColor)
ZEM_JSON_OF_FIELDS(Border)
ZEM_JSON_OF_FIELDS(RunProps)
ZEM_JSON_OF_FIELDS(TabStop)
ZEM_JSON_OF_FIELDS(ParaProps)

} // namespace Zem::DOM
