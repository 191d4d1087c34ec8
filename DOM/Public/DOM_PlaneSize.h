#pragma once

/// How many elements the parts of a text take in its flat form, the plane:
///
///     { | a b ~ } #     a paragraph: its tag, a text run's tag and bytes, an atomic run, its mark; and an atomic block
///     0 1 2 3 4 5 6
///
/// As many live slots has the record of the text's tombstones.

#include "DOM_Blocks.h"
#include "DOM_Runs.h"

#include "Util_Export.h"

namespace Zem::DOM::PlaneSize
{

/// A paragraph's tag and its mark.
constexpr unsigned long ofTagAndMark = 2;

/// A text run's tag and its bytes; 1 for every other run.
inline unsigned long of(const Run& run)
{
    return run.getKind() == RunKind::TextRun ? 1 + static_cast<const TextRun&>(run).getText().size() : 1;
}

/// A paragraph's tag, runs and mark; 1 for every other block. Cost: its runs. Fails: "plainPtr" on a null run.
ZEM_EXPORT unsigned long of(const Block& block);

/// All blocks. Cost: their runs. Fails: "plainPtr" on a null block or run.
ZEM_EXPORT unsigned long of(const Blocks& blocks);

} // namespace Zem::DOM::PlaneSize
