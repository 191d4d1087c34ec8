#pragma once

#include "DOM_NumberFormat.h"
#include "DOM_RunProps.h"

#include "Util_UUIDable.h"

#include <string>
#include <utility>
#include <vector>

namespace Zem::DOM
{

/// What stands between an item's number and its text.
enum class NumberingSuffix : unsigned char
{
    Tab,
    Space,
    Nothing
};

constexpr NumberingSuffix getLastEnumerator(NumberingSuffix)
{
    return NumberingSuffix::Nothing;
}

/// How the items of one level of a list are numbered. Lengths are in points.
struct ZEM_EXPORT NumberingLevel
{
    NumberFormat _format = NumberFormat::Decimal;
    /// What is written: a percent sign and a digit stand for the number of that level, counted from 1, as in "%1.%2)".
    std::string _pattern;
    unsigned long _firstNumber = 1;
    NumberingSuffix _suffix = NumberingSuffix::Tab;
    float _leftIndent = 0;
    float _firstLineIndent = 0;
    /// Of the number itself; null for those of the paragraph's mark.
    RunPropsConstPtr _numberProps;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_format", &NumberingLevel::_format), field("_pattern", &NumberingLevel::_pattern),
                               field("_firstNumber", &NumberingLevel::_firstNumber),
                               field("_suffix", &NumberingLevel::_suffix),
                               field("_leftIndent", &NumberingLevel::_leftIndent),
                               field("_firstLineIndent", &NumberingLevel::_firstLineIndent),
                               field("_numberProps", &NumberingLevel::_numberProps));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// A numbering that paragraphs and styles refer to.
class ZEM_EXPORT NumberedList : public UUIDable
{
public:
    using UUIDable::UUIDable;

    /// Outermost first.
    const std::vector<NumberingLevel>& getLevels() const
    {
        return _levels;
    }

    std::vector<NumberingLevel>& getLevels()
    {
        return _levels;
    }

    static constexpr auto ownFields()
    {
        return std::make_tuple(field("_levels", &NumberedList::_levels));
    }

    static constexpr auto fields()
    {
        return std::tuple_cat(UUIDable::fields(), ownFields());
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    std::vector<NumberingLevel> _levels;
};

} // namespace Zem::DOM
