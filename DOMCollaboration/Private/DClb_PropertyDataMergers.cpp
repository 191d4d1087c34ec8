#include "DClb_PropertyDataMergers.h"

#include "DClb_PropertyValues.h"

#include "DOM_RebaseProperty.h"

#include "Util_DeepComparison.h"

#include <type_traits>
#include <utility>

namespace Zem::DOMCollaboration
{

using CollaborationEngine::DataMerger;
using CollaborationEngine::DataValue;
using CollaborationEngine::getSimpleDataValue;
using CollaborationEngine::SimpleDataValue;

namespace
{

/// The properties whose values don't merge as the engine's `SimpleDataMerger` has it, each with the way in which they
/// do.
#define ZEM_PROPERTY_MERGERS(ROW)                                                                                      \
    ROW(RunPropertyId, mergeFieldwise)                                                                                 \
    ROW(RunTrackedPropsId, mergeFieldwise)                                                                             \
    ROW(TrackedActionId, mergeFieldwise)                                                                               \
    ROW(ParaPropertyId, mergeFieldwise)                                                                                \
    ROW(ParaTrackedPropsId, mergeFieldwise)                                                                            \
    ROW(ParagraphRunPropertyId, mergeFieldwise)                                                                        \
    ROW(CellStyleId, mergeSharedStyle)                                                                                 \
    ROW(RowStyleId, mergeSharedStyle)                                                                                  \
    ROW(ColumnStyleId, mergeSharedStyle)                                                                               \
    ROW(DocumentTimeZoneId, mergePlainValue)

/// Merges each field of the properties on its own. A null pointer counts as properties with no field set, and the
/// result is never null.
template<class PropsConstPtr>
std::unique_ptr<DataValue> mergeFieldwise(const PropsConstPtr& value, const PropsConstPtr& replacement,
                                          const PropsConstPtr& expected, const PropsConstPtr& actual)
{
    using Props = std::remove_const_t<typename PropsConstPtr::element_type>;
    std::shared_ptr<Props> merged = value ? std::make_shared<Props>(*value) : nullptr;
    DOM::rebaseProperty(merged, replacement, expected, actual);
    return std::make_unique<SimpleDataValue<PropsConstPtr>>(std::move(merged));
}

/// Takes the one style or the other as a whole; styles compare by content. The style itself isn't copied.
template<class StyleConstIPtr>
std::unique_ptr<DataValue> mergeSharedStyle(const StyleConstIPtr& value, const StyleConstIPtr& replacement,
                                            const StyleConstIPtr& expected, const StyleConstIPtr& actual)
{
    const bool isReplaced = ComparisonDetails::arePointersDeeplyEqual(expected, actual);
    return std::make_unique<SimpleDataValue<StyleConstIPtr>>(isReplaced ? replacement : value);
}

template<class Value>
std::unique_ptr<DataValue> mergePlainValue(const Value& value, const Value& replacement, const Value& expected,
                                           const Value& actual)
{
    return std::make_unique<SimpleDataValue<Value>>(expected == actual ? replacement : value);
}

/// Merges the values of one property. Fails: `std::bad_cast` for a value of another type.
template<PropertyId id>
class BasePropertyDataMerger final : public DataMerger
{
public:
    std::unique_ptr<DataValue> getMergedValue(const DataValue& value, const DataValue& replacement,
                                              const DataValue& expected, const DataValue& actual) const override;
};

#define ZEM_SPECIALISE_MERGER(name, merge)                                                                             \
    template<>                                                                                                         \
    std::unique_ptr<DataValue> BasePropertyDataMerger<PropertyId::name>::getMergedValue(                               \
        const DataValue& value, const DataValue& replacement, const DataValue& expected, const DataValue& actual)      \
        const                                                                                                          \
    {                                                                                                                  \
        using Value = PropertyValueType<PropertyId::name>;                                                             \
        return merge(getSimpleDataValue<Value>(value), getSimpleDataValue<Value>(replacement),                         \
                     getSimpleDataValue<Value>(expected), getSimpleDataValue<Value>(actual));                          \
    }
ZEM_PROPERTY_MERGERS(ZEM_SPECIALISE_MERGER)
#undef ZEM_SPECIALISE_MERGER

std::shared_ptr<DataMerger> makeDataMerger(unsigned long propertyId)
{
    switch (static_cast<PropertyId>(propertyId))
    {
#define ZEM_MERGER_CASE(name, merge)                                                                                   \
    case PropertyId::name:                                                                                             \
        return std::make_shared<BasePropertyDataMerger<PropertyId::name>>();
        ZEM_PROPERTY_MERGERS(ZEM_MERGER_CASE)
#undef ZEM_MERGER_CASE
    default:
        return std::make_shared<CollaborationEngine::SimpleDataMerger>();
    }
}

} // namespace

std::shared_ptr<CollaborationEngine::SetPropertyDataMergerImpl> makeSetPropertyDataMerger()
{
    auto merger = std::make_shared<CollaborationEngine::SetPropertyDataMergerImpl>();
    for (unsigned long id = convertPropertyId(firstPropertyId); id <= convertPropertyId(lastPropertyId); ++id)
    {
        merger->registerDataMerger(id, makeDataMerger(id));
    }
    return merger;
}

} // namespace Zem::DOMCollaboration
