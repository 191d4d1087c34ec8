#pragma once

#include "DOM_Block.h"
#include "DOM_BlockValue.h"
#include "DOM_Formula.h"
#include "DOM_Hyperlink.h"
#include "DOM_TableOfContentsInfo.h"

#include "Util_FloatNumber.h"
#include "Util_UUID.h"

#include <boost/variant.hpp>

#include <utility>
#include <vector>

namespace Zem::DOM
{

/// A block without text of its own: a cell's formula or value, or a table of contents.
class ZEM_EXPORT FieldBlock final : public BlockImpl<FieldBlock, BlockKind::FieldBlock>
{
public:
    using FieldInfo = boost::variant<Formula, ArrayFormulaShift, BlockValue<FloatNumber>, BlockValue<FormulaErrorType>,
                                     BlockValue<bool>, TableOfContentsInfo>;

    FieldBlock();
    explicit FieldBlock(FieldInfo fieldInfo);
    FieldBlock(const FieldBlock&);
    FieldBlock(FieldBlock&&) noexcept;
    FieldBlock& operator=(const FieldBlock&);
    FieldBlock& operator=(FieldBlock&&) noexcept;
    ~FieldBlock() override;

    const FieldInfo& getFieldInfo() const
    {
        return _fieldInfo;
    }

    FieldInfo& getFieldInfo()
    {
        return _fieldInfo;
    }

    /// May be null.
    const HyperlinkConstPtr& getHyperlink() const
    {
        return _hyperlink;
    }

    void setHyperlink(HyperlinkConstPtr hyperlink)
    {
        _hyperlink = std::move(hyperlink);
    }

    const std::vector<UUID>& getCommentUUIDs() const
    {
        return _commentUUIDs;
    }

    std::vector<UUID>& getCommentUUIDs()
    {
        return _commentUUIDs;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_fieldInfo", &FieldBlock::_fieldInfo),
                               field("_hyperlink", &FieldBlock::_hyperlink),
                               field("_commentUUIDs", &FieldBlock::_commentUUIDs));
    }

    friend ZEM_EXPORT bool operator==(const FieldBlock& left, const FieldBlock& right);

    template<class Archive>
    void serialize(Archive& archive);

private:
    FieldInfo _fieldInfo;
    HyperlinkConstPtr _hyperlink;
    std::vector<UUID> _commentUUIDs;
};

} // namespace Zem::DOM
