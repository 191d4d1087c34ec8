// The JSON forms of run and paragraph styles, and of tracked changes.

#include "DOM_Json.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RunStyle.h"

namespace Zem::DOM
{

template<class T>
template<class Archive>
void TrackedObject<T>::serialize(Archive& archive)
{
    serializeFields(archive, *this);
}

ZEM_JSON_OF_FIELDS(TimeZone)
ZEM_JSON_OF_FIELDS(UserInfo)
ZEM_JSON_OF_FIELDS(DateTime)
ZEM_JSON_OF_FIELDS(TrackChangesInfo)
ZEM_INSTANTIATE_JSON(TrackedObject<RunPropsConstPtr>)
ZEM_INSTANTIATE_JSON(TrackedObject<ParaPropsConstPtr>)
ZEM_INSTANTIATE_JSON(TrackedObject<TrackChangesType>)
ZEM_INSTANTIATE_JSON(TrackedObject<UUID>)
ZEM_JSON_OF_FIELDS(Hyperlink)
ZEM_JSON_OF_FIELDS(RunStyle)
ZEM_JSON_OF_FIELDS(ParagraphStyle)

} // namespace Zem::DOM
