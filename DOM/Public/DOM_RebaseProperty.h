#pragma once

/// Merging of two concurrent settings of one bundle of properties, field by field.
///
/// `merged` is one user's bundle, `replacement` another's. A field of `merged` stands, unless `expected` and `actual`
/// agree in it: then it becomes that of `replacement`.

#include "DOM_ParaProps.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RunProps.h"
#include "DOM_RunStyle.h"
#include "DOM_TrackedObject.h"

#include "Util_DeepComparison.h"
#include "Util_Export.h"

#include <memory>

namespace Zem::DOM
{

using TrackedRunProps = TrackedObject<RunPropsConstPtr>;
using TrackedParaProps = TrackedObject<ParaPropsConstPtr>;
using TrackedAction = TrackedObject<TrackChangesType>;

ZEM_EXPORT void rebaseProperty(RunProps& merged, const RunProps& replacement, const RunProps& expected,
                               const RunProps& actual);
ZEM_EXPORT void rebaseProperty(ParaProps& merged, const ParaProps& replacement, const ParaProps& expected,
                               const ParaProps& actual);

/// Who made the change and when is one field; the properties from before it are merged field by field in their turn.
ZEM_EXPORT void rebaseProperty(TrackedRunProps& merged, const TrackedRunProps& replacement,
                               const TrackedRunProps& expected, const TrackedRunProps& actual);
ZEM_EXPORT void rebaseProperty(TrackedParaProps& merged, const TrackedParaProps& replacement,
                               const TrackedParaProps& expected, const TrackedParaProps& actual);

/// An action belongs to the one who did it, so that the two are one field. Null counts as the default action, and the
/// result is never null.
ZEM_EXPORT void rebaseProperty(std::shared_ptr<TrackedAction>& merged,
                               const std::shared_ptr<const TrackedAction>& replacement,
                               const std::shared_ptr<const TrackedAction>& expected,
                               const std::shared_ptr<const TrackedAction>& actual);

/// The same for bundles behind pointers. Null counts as a bundle without any field set, and the result is never null.
template<class Pointer, class ConstPointer, class T = typename Pointer::element_type>
requires(std::is_same_v<Pointer, std::shared_ptr<T>>&& std::is_same_v<ConstPointer, std::shared_ptr<const T>> &&
         !std::is_same_v<T, TrackedAction>) void rebaseProperty(Pointer& merged, const ConstPointer& replacement,
                                                                const ConstPointer& expected,
                                                                const ConstPointer& actual)
{
    if (areDeeplyEqual(expected, actual))
    {
        merged = replacement ? std::make_shared<T>(*replacement) : nullptr;
    }
    if (!merged)
    {
        merged = std::make_shared<T>();
    }
    const T defaults{};
    rebaseProperty(*merged, replacement ? *replacement : defaults, expected ? *expected : defaults,
                   actual ? *actual : defaults);
}

} // namespace Zem::DOM
