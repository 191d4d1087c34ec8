#pragma once

#include "Notifications/DClb_CellCollectionChangedObserver.h"
#include "Notifications/DClb_CellPropsChangedObserver.h"
#include "Notifications/DClb_CommentCollectionChangedObserver.h"
#include "Notifications/DClb_CommentPropsChangedObserver.h"
#include "Notifications/DClb_ConditionalFormatChangedObserver.h"
#include "Notifications/DClb_ConditionalFormatCollectionChangedObserver.h"
#include "Notifications/DClb_DocumentPropsChangedObserver.h"
#include "Notifications/DClb_FieldBlockPropsChangedObserver.h"
#include "Notifications/DClb_FrameCollectionChangedObserver.h"
#include "Notifications/DClb_FramePropsChangedObserver.h"
#include "Notifications/DClb_HeaderFooterCollectionChangedObserver.h"
#include "Notifications/DClb_HeaderFooterPairPropsChangedObserver.h"
#include "Notifications/DClb_NoteCollectionChangedObserver.h"
#include "Notifications/DClb_NotePropsChangedObserver.h"
#include "Notifications/DClb_ParaPropsChangedObserver.h"
#include "Notifications/DClb_RunPropsChangedObserver.h"
#include "Notifications/DClb_ScriptCollectionChangedObserver.h"
#include "Notifications/DClb_SectionPropsChangedObserver.h"
#include "Notifications/DClb_TablePropsChangedObserver.h"
#include "Notifications/DClb_TableStyleCollectionChangedObserver.h"
#include "Notifications/DClb_TableStylePropsChangedObserver.h"
#include "Notifications/DClb_TextStyleCollectionChangedObserver.h"
#include "Notifications/DClb_TextStylePropsChangedObserver.h"
#include "Notifications/DClb_TextWithTombstonesChangedObserver.h"

#include "Util_Export.h"

#include <memory>

namespace Zem::DOMCollaboration
{

/// The sink of everything that executors tell about changes of a document: all notification interfaces in one. It is
/// told after the change, synchronously, in native addresses and in indices that don't count tombstones. Whoever shows
/// a document implements it, and keeps it alive: executors hold weak pointers.
///
/// When nobody keeps it any more, the operations on text go on in silence; all others fail with "plainPtr".
///
/// The order of the bases is part of the binary interface.
class ZEM_EXPORT ExecutorNotificationObserver : public RunPropsChangedObserver,
                                                public ParaPropsChangedObserver,
                                                public FramePropsChangedObserver,
                                                public CellPropsChangedObserver,
                                                public HeaderFooterPairPropsChangedObserver,
                                                public DocumentPropsChangedObserver,
                                                public TextWithTombstonesChangedObserver,
                                                public CellCollectionChangedObserver,
                                                public HeaderFooterCollectionChangedObserver,
                                                public ConditionalFormatCollectionChangedObserver,
                                                public ConditionalFormatChangedObserver,
                                                public FrameCollectionChangedObserver,
                                                public TablePropsChangedObserver,
                                                public ScriptCollectionChangedObserver,
                                                public CommentCollectionChangedObserver,
                                                public CommentPropsChangedObserver,
                                                public NoteCollectionChangedObserver,
                                                public NotePropsChangedObserver,
                                                public FieldBlockPropsChangedObserver,
                                                public SectionPropsChangedObserver,
                                                public TextStyleCollectionChangedObserver,
                                                public TextStylePropsChangedObserver,
                                                public TableStyleCollectionChangedObserver,
                                                public TableStylePropsChangedObserver
{
};

/// An observer that does nothing, for documents that are changed without a screen.
ZEM_EXPORT std::shared_ptr<ExecutorNotificationObserver> makeEmptyExecutorNotificationObserver();

/// An observer whose every operation fails with "Unexpected observer call.", for places where no notification is
/// expected.
ZEM_EXPORT std::shared_ptr<ExecutorNotificationObserver> makeAssertExecutorNotificationObserver();

} // namespace Zem::DOMCollaboration
