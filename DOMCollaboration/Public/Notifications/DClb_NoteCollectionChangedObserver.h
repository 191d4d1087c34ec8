#pragma once

#include "Util_Export.h"
#include "Util_UUID.h"

namespace Zem::DOM
{

class Note;

} // namespace Zem::DOM

namespace Zem::DOMCollaboration
{

/// Is told of notes that came into the document or left it.
class ZEM_EXPORT NoteCollectionChangedObserver
{
public:
    virtual void onNoteInserted(const UUID& uuid) = 0;

    virtual void onNoteRemoved(const DOM::Note& removed) = 0;

protected:
    ~NoteCollectionChangedObserver() = default;
};

} // namespace Zem::DOMCollaboration
