#pragma once

#include "DOM_NamedTableStyle.h"
#include "DOM_NamedTextStyle.h"
#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"
#include "DOM_UUIDContainer.h"

#include <utility>

namespace Zem::DOM
{

/// A document's named styles, and the properties below them all.
class ZEM_EXPORT Styles
{
public:
    const UUIDContainer<NamedTextStyle>& getTextStyles() const
    {
        return _textStyles;
    }

    UUIDContainer<NamedTextStyle>& getTextStyles()
    {
        return _textStyles;
    }

    const UUIDContainer<NamedTableStyle>& getTableStyles() const
    {
        return _tableStyles;
    }

    UUIDContainer<NamedTableStyle>& getTableStyles()
    {
        return _tableStyles;
    }

    /// What runs have that neither they themselves nor a style say otherwise; may be null.
    const RunPropsConstPtr& getDefaultRunProps() const
    {
        return _defaultRunProps;
    }

    void setDefaultRunProps(RunPropsConstPtr runProps)
    {
        _defaultRunProps = std::move(runProps);
    }

    /// The same for paragraphs; may be null.
    const ParaPropsConstPtr& getDefaultParaProps() const
    {
        return _defaultParaProps;
    }

    void setDefaultParaProps(ParaPropsConstPtr paraProps)
    {
        _defaultParaProps = std::move(paraProps);
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_textStyles", &Styles::_textStyles), field("_tableStyles", &Styles::_tableStyles),
                               field("_defaultRunProps", &Styles::_defaultRunProps),
                               field("_defaultParaProps", &Styles::_defaultParaProps));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    UUIDContainer<NamedTextStyle> _textStyles;
    UUIDContainer<NamedTableStyle> _tableStyles;
    RunPropsConstPtr _defaultRunProps;
    ParaPropsConstPtr _defaultParaProps;
};

} // namespace Zem::DOM
