#pragma once

#include "DOM_CellStyle.h"
#include "DOM_SharedStyle.h"
#include "DOM_StyleName.h"
#include "DOM_TableStyle.h"

#include "Util_Export.h"
#include "Util_UUIDable.h"

#include <string>
#include <utility>

namespace Zem::DOM
{

/// The styles that a named table style gives to the parts of a table; later ones lie over earlier ones. Null for a part
/// without one.
struct ZEM_EXPORT TablePartStyles
{
    SharedStyleConstIPtr<CellStyle> _wholeTable;
    SharedStyleConstIPtr<CellStyle> _oddRows;
    SharedStyleConstIPtr<CellStyle> _evenRows;
    SharedStyleConstIPtr<CellStyle> _oddColumns;
    SharedStyleConstIPtr<CellStyle> _evenColumns;
    SharedStyleConstIPtr<CellStyle> _firstColumn;
    SharedStyleConstIPtr<CellStyle> _lastColumn;
    SharedStyleConstIPtr<CellStyle> _headerRows;
    SharedStyleConstIPtr<CellStyle> _totalRow;

    static constexpr auto fields()
    {
        return std::make_tuple(
            field("_wholeTable", &TablePartStyles::_wholeTable), field("_oddRows", &TablePartStyles::_oddRows),
            field("_evenRows", &TablePartStyles::_evenRows), field("_oddColumns", &TablePartStyles::_oddColumns),
            field("_evenColumns", &TablePartStyles::_evenColumns),
            field("_firstColumn", &TablePartStyles::_firstColumn), field("_lastColumn", &TablePartStyles::_lastColumn),
            field("_headerRows", &TablePartStyles::_headerRows), field("_totalRow", &TablePartStyles::_totalRow));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// A table style that users know by its name.
class ZEM_EXPORT NamedTableStyle : public UUIDable
{
public:
    using UUIDable::UUIDable;

    const StyleName& getName() const
    {
        return _name;
    }

    void setName(StyleName name)
    {
        _name = std::move(name);
    }

    /// Nil for none.
    const UUID& getParentUUID() const
    {
        return _parentUUID;
    }

    void setParentUUID(const UUID& parentUUID)
    {
        _parentUUID = parentUUID;
    }

    /// May be null.
    const SharedStyleConstIPtr<TableStyle>& getSharedTableStyle() const
    {
        return _sharedTableStyle;
    }

    SharedStyleConstIPtr<TableStyle>& getSharedTableStyle()
    {
        return _sharedTableStyle;
    }

    const TablePartStyles& getPartStyles() const
    {
        return _partStyles;
    }

    TablePartStyles& getPartStyles()
    {
        return _partStyles;
    }

    static constexpr auto ownFields()
    {
        return std::make_tuple(field("_name", &NamedTableStyle::_name),
                               field("_parentUUID", &NamedTableStyle::_parentUUID),
                               field("_sharedTableStyle", &NamedTableStyle::_sharedTableStyle),
                               field("_partStyles", &NamedTableStyle::_partStyles));
    }

    static constexpr auto fields()
    {
        return std::tuple_cat(UUIDable::fields(), ownFields());
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    StyleName _name;
    UUID _parentUUID;
    SharedStyleConstIPtr<TableStyle> _sharedTableStyle;
    TablePartStyles _partStyles;
};

/// The name as users read it; empty for a style that has none.
ZEM_EXPORT boost::optional<std::string> resolveNamedStyleName(const NamedTableStyle& style);

} // namespace Zem::DOM
