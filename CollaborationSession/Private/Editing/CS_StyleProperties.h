#pragma once

/// The values that runs and paragraphs have now, as operations carry them.

#include "CE_DataValue.h"
#include "DClb_PropertyId.h"
#include "DOM_Paragraph.h"
#include "DOM_Run.h"

#include "Util_SharedConstPtr.h"

namespace Zem::CollaborationSession
{

/// A property of a run's style. Fails: `InvalidEditError` for another property.
SharedConstPtr<CollaborationEngine::DataValue> getRunProperty(const DOM::Run& run,
                                                              DOMCollaboration::PropertyId propertyId);

/// A property of a paragraph, of its style or of that of its mark. Fails: as `getRunProperty`.
SharedConstPtr<CollaborationEngine::DataValue> getParagraphProperty(const DOM::Paragraph& paragraph,
                                                                    DOMCollaboration::PropertyId propertyId);

/// Fail as `getRunProperty` and `getParagraphProperty` do, without a run or paragraph to ask.
void requireRunProperty(DOMCollaboration::PropertyId propertyId);
void requireParagraphProperty(DOMCollaboration::PropertyId propertyId);

/// Throws `InvalidEditError` unless `value` is of the type of `sample`.
void requireSameType(const SharedConstPtr<CollaborationEngine::DataValue>& value,
                     const CollaborationEngine::DataValue& sample);

} // namespace Zem::CollaborationSession
