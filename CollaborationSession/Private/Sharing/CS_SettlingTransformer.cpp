#include "Sharing/CS_SettlingTransformer.h"

#include "CE_MultirangeOperationUtils.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DClb_NodeTypes.h"

#include "Util_Cast.h"

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;

namespace
{

/// Sections take only one setting at a time: no transformer of documents brings two of them past each other.
bool isOfSection(const Operation& operation)
{
    const auto* onNode = cast<HierarchicalOperation>(&operation);
    return onNode && onNode->getOperandType() ==
                         DOMCollaboration::convertOperationNodeType(DOMCollaboration::OperationDOMNodeType::SectionTag);
}

std::unique_ptr<SetPropertyOperation> settle(const SetPropertyOperation& operation, const SetPropertyOperation& other,
                                             TieResolveCondition tieResolveCondition)
{
    const bool stands = tieResolveCondition == TieResolveCondition::FirstWins;
    auto setting = std::make_unique<SetPropertyOperation>(
        operation.getNodeAddress(), operation.getOperandType(), operation.getPropertyID(), other.getSharedNewValue(),
        stands ? operation.getSharedNewValue() : other.getSharedNewValue());
    setting->inheritIDIfPossibleImpl(operation);
    return setting;
}

} // namespace

bool areSettingsOfOneThing(const Operation& first, const Operation& second)
{
    const auto* firstSetting = cast<SetPropertyOperation>(&first);
    const auto* secondSetting = cast<SetPropertyOperation>(&second);
    return firstSetting && secondSetting && firstSetting->getPropertyID() == secondSetting->getPropertyID() &&
           firstSetting->getOperandType() == secondSetting->getOperandType() &&
           firstSetting->getNodeAddress() == secondSetting->getNodeAddress();
}

SettlingTransformer::SettlingTransformer()
    : _documentTransformer(std::make_unique<DOMCollaboration::DocumentOperationTransformer>())
{
}

SettlingTransformer::~SettlingTransformer() = default;

OperationUPtr SettlingTransformer::include(const Operation& first, const Operation& second,
                                           TieResolveCondition tieResolveCondition) const
{
    return MultirangeOperationUtils::mergeOperations(
        BaseOperationTransformer::include(first, second, tieResolveCondition), false);
}

OperationUPtr SettlingTransformer::includeImpl(const AtomicOperation& first, const AtomicOperation& second,
                                               TieResolveCondition tieResolveCondition) const
{
    if (isOfSection(first) && areSettingsOfOneThing(first, second))
    {
        return settle(cast<SetPropertyOperation>(first), cast<SetPropertyOperation>(second), tieResolveCondition);
    }
    return _documentTransformer->includeImpl(first, second, tieResolveCondition);
}

OperationUPtr SettlingTransformer::includeImpl(const ShadowedOperation& first, const AtomicOperation& second,
                                               TieResolveCondition tieResolveCondition) const
{
    const AtomicOperation& original = first.getOriginal();
    if (isOfSection(original) && areSettingsOfOneThing(original, second))
    {
        auto shadowed = std::make_unique<ShadowedOperation>(
            settle(cast<SetPropertyOperation>(original), cast<SetPropertyOperation>(second), tieResolveCondition),
            first.getShadows());
        shadowed->inheritIDIfPossibleImpl(first);
        return shadowed;
    }
    return _documentTransformer->includeImpl(first, second, tieResolveCondition);
}

/// What is shadowed does nothing yet.
OperationUPtr SettlingTransformer::includeImpl(const Operation& first, const ShadowedOperation& second,
                                               TieResolveCondition tieResolveCondition) const
{
    const auto* shadowed = cast<ShadowedOperation>(&first);
    const Operation& operation = shadowed ? shadowed->getOriginal() : first;
    if (isOfSection(operation) && areSettingsOfOneThing(operation, second.getOriginal()))
    {
        return cloneOperation(first);
    }
    return _documentTransformer->includeImpl(first, second, tieResolveCondition);
}

} // namespace Zem::CollaborationSession
