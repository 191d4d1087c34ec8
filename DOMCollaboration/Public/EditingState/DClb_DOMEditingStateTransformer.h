#pragma once

#include "CE_BaseClientEditingStateTransformer.h"
#include "CE_PositionTransformer.h"

#include "Util_Export.h"

#include <memory>

namespace Zem::DOMCollaboration
{

/// Moves both ends of a selection across operations, the first end first, each by itself: a selection may collapse or
/// turn around.
class ZEM_EXPORT DOMEditingStateTransformer final : public CollaborationEngine::BaseClientEditingStateTransformer
{
public:
    /// Fails: "_positionTransformer" when that is null. It is shared with whoever made it.
    explicit DOMEditingStateTransformer(
        std::shared_ptr<const CollaborationEngine::PositionTransformer> positionTransformer);
    ~DOMEditingStateTransformer() override;

    /// Both fail with "castedState" for anything but a state with tombstones.
    void includeImpl(const CollaborationEngine::AtomicOperation& operation,
                     CollaborationEngine::ClientEditingState& state) override;
    void excludeImpl(const CollaborationEngine::AtomicOperation& operation,
                     CollaborationEngine::ClientEditingState& state) override;

private:
    std::shared_ptr<const CollaborationEngine::PositionTransformer> _positionTransformer;
};

} // namespace Zem::DOMCollaboration
