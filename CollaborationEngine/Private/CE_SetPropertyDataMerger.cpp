#include "CE_SetPropertyDataMerger.h"

#include "Util_Assert.h"

namespace Zem::CollaborationEngine
{

DataMerger::~DataMerger() = default;

SetPropertyDataMerger::~SetPropertyDataMerger() = default;

std::unique_ptr<DataValue> SimpleDataMerger::getMergedValue(const DataValue& value, const DataValue& replacement,
                                                            const DataValue& expected, const DataValue& actual) const
{
    return cloneToUnique<DataValue>(expected == actual ? replacement : value);
}

void SetPropertyDataMergerImpl::registerDataMerger(unsigned long propertyId, std::shared_ptr<DataMerger> merger)
{
    derefPtr(merger);
    const bool isNew = _dataMergers.emplace(propertyId, std::move(merger)).second;
    ZEM_ASSERT(isNew);
}

const DataMerger* SetPropertyDataMergerImpl::findDataMerger(unsigned long propertyId) const
{
    const auto mergerIt = _dataMergers.find(propertyId);
    return mergerIt == _dataMergers.end() ? nullptr : mergerIt->second.get();
}

std::unique_ptr<DataValue> SetPropertyDataMergerImpl::getMergedValue(unsigned long propertyId, const DataValue& value,
                                                                     const DataValue& replacement,
                                                                     const DataValue& expected,
                                                                     const DataValue& actual) const
{
    const auto mergerIt = _dataMergers.find(propertyId);
    ZEM_ASSERT(mergerIt != _dataMergers.end());
    return mergerIt->second->getMergedValue(value, replacement, expected, actual);
}

} // namespace Zem::CollaborationEngine
