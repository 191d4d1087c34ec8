#pragma once

#include "DOM_CellStyle.h"
#include "DOM_FieldOperators.h"
#include "DOM_Formula.h"
#include "DOM_SharedStyle.h"

#include "Util_TableIndices.h"

#include <memory>
#include <tuple>
#include <utility>
#include <vector>

namespace Zem::DOM
{

/// What a cell is tested for; the operands are formulas, one or two as the test needs.
enum class ConditionOperator : unsigned char
{
    Equal,
    NotEqual,
    Less,
    LessOrEqual,
    Greater,
    GreaterOrEqual,
    Between,
    NotBetween,
    ContainsText,
    BeginsWithText,
    EndsWithText,
    IsBlank,
    IsError,
    IsDuplicate,
    Formula
};

constexpr ConditionOperator getLastEnumerator(ConditionOperator)
{
    return ConditionOperator::Formula;
}

/// One test, and the style of the cells that pass it.
struct Condition
{
    ConditionOperator _operator = ConditionOperator::Equal;
    std::vector<Formula> _operands;
    SharedStyleConstIPtr<CellStyle> _style;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_operator", &Condition::_operator), field("_operands", &Condition::_operands),
                               field("_style", &Condition::_style));
    }

    template<class Archive>
    void serialize(Archive& archive);
};

/// A style that cells get as long as they meet a condition. A table's formats apply in the order of its list.
class ConditionalFormat
{
public:
    /// Ranges of live indices.
    const std::vector<TableRange>& getRanges() const
    {
        return _ranges;
    }

    void setRanges(std::vector<TableRange> ranges)
    {
        _ranges = std::move(ranges);
    }

    /// The first one that a cell meets gives its style.
    const std::vector<Condition>& getConditions() const
    {
        return _conditions;
    }

    void setConditions(std::vector<Condition> conditions)
    {
        _conditions = std::move(conditions);
    }

    /// Whether a cell that meets a condition of this format isn't given to the formats behind it.
    bool getStopCalculateConditions() const
    {
        return _stopCalculateConditions;
    }

    void setStopCalculateConditions(bool stop)
    {
        _stopCalculateConditions = stop;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_ranges", &ConditionalFormat::_ranges),
                               field("_conditions", &ConditionalFormat::_conditions),
                               field("_stopCalculateConditions", &ConditionalFormat::_stopCalculateConditions));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    std::vector<TableRange> _ranges;
    std::vector<Condition> _conditions;
    bool _stopCalculateConditions = false;
};

using ConditionalFormatUPtr = std::unique_ptr<ConditionalFormat>;

} // namespace Zem::DOM
