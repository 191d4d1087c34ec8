// error: CE_Operation\.h(: No such file|' file not found)
#include "Util_Assert.h"

#ifdef MUST_NOT_COMPILE
#include "CE_Operation.h"
#endif
