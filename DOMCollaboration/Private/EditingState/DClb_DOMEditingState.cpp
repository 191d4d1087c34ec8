#include "EditingState/DClb_DOMEditingState.h"

#include "Util_Cast.h"

namespace Zem::DOMCollaboration
{

template<class Tag>
DOMEditingState<Tag>::SelectionPosition::SelectionPosition(const CollaborationEngine::OperationNodeAddress& address)
    : NodeAddressWithTransformationData(address)
{
}

template<class Tag>
DOMEditingState<Tag>::DOMEditingState(SelectionMode selectionMode, SelectionPosition selectionBegin,
                                      SelectionPosition selectionEnd)
    : _selectionBegin(std::move(selectionBegin))
    , _selectionEnd(std::move(selectionEnd))
    , _selectionMode(selectionMode)
{
}

template<class Tag>
void DOMEditingState<Tag>::cloneTo(std::shared_ptr<CollaborationEngine::ClientEditingState>& target) const
{
    target = std::make_shared<DOMEditingState>(*this);
}

template<class Tag>
void DOMEditingState<Tag>::cloneTo(std::unique_ptr<CollaborationEngine::ClientEditingState>& target) const
{
    target = std::make_unique<DOMEditingState>(*this);
}

template<class Tag>
bool DOMEditingState<Tag>::operator==(const CollaborationEngine::ClientEditingState& other) const
{
    const auto* sameKind = cast<DOMEditingState>(&other);
    return sameKind && *this == *sameKind;
}

template<class Tag>
bool DOMEditingState<Tag>::operator==(const DOMEditingState& other) const
{
    return _selectionMode == other._selectionMode && _selectionBegin == other._selectionBegin &&
           _selectionEnd == other._selectionEnd;
}

template<class Tag>
void DOMEditingState<Tag>::clearCache()
{
    _selectionBegin.cleanRevertedOperationsStack();
    _selectionEnd.cleanRevertedOperationsStack();
}

template class DOMEditingState<DOMEditingStateWithTSTag>;
template class DOMEditingState<DOMEditingStateWithoutTSTag>;

} // namespace Zem::DOMCollaboration
