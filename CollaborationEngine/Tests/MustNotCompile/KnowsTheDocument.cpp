// error: DOM_Document\.h(: No such file|' file not found)
#include "Util_Assert.h"

#ifdef MUST_NOT_COMPILE
#include "DOM_Document.h"
#endif
