// error: no matching (member )?function for call to .*getTextWithTombstones|no matching function|constraints not
// satisfied
#include "DOMNodeAdapters/DClb_TextWithTombstonesNodeAdapter.h"

namespace Zem::DOMCollaboration
{

#ifdef MUST_NOT_COMPILE
constexpr bool isReadonly = true;
#else
constexpr bool isReadonly = false;
#endif

/// The blocks of a const text are pointers to blocks that aren't const.
DOM::Block& getFirstBlock(const GenericTextWithTombstonesNodeAdapter<isReadonly>& adapter)
{
    return *adapter.getTextWithTombstones().getBlocks().front();
}

} // namespace Zem::DOMCollaboration
