#pragma once

#include "Notifications/DClb_BlockCollectionChangedObserver.h"
#include "Notifications/DClb_CharCollectionChangedObserver.h"
#include "Notifications/DClb_RunCollectionChangedObserver.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Is told of every change of a text: bytes, runs and blocks.
class ZEM_EXPORT TextWithTombstonesChangedObserver : public CharCollectionChangedObserver,
                                                     public RunCollectionChangedObserver,
                                                     public BlockCollectionChangedObserver
{
};

} // namespace Zem::DOMCollaboration
