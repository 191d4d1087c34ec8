#pragma once

/// What a row or a column of a table has beside its cells.

#include "DOM_CellStyle.h"
#include "DOM_FieldOperators.h"
#include "DOM_SharedStyle.h"

#include "Util_BoolOpt.h"
#include "Util_UUID.h"

#include <boost/optional.hpp>

#include <memory>
#include <tuple>
#include <utility>

namespace Zem::DOM
{

/// How the properties of rows and columns hold their fields.
enum class MemberTrait : unsigned char
{
    /// By their values; an unset one is inherited.
    Value = 0
};

enum class RowHeightRule : unsigned char
{
    Auto,
    AtLeast,
    Exactly
};

constexpr RowHeightRule getLastEnumerator(RowHeightRule)
{
    return RowHeightRule::Exactly;
}

/// The height of a row, in points, and whether the row may grow beyond it.
struct RowHeightImpl
{
    boost::optional<float> _value;
    boost::optional<RowHeightRule> _rule;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_value", &RowHeightImpl::_value), field("_rule", &RowHeightImpl::_rule));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

template<MemberTrait trait>
struct RowPropsImpl;

template<>
struct RowPropsImpl<MemberTrait::Value>
{
    BoolOpt _isHidden;
    boost::optional<RowHeightImpl> _height;
    /// How many groups, one inside the other, the row belongs to.
    boost::optional<unsigned char> _groupingLevel;
    BoolOpt _hasPageBreakBefore;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_isHidden", &RowPropsImpl::_isHidden), field("_height", &RowPropsImpl::_height),
                               field("_groupingLevel", &RowPropsImpl::_groupingLevel),
                               field("_hasPageBreakBefore", &RowPropsImpl::_hasPageBreakBefore));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

template<MemberTrait trait>
struct ColumnPropsImpl;

template<>
struct ColumnPropsImpl<MemberTrait::Value>
{
    BoolOpt _isHidden;
    /// Whether the column is as wide as its widest cell needs.
    BoolOpt _isBestFit;
    /// In points.
    boost::optional<float> _width;
    /// How many groups, one inside the other, the column belongs to.
    boost::optional<unsigned char> _groupingLevel;
    BoolOpt _hasPageBreakBefore;

    static constexpr auto fields()
    {
        return std::make_tuple(
            field("_isHidden", &ColumnPropsImpl::_isHidden), field("_isBestFit", &ColumnPropsImpl::_isBestFit),
            field("_width", &ColumnPropsImpl::_width), field("_groupingLevel", &ColumnPropsImpl::_groupingLevel),
            field("_hasPageBreakBefore", &ColumnPropsImpl::_hasPageBreakBefore));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

using RowProps = RowPropsImpl<MemberTrait::Value>;
using ColumnProps = ColumnPropsImpl<MemberTrait::Value>;

/// The style of a row or of a column: the style of those of its cells that have none of their own, its own properties,
/// and the named style that it inherits from (nil for none).
template<class Props>
class RowColumnStyle
{
public:
    const SharedStyleConstIPtr<CellStyle>& getDefaultCellStyle() const
    {
        return _defaultCellStyle;
    }

    void setDefaultCellStyle(SharedStyleConstIPtr<CellStyle> style)
    {
        _defaultCellStyle = std::move(style);
    }

    /// Null if the line has no properties of its own.
    const std::shared_ptr<const Props>& getProps() const
    {
        return _props;
    }

    void setProps(std::shared_ptr<const Props> props)
    {
        _props = std::move(props);
    }

    const UUID& getParentUUID() const
    {
        return _parentUUID;
    }

    void setParentUUID(const UUID& uuid)
    {
        _parentUUID = uuid;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_defaultCellStyle", &RowColumnStyle::_defaultCellStyle),
                               field("_props", &RowColumnStyle::_props),
                               field("_parentUUID", &RowColumnStyle::_parentUUID));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    SharedStyleConstIPtr<CellStyle> _defaultCellStyle;
    std::shared_ptr<const Props> _props;
    UUID _parentUUID;
};

using RowStyle = RowColumnStyle<RowProps>;
using ColumnStyle = RowColumnStyle<ColumnProps>;

using SharedRowStyleConstIPtr = SharedStyleConstIPtr<RowStyle>;
using SharedColumnStyleConstIPtr = SharedStyleConstIPtr<ColumnStyle>;

} // namespace Zem::DOM
