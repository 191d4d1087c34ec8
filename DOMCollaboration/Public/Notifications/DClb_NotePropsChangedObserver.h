#pragma once

#include "Util_Export.h"
#include "Util_UUID.h"

namespace Zem::DOMCollaboration
{

/// Is told that a property of a note got a new value.
class ZEM_EXPORT NotePropsChangedObserver
{
public:
    virtual void onNotePropsChanged(const UUID& uuid, unsigned long propertyId) = 0;

protected:
    ~NotePropsChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
