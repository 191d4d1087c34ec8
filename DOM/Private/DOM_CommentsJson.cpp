// The JSON forms of comments, notes and numbered lists.

#include "DOM_Comment.h"
#include "DOM_IdentifiedJson.h"
#include "DOM_Json.h"
#include "DOM_Note.h"
#include "DOM_NumberedList.h"
#include "DOM_TextLimits.h"
#include "DOM_UUIDContainerJson.h"

namespace Zem::DOM
{

template<class Archive>
void Comment::serialize(Archive& archive)
{
    JsonDetails::serializeIdentified(archive, *this);
    if constexpr (Archive::is_loading::value)
    {
        TextLimits::requireNoNull(_blocks);
    }
}

template<class Archive>
void Note::serialize(Archive& archive)
{
    JsonDetails::serializeIdentified(archive, *this);
    if constexpr (Archive::is_loading::value)
    {
        TextLimits::requireNoNull(_blocks);
    }
}

template<class Archive>
void NumberedList::serialize(Archive& archive)
{
    JsonDetails::serializeIdentified(archive, *this);
}

ZEM_INSTANTIATE_JSON(Comment)
ZEM_INSTANTIATE_JSON(Note)
ZEM_JSON_OF_FIELDS(NumberingLevel)
ZEM_INSTANTIATE_JSON(NumberedList)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(UUIDContainer<Comment>)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(UUIDContainer<Note>)
ZEM_INSTANTIATE_JSON_SAVE_LOAD(UUIDContainer<NumberedList>)

} // namespace Zem::DOM
