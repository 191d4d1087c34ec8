// The JSON forms of runs.

#include "DOM_Json.h"
#include "DOM_RunStyle.h"
#include "DOM_Runs.h"

namespace Zem::DOM
{

namespace
{

template<class Archive>
void serializeStyle(Archive& archive, Run& run)
{
    archive(cereal::make_nvp("_sharedStyle", run.getSharedStyle()));
}

} // namespace

template<class Archive>
void TextRun::serialize(Archive& archive)
{
    serializeStyle(archive, *this);
    archive(cereal::make_nvp("_text", _text));
}

template<class Archive>
void TabRun::serialize(Archive& archive)
{
    serializeStyle(archive, *this);
}

template<class Archive>
void BreakRun::serialize(Archive& archive)
{
    serializeStyle(archive, *this);
    archive(cereal::make_nvp("_type", _type));
}

template<class Archive>
void DrawingRun::serialize(Archive& archive)
{
    serializeStyle(archive, *this);
    archive(cereal::make_nvp("_frame", _frame));
}

template<class Archive>
void BookmarkRun::serialize(Archive& archive)
{
    serializeStyle(archive, *this);
    archive(cereal::make_nvp("_name", _name), cereal::make_nvp("_edge", _edge));
}

template<class Archive>
void FieldRun::serialize(Archive& archive)
{
    serializeStyle(archive, *this);
    archive(cereal::make_nvp("_type", _type), cereal::make_nvp("_format", _format));
}

template<class Archive>
void AnchorRun::serialize(Archive& archive)
{
    serializeStyle(archive, *this);
    archive(cereal::make_nvp("_noteUUID", _noteUUID));
}

ZEM_INSTANTIATE_JSON(TextRun)
ZEM_INSTANTIATE_JSON(TabRun)
ZEM_INSTANTIATE_JSON(BreakRun)
ZEM_INSTANTIATE_JSON(DrawingRun)
ZEM_INSTANTIATE_JSON(BookmarkRun)
ZEM_INSTANTIATE_JSON(FieldRun)
ZEM_INSTANTIATE_JSON(AnchorRun)

} // namespace Zem::DOM
