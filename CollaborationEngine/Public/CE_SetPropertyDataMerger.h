#pragma once

#include "CE_DataMerger.h"

#include <boost/container/flat_map.hpp>

#include <memory>

namespace Zem::CollaborationEngine
{

/// As `DataMerger`, for properties told apart by their ids.
class ZEM_EXPORT SetPropertyDataMerger
{
public:
    virtual ~SetPropertyDataMerger();

    virtual std::unique_ptr<DataValue> getMergedValue(unsigned long propertyId, const DataValue& value,
                                                      const DataValue& replacement, const DataValue& expected,
                                                      const DataValue& actual) const = 0;
};

/// Holds one merger for each property id.
class ZEM_EXPORT SetPropertyDataMergerImpl final : public SetPropertyDataMerger
{
public:
    /// Fails: "isNew" when the property has one already; "plainPtr" for null.
    void registerDataMerger(unsigned long propertyId, std::shared_ptr<DataMerger> merger);

    /// What is registered for a property; null if nothing is.
    const DataMerger* findDataMerger(unsigned long propertyId) const;

    /// Fails: "mergerIt != _dataMergers.end()" for a property without a merger.
    std::unique_ptr<DataValue> getMergedValue(unsigned long propertyId, const DataValue& value,
                                              const DataValue& replacement, const DataValue& expected,
                                              const DataValue& actual) const override;

private:
    boost::container::flat_map<unsigned long, std::shared_ptr<DataMerger>> _dataMergers;
};

} // namespace Zem::CollaborationEngine
