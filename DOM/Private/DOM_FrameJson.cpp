// The JSON forms of frames, their anchors, and what they hold.

#include "DOM_ChartSpace.h"
#include "DOM_Frame.h"
#include "DOM_Image.h"
#include "DOM_Json.h"
#include "DOM_PolymorphicJson.h"

#include <array>

namespace Zem::DOM::JsonDetails
{

namespace
{

std::span<const PolymorphicClass<GraphicalObject>> getGraphicalObjectClasses()
{
    static const std::array rows{
        makePolymorphicClass<GraphicalObject, ChartSpace>("Zem::DOM::ChartSpace"),
        makePolymorphicClass<GraphicalObject, Image>("Zem::DOM::Image"),
    };
    return rows;
}

} // namespace

} // namespace Zem::DOM::JsonDetails

namespace cereal
{

void save(JSONOutputArchive& archive, const std::unique_ptr<Zem::DOM::GraphicalObject>& object)
{
    Zem::DOM::JsonDetails::savePolymorphic(archive, object, Zem::DOM::JsonDetails::getGraphicalObjectClasses());
}

void load(JSONInputArchive& archive, std::unique_ptr<Zem::DOM::GraphicalObject>& object)
{
    Zem::DOM::JsonDetails::loadPolymorphic(archive, object, Zem::DOM::JsonDetails::getGraphicalObjectClasses());
}

} // namespace cereal

namespace Zem::DOM
{

ZEM_JSON_OF_FIELDS(TextAnchor)
ZEM_JSON_OF_FIELDS(AbsoluteAnchor)
ZEM_JSON_OF_FIELDS(CellCorner)
ZEM_JSON_OF_FIELDS(OneCellAnchor)
ZEM_JSON_OF_FIELDS(TwoCellAnchor)
ZEM_JSON_OF_FIELDS(ChartSeries)
ZEM_JSON_OF_FIELDS(ChartAxis)
ZEM_JSON_OF_FIELDS(ChartSpace)
ZEM_JSON_OF_FIELDS(ImageCrop)
ZEM_JSON_OF_FIELDS(Image)
ZEM_JSON_OF_FIELDS(Frame)

} // namespace Zem::DOM
