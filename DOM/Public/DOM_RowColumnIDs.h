#pragma once

#include "Util_TaggedValue.h"

namespace Zem::DOM
{

struct RowIDTag
{
};

struct ColumnIDTag
{
};

/// What names a row or a column of a table as long as the table lives, wherever others are inserted or removed.
using RowID = TaggedValue<unsigned long, RowIDTag>;
using ColumnID = TaggedValue<unsigned long, ColumnIDTag>;

} // namespace Zem::DOM
