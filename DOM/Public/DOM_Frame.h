#pragma once

#include "DOM_Anchors.h"
#include "DOM_FieldOperators.h"
#include "DOM_GraphicalObject.h"

#include "Util_Export.h"
#include "Util_TableIndices.h"

#include <boost/optional.hpp>

#include <memory>
#include <string>
#include <tuple>
#include <utility>

namespace Zem::DOM
{

/// A rectangle that holds a graphical object, floating in a table or standing in a text. Copies are deep.
class ZEM_EXPORT Frame
{
public:
    Frame();
    Frame(const Frame& other);
    Frame(Frame&&) noexcept;
    Frame& operator=(const Frame& other);
    Frame& operator=(Frame&&) noexcept;
    ~Frame();

    const Anchor& getAnchor() const
    {
        return _anchor;
    }

    void setAnchor(Anchor anchor)
    {
        _anchor = std::move(anchor);
    }

    /// In points; empty if the anchor or the object decides.
    const boost::optional<Size2D<float>>& getExtent() const
    {
        return _extent;
    }

    void setExtent(boost::optional<Size2D<float>> extent)
    {
        _extent = extent;
    }

    /// Null for an empty frame.
    const std::unique_ptr<GraphicalObject>& getGraphicalObject() const
    {
        return _graphicalObject;
    }

    void setGraphicalObject(std::unique_ptr<GraphicalObject> object)
    {
        _graphicalObject = std::move(object);
    }

    /// The text that stands for the frame where it can't be seen.
    const std::string& getDescription() const
    {
        return _description;
    }

    void setDescription(std::string description)
    {
        _description = std::move(description);
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_anchor", &Frame::_anchor), field("_extent", &Frame::_extent),
                               field("_graphicalObject", &Frame::_graphicalObject),
                               field("_description", &Frame::_description));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    Anchor _anchor;
    boost::optional<Size2D<float>> _extent;
    std::unique_ptr<GraphicalObject> _graphicalObject;
    std::string _description;
};

using FrameUPtr = std::unique_ptr<Frame>;

} // namespace Zem::DOM
