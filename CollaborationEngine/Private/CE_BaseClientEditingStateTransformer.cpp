#include "CE_BaseClientEditingStateTransformer.h"

namespace Zem::CollaborationEngine
{

ClientEditingState::~ClientEditingState() = default;

BaseClientEditingStateTransformer::~BaseClientEditingStateTransformer() = default;

void BaseClientEditingStateTransformer::include(const Operation& operation, ClientEditingState& state)
{
    visitWith(
        operation, [&](const AtomicOperation& atomic) { includeImpl(atomic, state); },
        [&](const CompositeOperation& composite)
        {
            for (const OperationUPtr& part : composite.getParts())
            {
                include(*part, state);
            }
        },
        [](const EmptyOperation&) {}, [](const ShadowedOperation&) {});
}

void BaseClientEditingStateTransformer::exclude(const Operation& operation, ClientEditingState& state)
{
    visitWith(
        operation, [&](const AtomicOperation& atomic) { excludeImpl(atomic, state); },
        [&](const CompositeOperation& composite)
        {
            const std::vector<OperationUPtr>& parts = composite.getParts();
            for (auto part = parts.rbegin(); part != parts.rend(); ++part)
            {
                exclude(**part, state);
            }
        },
        [](const EmptyOperation&) {}, [](const ShadowedOperation&) {});
}

} // namespace Zem::CollaborationEngine
