#pragma once

#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"
#include "DOM_SharedStyle.h"
#include "DOM_TrackedObject.h"

#include "Util_Export.h"
#include "Util_UUID.h"

#include <utility>

namespace Zem::DOM
{

using TrackedParaPropsConstPtr = std::shared_ptr<const TrackedObject<ParaPropsConstPtr>>;

/// All that paragraphs of one look have in common: their own properties, those that their runs inherit, the named style
/// below both, and tracked changes. A nil parent is none, and each pointer may be null.
class ZEM_EXPORT ParagraphStyle
{
public:
    const UUID& getParentUUID() const
    {
        return _parentUUID;
    }

    void setParentUUID(const UUID& parentUUID)
    {
        _parentUUID = parentUUID;
    }

    const ParaPropsConstPtr& getParaProps() const
    {
        return _paraProps;
    }

    void setParaProps(ParaPropsConstPtr paraProps)
    {
        _paraProps = std::move(paraProps);
    }

    const RunPropsConstPtr& getRunProps() const
    {
        return _runProps;
    }

    void setRunProps(RunPropsConstPtr runProps)
    {
        _runProps = std::move(runProps);
    }

    /// The paragraph properties from before a tracked change of them.
    const TrackedParaPropsConstPtr& getTrackedParaProps() const
    {
        return _trackedParaProps;
    }

    void setTrackedParaProps(TrackedParaPropsConstPtr trackedParaProps)
    {
        _trackedParaProps = std::move(trackedParaProps);
    }

    /// The parent from before a tracked change of it.
    const TrackedTextStyleConstPtr& getTrackedParent() const
    {
        return _trackedParent;
    }

    void setTrackedParent(TrackedTextStyleConstPtr trackedParent)
    {
        _trackedParent = std::move(trackedParent);
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_parentUUID", &ParagraphStyle::_parentUUID),
                               field("_paraProps", &ParagraphStyle::_paraProps),
                               field("_runProps", &ParagraphStyle::_runProps),
                               field("_trackedParaProps", &ParagraphStyle::_trackedParaProps),
                               field("_trackedParent", &ParagraphStyle::_trackedParent));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    UUID _parentUUID;
    ParaPropsConstPtr _paraProps;
    RunPropsConstPtr _runProps;
    TrackedParaPropsConstPtr _trackedParaProps;
    TrackedTextStyleConstPtr _trackedParent;
};

} // namespace Zem::DOM
