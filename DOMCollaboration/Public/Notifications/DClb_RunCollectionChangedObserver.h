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

class Run;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of runs that came into a paragraph or left it. Indices count live runs.
class ZEM_EXPORT RunCollectionChangedObserver
{
public:
    virtual ~RunCollectionChangedObserver() = default;

    /// `address` is that of the paragraph.
    virtual void onRunsRemoved(const DOM::NativeNodeAddress& address,
                               CollaborationUtils::IndexExcludingTombstones begin,
                               const ReadonlyVector<std::vector<std::unique_ptr<DOM::Run>>>& removed) = 0;

    virtual void onRunsInserted(const DOM::NativeNodeAddress& address,
                                const CollaborationUtils::IndexRange<unsigned long>& range) = 0;
};

} // namespace Zem::DOMCollaboration
