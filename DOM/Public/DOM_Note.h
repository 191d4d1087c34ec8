#pragma once

#include "DOM_Block.h"
#include "DOM_FieldOperators.h"

#include "Util_Export.h"
#include "Util_TableIndices.h"
#include "Util_UUIDable.h"

#include <boost/optional.hpp>

#include <utility>

namespace Zem::DOM
{

/// A footnote, an endnote or a note of a cell or slide; an `AnchorRun` in the text names it by its UUID.
class ZEM_EXPORT Note : public UUIDable
{
public:
    using UUIDable::UUIDable;

    Note();
    Note(const Note& other);
    Note(Note&&) noexcept;
    Note& operator=(const Note& other);
    Note& operator=(Note&&) noexcept;
    ~Note();

    const Blocks& getBlocks() const
    {
        return _blocks;
    }

    Blocks& getBlocks()
    {
        return _blocks;
    }

    /// The size of the box that the note is shown in, in points; empty for one that fits the text.
    const boost::optional<Size2D<float>>& getExtent() const
    {
        return _extent;
    }

    void setExtent(const boost::optional<Size2D<float>>& extent)
    {
        _extent = extent;
    }

    bool isAlwaysVisible() const
    {
        return _alwaysVisible;
    }

    void setAlwaysVisible(bool alwaysVisible)
    {
        _alwaysVisible = alwaysVisible;
    }

    static constexpr auto ownFields()
    {
        return std::make_tuple(field("_blocks", &Note::_blocks), field("_extent", &Note::_extent),
                               field("_alwaysVisible", &Note::_alwaysVisible));
    }

    static constexpr auto fields()
    {
        return std::tuple_cat(UUIDable::fields(), ownFields());
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    Blocks _blocks;
    boost::optional<Size2D<float>> _extent;
    bool _alwaysVisible = false;
};

} // namespace Zem::DOM
