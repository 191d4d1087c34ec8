// The JSON forms of texts and of the blocks in them.

#include "DOM_Json.h"
#include "DOM_NumberingRef.h"
#include "DOM_Paragraph.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RunStyle.h"
#include "DOM_SectionTag.h"
#include "DOM_Shape.h"
#include "DOM_TextLimits.h"
#include "DOM_TextWithTombstones.h"

namespace Zem::DOM
{

template<class Archive>
void Paragraph::serialize(Archive& archive)
{
    archive(cereal::make_nvp("_runs", _runs), cereal::make_nvp("_sharedStyle", _sharedStyle),
            cereal::make_nvp("_sharedParaMarkStyle", _sharedParaMarkStyle), cereal::make_nvp("_numRef", _numRef));
    if constexpr (Archive::is_loading::value)
    {
        TextLimits::requireNoNull(_runs);
    }
}

template<class Archive>
void SectionTag::serialize(Archive& archive)
{
    archive(cereal::make_nvp("_sectionProps", _sectionProps));
}

template<class Archive>
void Shape::serialize(Archive& archive)
{
    archive(cereal::make_nvp("_geometry", _geometry), cereal::make_nvp("_size", _size),
            cereal::make_nvp("_text", _text));
}

template<class Archive>
void TextWithTombstones::serialize(Archive& archive)
{
    archive(cereal::make_nvp("_blocks", _blocks), cereal::make_nvp("_tombstones", _tombstones));
    if constexpr (Archive::is_loading::value)
    {
        TextLimits::requireSound(*this);
    }
}

ZEM_JSON_OF_FIELDS(NumberingRef)
ZEM_INSTANTIATE_JSON(Paragraph)
ZEM_INSTANTIATE_JSON(SectionTag)
ZEM_INSTANTIATE_JSON(Shape)
ZEM_INSTANTIATE_JSON(TextWithTombstones)

} // namespace Zem::DOM
