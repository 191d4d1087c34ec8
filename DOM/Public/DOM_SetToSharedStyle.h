#pragma once

/// Changes of a shared style: the element is pointed at another one.

#include "DOM_SharedObjectFactory.h"

#include <utility>

namespace Zem::DOM
{

/// The style behind a pointer; for null, the one default style of its type.
template<class Style>
const Style& derefSharedStyle(const SharedStyleConstIPtr<Style>& sharedStyle)
{
    return (sharedStyle ? *sharedStyle : SharedStyle<Style>::getObjectForNull()).get();
}

namespace SetToSharedStyleDetails
{

/// Points `sharedStyle` at the style that differs from its present one by what `setters` do; each is called with the
/// style to change:
///
///     setToSharedStyleVariadicImpl(factory, run.getSharedStyle(), setter(&RunStyle::setRunProps, runProps));
template<class Style, class... Setters>
void setToSharedStyleVariadicImpl(const SharedObjectFactory& factory, SharedStyleConstIPtr<Style>& sharedStyle,
                                  Setters&&... setters)
{
    Style style = derefSharedStyle(sharedStyle);
    (setters(style), ...);
    sharedStyle = factory.create(std::move(style));
}

/// A setter for `setToSharedStyleVariadicImpl` that passes a copy of `value` to a member function of the style. It
/// refers to `value`.
template<class Style, class Argument, class Value>
auto setter(void (Style::*function)(Argument), const Value& value)
{
    return [function, &value](Style& style) { (style.*function)(value); };
}

} // namespace SetToSharedStyleDetails

} // namespace Zem::DOM
