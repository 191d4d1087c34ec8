#pragma once

#include "CU_Index.h"
#include "CU_IndexRange.h"
#include "DOM_NativeNodeAddress.h"

#include "Util_Export.h"

#include <string>

namespace Zem::DOMCollaboration
{

/// Is told of bytes that came into a text run or left it. Indices count the bytes of that run.
class ZEM_EXPORT CharCollectionChangedObserver
{
public:
    virtual ~CharCollectionChangedObserver() = default;

    /// `address` is that of the run.
    virtual void onCharsRemoved(const DOM::NativeNodeAddress& address,
                                CollaborationUtils::IndexExcludingTombstones begin, const std::string& removed) = 0;

    virtual void onCharsInserted(const DOM::NativeNodeAddress& address,
                                 const CollaborationUtils::IndexRange<unsigned long>& range) = 0;
};

} // namespace Zem::DOMCollaboration
