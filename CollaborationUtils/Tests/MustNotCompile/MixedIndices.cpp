// error: no match for .operator==.|invalid operands to binary expression
#include "CU_Index.h"

using Zem::CollaborationUtils::IndexExcludingTombstones;
using Zem::CollaborationUtils::IndexIncludingTombstones;

#ifdef MUST_NOT_COMPILE
using OtherIndex = IndexExcludingTombstones;
#else
using OtherIndex = IndexIncludingTombstones;
#endif

bool areEqual(IndexIncludingTombstones index, OtherIndex otherIndex)
{
    return index == otherIndex;
}
