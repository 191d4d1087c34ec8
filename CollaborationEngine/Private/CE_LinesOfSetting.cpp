#include "CE_ListAddresses.h"
#include "CE_MergeProperties.h"
#include "CE_TableMatrix.h"

namespace Zem::CollaborationEngine
{

namespace
{

const SetRowOrColumnPropertyOperation& getSetting(const TableOperand& operand)
{
    return boost::get<SetRowOrColumnPropertyOperation>(operand._nestedOperation);
}

} // namespace

/// The setting follows its row or column, and is shadowed by it while that is dead.
OperationUPtr includeLineSettingPastSlots(const TableOperand& first, const TableOperand& second,
                                          const SetPropertyDataMerger&, TieResolveCondition)
{
    SetRowOrColumnPropertyOperation setting = getSetting(first);
    DeadPlace deadPlace;
    deadPlace._chunkIndex = first._operand._operation.getNodeAddress().getSize();
    deadPlace._kind = getDeadPlaceKind(first._isRow);
    unsigned long index = setting.getIndex();
    const AddressChange change = changeElement(index, *describeSlots(second), deadPlace);
    setting.setIndex(index);
    auto followed = makeTableOperation(first, std::move(setting));
    if (change._kind == AddressChange::Kind::IsGone)
    {
        return std::make_unique<ShadowedOperation>(std::move(followed));
    }
    Shadows shadows = takeOwnShadows(first._operand);
    if (change._kind == AddressChange::Kind::Dies)
    {
        shadows._deadPlaces.push_back(deadPlace);
    }
    else if (change._kind == AddressChange::Kind::ComesBack)
    {
        std::erase(shadows._deadPlaces, deadPlace);
    }
    return applyShadows(std::move(followed), std::move(shadows));
}

/// Two values of one property are merged. Different properties, and those of different rows or columns, stay as they
/// are.
OperationUPtr includeLineSettingPastSetting(const TableOperand& first, const TableOperand& second,
                                            const SetPropertyDataMerger& merger,
                                            TieResolveCondition tieResolveCondition)
{
    const SetRowOrColumnPropertyOperation& firstSetting = getSetting(first);
    const SetRowOrColumnPropertyOperation& secondSetting = getSetting(second);
    if (firstSetting.getIndex() != secondSetting.getIndex() ||
        firstSetting.getPropertyID() != secondSetting.getPropertyID())
    {
        return cloneWithoutShadowsAbove(first._operand);
    }
    SharedConstPtr<DataValue> merged = mergeProperties(merger, firstSetting, secondSetting, tieResolveCondition);
    return applyShadows(makeTableOperation(first, SetRowOrColumnPropertyOperation(
                                                      firstSetting.getIndex(), firstSetting.getPropertyID(),
                                                      secondSetting.getSharedNewValue(), std::move(merged))),
                        takeOwnShadows(first._operand));
}

} // namespace Zem::CollaborationEngine
