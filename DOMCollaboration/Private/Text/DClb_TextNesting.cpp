#include "Text/DClb_TextNesting.h"

#include "DOM_TextNesting.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <boost/variant.hpp>

#include <algorithm>

namespace Zem::DOMCollaboration
{

using CollaborationEngine::ListModificationOperation;
using CollaborationEngine::ListMultirangeOperationImpl;

namespace
{

bool leadsToText(const DOM::NativeNodeAddress::Chunk& chunk)
{
    const auto* const fixed = boost::get<DOM::NativeNodeAddress::FixedChunk>(&chunk);
    return fixed && (fixed->getNodeType() == DOM::NativeDOMNodeType::BlockCollection ||
                     fixed->getNodeType() == DOM::NativeDOMNodeType::WorksheetCollection);
}

unsigned long getNesting(const TextWithTombstonesElement& element)
{
    const auto* const block = boost::get<SharedConstPtr<DOM::Block>>(&element);
    return block ? DOM::getTextNesting(derefPtr(*block)) : 0;
}

} // namespace

template<class Operation>
bool isNestedTooDeeply(const DOM::NativeNodeAddress& address, const ListMultirangeOperationImpl<Operation>& operation)
{
    unsigned long inside = 0;
    for (const Operation& nestedOperation : operation.getNestedOperations())
    {
        for (const TextWithTombstonesElement& element : getElements(nestedOperation))
        {
            inside = std::max(inside, getNesting(element));
        }
    }
    const auto textsOnTheWay = std::count_if(address.getItems().begin(), address.getItems().end(), leadsToText);
    return inside > 0 && static_cast<unsigned long>(textsOnTheWay) + inside > DOM::maximalTextNesting;
}

template bool
isNestedTooDeeply(const DOM::NativeNodeAddress&,
                  const ListMultirangeOperationImpl<ListModificationOperation<CollaborationEngine::InsertTag>>&);
template bool
isNestedTooDeeply(const DOM::NativeNodeAddress&,
                  const ListMultirangeOperationImpl<ListModificationOperation<CollaborationEngine::RestoreTag>>&);

} // namespace Zem::DOMCollaboration
