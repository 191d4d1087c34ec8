#include "DOM_Frame.h"

#include "Util_DeepCopy.h"

namespace Zem::DOM
{

GraphicalObject::~GraphicalObject() = default;

Frame::Frame() = default;

Frame::Frame(const Frame& other)
    : _anchor(other._anchor)
    , _extent(other._extent)
    , _graphicalObject(deepCopy(other._graphicalObject))
    , _description(other._description)
{
}

Frame::Frame(Frame&&) noexcept = default;

Frame& Frame::operator=(const Frame& other)
{
    return *this = Frame(other);
}

Frame& Frame::operator=(Frame&&) noexcept = default;
Frame::~Frame() = default;

} // namespace Zem::DOM
