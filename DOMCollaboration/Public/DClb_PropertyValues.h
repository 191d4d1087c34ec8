#pragma once

/// The types of the values of properties.

#include "DClb_PropertyId.h"

#include "CE_DataValue.h"
#include "DOM_Anchors.h"
#include "DOM_Block.h"
#include "DOM_CellMergeProps.h"
#include "DOM_CellStyle.h"
#include "DOM_ChartSpace.h"
#include "DOM_FieldBlock.h"
#include "DOM_HeaderRowsCols.h"
#include "DOM_Hyperlink.h"
#include "DOM_NumberingRef.h"
#include "DOM_PageNumber.h"
#include "DOM_PageProps.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_PivotTable.h"
#include "DOM_RowColumnStyle.h"
#include "DOM_RunStyle.h"
#include "DOM_SectionProps.h"
#include "DOM_TableFilterInfo.h"
#include "DOM_TableSettings.h"
#include "DOM_TableStyle.h"
#include "DOM_TextWithTombstones.h"
#include "DOM_TimeZone.h"
#include "DOM_TrackedObject.h"

#include "Util_TableIndices.h"
#include "Util_UUID.h"

#include <boost/optional.hpp>

#include <memory>
#include <string>
#include <vector>

namespace Zem::DOMCollaboration
{

template<PropertyId id>
struct PropertyValue;

#define ZEM_PROPERTY_VALUE(number, name, ...)                                                                          \
    template<>                                                                                                         \
    struct PropertyValue<PropertyId::name>                                                                             \
    {                                                                                                                  \
        using Type = __VA_ARGS__;                                                                                      \
    };
ZEM_PROPERTIES(ZEM_PROPERTY_VALUE)
#undef ZEM_PROPERTY_VALUE

/// What a value of the property is.
template<PropertyId id>
using PropertyValueType = typename PropertyValue<id>::Type;

/// The class that carries a value of the property.
template<PropertyId id>
using MapPropertyIdToSimpleDataValue = CollaborationEngine::SimpleDataValue<PropertyValueType<id>>;

} // namespace Zem::DOMCollaboration
