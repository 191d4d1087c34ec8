#pragma once

#include "CE_DataValue.h"

#include <memory>

namespace Zem::CollaborationEngine
{

/// Decides which value of a property survives when two operations set it at once.
class ZEM_EXPORT DataMerger
{
public:
    /// `value`, unless nothing was to be changed from it, that is `expected` equals `actual`: then `replacement`.
    /// A merger of bundles does so for each field of its own. All four are of the property's type.
    virtual std::unique_ptr<DataValue> getMergedValue(const DataValue& value, const DataValue& replacement,
                                                      const DataValue& expected, const DataValue& actual) const = 0;

    virtual ~DataMerger();
};

/// Takes the value as a whole.
class ZEM_EXPORT SimpleDataMerger final : public DataMerger
{
public:
    std::unique_ptr<DataValue> getMergedValue(const DataValue& value, const DataValue& replacement,
                                              const DataValue& expected, const DataValue& actual) const override;
};

} // namespace Zem::CollaborationEngine
