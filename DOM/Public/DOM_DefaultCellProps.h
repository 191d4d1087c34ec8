#pragma once

#include "DOM_CellStyle.h"

#include "Util_Export.h"

namespace Zem::DOM
{

/// How cells look that nothing else is said of. Never null; every field that matters is set.
/// For tables of a presentation, and for those in a detached text.
ZEM_EXPORT const CellPropsConstPtr& getDefaultCellProps();

/// For tables of a text document.
ZEM_EXPORT const CellPropsConstPtr& getWordDefaultCellProps();

/// For the sheets of a workbook.
ZEM_EXPORT const CellPropsConstPtr& getWorksheetDefaultCellProps();

} // namespace Zem::DOM
