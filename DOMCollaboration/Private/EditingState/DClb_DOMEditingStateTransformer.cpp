#include "EditingState/DClb_DOMEditingStateTransformer.h"

#include "EditingState/DClb_DOMEditingState.h"

#include "Util_Assert.h"

namespace Zem::DOMCollaboration
{

namespace
{

DOMEditingStateWithTS& castState(CollaborationEngine::ClientEditingState& state)
{
    auto* castedState = dynamic_cast<DOMEditingStateWithTS*>(&state);
    ZEM_ASSERT(castedState);
    return *castedState;
}

} // namespace

DOMEditingStateTransformer::DOMEditingStateTransformer(
    std::shared_ptr<const CollaborationEngine::PositionTransformer> positionTransformer)
    : _positionTransformer(std::move(positionTransformer))
{
    ZEM_ASSERT(_positionTransformer);
}

DOMEditingStateTransformer::~DOMEditingStateTransformer() = default;

void DOMEditingStateTransformer::includeImpl(const CollaborationEngine::AtomicOperation& operation,
                                             CollaborationEngine::ClientEditingState& state)
{
    DOMEditingStateWithTS& castedState = castState(state);
    _positionTransformer->include(operation, castedState.getSelectionBegin());
    _positionTransformer->include(operation, castedState.getSelectionEnd());
}

void DOMEditingStateTransformer::excludeImpl(const CollaborationEngine::AtomicOperation& operation,
                                             CollaborationEngine::ClientEditingState& state)
{
    DOMEditingStateWithTS& castedState = castState(state);
    _positionTransformer->exclude(operation, castedState.getSelectionBegin());
    _positionTransformer->exclude(operation, castedState.getSelectionEnd());
}

} // namespace Zem::DOMCollaboration
