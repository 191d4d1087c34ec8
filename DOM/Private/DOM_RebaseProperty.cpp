#include "DOM_RebaseProperty.h"

namespace Zem::DOM
{

namespace
{

template<class T>
void rebaseFields(T& merged, const T& replacement, const T& expected, const T& actual)
{
    forEachField<T>(
        [&](const auto& row)
        {
            if (areDeeplyEqual(expected.*(row._member), actual.*(row._member)))
            {
                merged.*(row._member) = replacement.*(row._member);
            }
        });
}

/// The value stays null only where the rule takes a null replacement over; merged fields need an object to lie in.
template<class Props>
void rebaseTracked(TrackedObject<std::shared_ptr<const Props>>& merged,
                   const TrackedObject<std::shared_ptr<const Props>>& replacement,
                   const TrackedObject<std::shared_ptr<const Props>>& expected,
                   const TrackedObject<std::shared_ptr<const Props>>& actual)
{
    if (areDeeplyEqual(expected._info, actual._info))
    {
        merged._info = replacement._info;
    }
    if (areDeeplyEqual(expected._value, actual._value))
    {
        merged._value = replacement._value;
        return;
    }
    auto value = merged._value ? std::make_shared<Props>(*merged._value) : nullptr;
    rebaseProperty(value, replacement._value, expected._value, actual._value);
    merged._value = std::move(value);
}

} // namespace

void rebaseProperty(RunProps& merged, const RunProps& replacement, const RunProps& expected, const RunProps& actual)
{
    rebaseFields(merged, replacement, expected, actual);
}

void rebaseProperty(ParaProps& merged, const ParaProps& replacement, const ParaProps& expected, const ParaProps& actual)
{
    rebaseFields(merged, replacement, expected, actual);
}

void rebaseProperty(TrackedRunProps& merged, const TrackedRunProps& replacement, const TrackedRunProps& expected,
                    const TrackedRunProps& actual)
{
    rebaseTracked(merged, replacement, expected, actual);
}

void rebaseProperty(TrackedParaProps& merged, const TrackedParaProps& replacement, const TrackedParaProps& expected,
                    const TrackedParaProps& actual)
{
    rebaseTracked(merged, replacement, expected, actual);
}

void rebaseProperty(std::shared_ptr<TrackedAction>& merged, const std::shared_ptr<const TrackedAction>& replacement,
                    const std::shared_ptr<const TrackedAction>& expected,
                    const std::shared_ptr<const TrackedAction>& actual)
{
    if (areDeeplyEqual(expected, actual))
    {
        merged = replacement ? std::make_shared<TrackedAction>(*replacement) : nullptr;
    }
    if (!merged)
    {
        merged = std::make_shared<TrackedAction>();
    }
}

} // namespace Zem::DOM
