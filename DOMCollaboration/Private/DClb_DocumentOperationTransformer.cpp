#include "DClb_DocumentOperationTransformer.h"

#include "DClb_NodeFactories.h"

#include "CE_MultirangeOperationUtils.h"

namespace Zem::DOMCollaboration
{

DocumentOperationTransformer::DocumentOperationTransformer()
{
    forAllSameNodePositionTransformers(
        [this](const SameNodePositionTransformersFactory& factory)
        {
            registerSameNodeTransformer(factory.getNodeType(), factory.createSameNodeTransformer());
            registerAdressModifierTransformer(factory.getNodeType(), factory.createAncestorTransformer());
        });
}

DocumentOperationTransformer::~DocumentOperationTransformer() = default;

CollaborationEngine::OperationUPtr
DocumentOperationTransformer::include(const CollaborationEngine::Operation& first,
                                      const CollaborationEngine::Operation& second,
                                      CollaborationEngine::TieResolveCondition tieResolveCondition) const
{
    return CollaborationEngine::MultirangeOperationUtils::mergeOperations(
        BaseOperationTransformer::include(first, second, tieResolveCondition), false);
}

} // namespace Zem::DOMCollaboration
