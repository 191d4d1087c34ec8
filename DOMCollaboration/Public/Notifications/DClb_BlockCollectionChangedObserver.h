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

class Block;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of blocks that came into a text or a list of worksheets, left it or moved in it. Indices count live blocks.
class ZEM_EXPORT BlockCollectionChangedObserver
{
public:
    virtual ~BlockCollectionChangedObserver() = default;

    virtual void onBlocksRemoved(const DOM::NativeNodeAddress& address,
                                 CollaborationUtils::IndexExcludingTombstones begin,
                                 const ReadonlyVector<std::vector<std::unique_ptr<DOM::Block>>>& removed) = 0;

    virtual void onBlocksInserted(const DOM::NativeNodeAddress& address,
                                  const CollaborationUtils::IndexRange<unsigned long>& range) = 0;

    /// `to` counts the blocks without the one that moves.
    virtual void onBlockMoved(const DOM::NativeNodeAddress& address, CollaborationUtils::IndexExcludingTombstones from,
                              CollaborationUtils::IndexExcludingTombstones to) = 0;
};

} // namespace Zem::DOMCollaboration
