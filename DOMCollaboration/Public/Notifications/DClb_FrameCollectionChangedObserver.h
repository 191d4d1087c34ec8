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

class Frame;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of changes of a table's list of frames. Indices count live frames. Frames don't move in their list.
class ZEM_EXPORT FrameCollectionChangedObserver
{
public:
    virtual ~FrameCollectionChangedObserver() = default;

    virtual void onFramesRemoved(const DOM::NativeNodeAddress& address,
                                 CollaborationUtils::IndexExcludingTombstones index,
                                 const ReadonlyVector<std::vector<std::unique_ptr<DOM::Frame>>>& removed) = 0;

    virtual void onFramesInserted(const DOM::NativeNodeAddress& address,
                                  const CollaborationUtils::IndexRange<unsigned long>& range) = 0;
};

} // namespace Zem::DOMCollaboration
