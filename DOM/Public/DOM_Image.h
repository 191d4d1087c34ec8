#pragma once

#include "DOM_FieldOperators.h"
#include "DOM_GraphicalObject.h"

#include "Util_Export.h"

#include <string>
#include <tuple>

namespace Zem::DOM
{

/// How much of an image is cut off at each side, as a share of its size from 0 to 1.
struct ImageCrop
{
    float _left = 0;
    float _top = 0;
    float _right = 0;
    float _bottom = 0;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_left", &ImageCrop::_left), field("_top", &ImageCrop::_top),
                               field("_right", &ImageCrop::_right), field("_bottom", &ImageCrop::_bottom));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// A picture. Its bytes lie outside the document.
class ZEM_EXPORT Image final : public GraphicalObjectImpl<Image, GraphicalObjectKind::Image>
{
public:
    static constexpr auto fields()
    {
        return std::make_tuple(field("_source", &Image::_source), field("_crop", &Image::_crop),
                               field("_rotation", &Image::_rotation), field("_opacity", &Image::_opacity));
    }

    template<class Archive>
    void serialize(Archive& archive);

    /// Where the bytes are to be found: a name in the document's package, or a URL.
    std::string _source;
    ImageCrop _crop;
    /// In degrees, with the clock.
    float _rotation = 0;
    /// From 0 to 1.
    float _opacity = 1;
};

} // namespace Zem::DOM
