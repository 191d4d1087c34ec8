#pragma once

#include "DOM_NumberingRef.h"
#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"
#include "DOM_StyleName.h"

#include "Util_Export.h"
#include "Util_UUIDable.h"

#include <memory>
#include <string>
#include <utility>

namespace Zem::DOM
{

/// What a named style is offered for.
enum class TextStyleType : unsigned char
{
    Paragraph,
    Character
};

constexpr TextStyleType getLastEnumerator(TextStyleType)
{
    return TextStyleType::Character;
}

/// A text style that users know by its name: properties of runs and paragraphs, and a numbering, over those of its
/// parent. Each pointer may be null.
class ZEM_EXPORT NamedTextStyle : public UUIDable
{
public:
    using UUIDable::UUIDable;

    NamedTextStyle();
    NamedTextStyle(const NamedTextStyle& other);
    NamedTextStyle(NamedTextStyle&&) noexcept;
    NamedTextStyle& operator=(const NamedTextStyle& other);
    NamedTextStyle& operator=(NamedTextStyle&&) noexcept;
    ~NamedTextStyle();

    const StyleName& getName() const
    {
        return _name;
    }

    void setName(StyleName name)
    {
        _name = std::move(name);
    }

    TextStyleType getType() const
    {
        return _type;
    }

    void setType(TextStyleType type)
    {
        _type = type;
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

    /// The style of a paragraph that is begun behind one of this style; nil for the same.
    const UUID& getNextStyleUUID() const
    {
        return _nextStyleUUID;
    }

    void setNextStyleUUID(const UUID& nextStyleUUID)
    {
        _nextStyleUUID = nextStyleUUID;
    }

    const RunPropsConstPtr& getRunProps() const
    {
        return _runProps;
    }

    void setRunProps(RunPropsConstPtr runProps)
    {
        _runProps = std::move(runProps);
    }

    const ParaPropsConstPtr& getParaProps() const
    {
        return _paraProps;
    }

    void setParaProps(ParaPropsConstPtr paraProps)
    {
        _paraProps = std::move(paraProps);
    }

    /// Null if the style isn't numbered.
    const std::unique_ptr<NumberingRef>& getNumRef() const
    {
        return _numRef;
    }

    std::unique_ptr<NumberingRef>& getNumRef()
    {
        return _numRef;
    }

    static constexpr auto ownFields()
    {
        return std::make_tuple(
            field("_name", &NamedTextStyle::_name), field("_type", &NamedTextStyle::_type),
            field("_parentUUID", &NamedTextStyle::_parentUUID),
            field("_nextStyleUUID", &NamedTextStyle::_nextStyleUUID), field("_runProps", &NamedTextStyle::_runProps),
            field("_paraProps", &NamedTextStyle::_paraProps), field("_numRef", &NamedTextStyle::_numRef));
    }

    static constexpr auto fields()
    {
        return std::tuple_cat(UUIDable::fields(), ownFields());
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    StyleName _name;
    TextStyleType _type = TextStyleType::Paragraph;
    UUID _parentUUID;
    UUID _nextStyleUUID;
    RunPropsConstPtr _runProps;
    ParaPropsConstPtr _paraProps;
    std::unique_ptr<NumberingRef> _numRef;
};

/// The name as users read it; empty for a style that has none.
ZEM_EXPORT boost::optional<std::string> resolveNamedStyleName(const NamedTextStyle& style);

} // namespace Zem::DOM
