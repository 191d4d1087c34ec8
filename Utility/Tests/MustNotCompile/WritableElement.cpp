// error: discards qualifiers|drops 'const' qualifier
#include "Util_ReadonlyVector.h"

#include <memory>
#include <vector>

using Numbers = std::vector<std::unique_ptr<int>>;

#ifdef MUST_NOT_COMPILE
using Shown = int;
#else
using Shown = const int;
#endif

Shown& getFirst(const Zem::ReadonlyVector<Numbers>& numbers)
{
    return numbers[0];
}
