#pragma once

#include "CU_Index.h"
#include "CU_IndexRange.h"
#include "DOM_NativeNodeAddress.h"
#include "Util_Export.h"
#include "Util_ReadonlyVector.h"

#include <memory>
#include <vector>

namespace Zem::DOM
{

class ConditionalFormat;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of changes of a table's list of conditional formats. Indices count live conditional formats.
class ZEM_EXPORT ConditionalFormatCollectionChangedObserver
{
public:
    virtual ~ConditionalFormatCollectionChangedObserver() = default;

    /// `to` counts the list without the one that moves.
    virtual void onConditionalFormatMoved(const DOM::NativeNodeAddress& address,
                                          CollaborationUtils::IndexExcludingTombstones from,
                                          CollaborationUtils::IndexExcludingTombstones to) = 0;

    virtual void onConditionalFormatsRemoved(
        const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones index,
        const ReadonlyVector<std::vector<std::unique_ptr<DOM::ConditionalFormat>>>& removed) = 0;

    virtual void onConditionalFormatsInserted(const DOM::NativeNodeAddress& address,
                                              const CollaborationUtils::IndexRange<unsigned long>& range) = 0;
};

} // namespace Zem::DOMCollaboration
