#pragma once

#include "DOM_Block.h"
#include "DOM_SectionProps.h"

namespace Zem::DOM
{

/// The end of a section: the blocks before it, back to the tag before, have its properties.
class ZEM_EXPORT SectionTag final : public BlockImpl<SectionTag, BlockKind::SectionTag>
{
public:
    const SectionProps& getSectionProps() const
    {
        return _sectionProps;
    }

    SectionProps& getSectionProps()
    {
        return _sectionProps;
    }

    friend bool operator==(const SectionTag& left, const SectionTag& right)
    {
        return left._sectionProps == right._sectionProps;
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    SectionProps _sectionProps;
};

} // namespace Zem::DOM
