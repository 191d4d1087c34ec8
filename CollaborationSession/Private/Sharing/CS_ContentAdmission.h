#pragma once

#include "Sharing/CS_AdmissionBudget.h"

#include "CE_DataValue.h"
#include "CE_RowOrColumn.h"
#include "DClb_TextElement.h"
#include "DOM_RunStyle.h"
#include "DOM_SharedStyle.h"

#include "Util_TableIndices.h"

namespace Zem::CollaborationSession
{

/// Looks at the values that operations carry: each is of a class that belongs where it is; its enumerators have names
/// and its numbers are finite; pointers are null only where that means something; texts, tables and merges are sound;
/// nothing lies too deep. Each function fails with `InvalidOperationError`.
class ContentAdmission
{
public:
    ContentAdmission(const AdmissionLimits& limits, AdmissionBudget& budget);

    /// A value of a property. Null isn't one.
    void requireProperty(unsigned long propertyId, const CollaborationEngine::DataValue* value);

    /// The look of a run; null for the default one.
    void requireLook(const DOM::SharedStyleConstIPtr<DOM::RunStyle>& look);

    /// What can stand in a map of the type. Null isn't that.
    void requireEntry(unsigned long nodeType, const CollaborationEngine::DataValue* value);

    /// The elements of a text.
    void requireElements(const DOMCollaboration::TextWithTombstonesElementVector& elements);

    /// What else a row, or a column, carries.
    void requireLineProps(const CollaborationEngine::DataValue* props, RowTag);
    void requireLineProps(const CollaborationEngine::DataValue* props, ColumnTag);
    void requireCell(const CollaborationEngine::DataValue* cell);

private:
    class Inspection;

    const AdmissionLimits& _limits;
    AdmissionBudget& _budget;
};

/// The id that a row or column has in its table. Requires: `props` have passed `requireLineProps`.
unsigned long getLineID(const CollaborationEngine::DataValue& props);

} // namespace Zem::CollaborationSession
