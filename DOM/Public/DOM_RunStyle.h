#pragma once

#include "DOM_Hyperlink.h"
#include "DOM_RunProps.h"
#include "DOM_SharedStyle.h"
#include "DOM_TrackedObject.h"

#include "Util_Export.h"
#include "Util_UUID.h"

#include <utility>
#include <vector>

namespace Zem::DOM
{

using TrackedRunPropsConstPtr = std::shared_ptr<const TrackedObject<RunPropsConstPtr>>;

/// All that runs of one look have in common: their properties, the named style below these, their link, comments and
/// tracked changes. A nil parent is none, and each pointer may be null.
class ZEM_EXPORT RunStyle
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

    const RunPropsConstPtr& getRunProps() const
    {
        return _runProps;
    }

    void setRunProps(RunPropsConstPtr runProps)
    {
        _runProps = std::move(runProps);
    }

    const HyperlinkConstPtr& getHyperlink() const
    {
        return _hyperlink;
    }

    void setHyperlink(HyperlinkConstPtr hyperlink)
    {
        _hyperlink = std::move(hyperlink);
    }

    const std::vector<UUID>& getCommentUUIDs() const
    {
        return _commentUUIDs;
    }

    std::vector<UUID>& getCommentUUIDs()
    {
        return _commentUUIDs;
    }

    /// The properties from before a tracked change of them.
    const TrackedRunPropsConstPtr& getTrackedRunProps() const
    {
        return _trackedRunProps;
    }

    void setTrackedRunProps(TrackedRunPropsConstPtr trackedRunProps)
    {
        _trackedRunProps = std::move(trackedRunProps);
    }

    /// The tracked insertion, deletion or move of the runs themselves.
    const TrackedActionConstPtr& getTrackedAction() const
    {
        return _trackedAction;
    }

    void setTrackedAction(TrackedActionConstPtr trackedAction)
    {
        _trackedAction = std::move(trackedAction);
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
        return std::make_tuple(
            field("_parentUUID", &RunStyle::_parentUUID), field("_runProps", &RunStyle::_runProps),
            field("_hyperlink", &RunStyle::_hyperlink), field("_commentUUIDs", &RunStyle::_commentUUIDs),
            field("_trackedRunProps", &RunStyle::_trackedRunProps), field("_trackedAction", &RunStyle::_trackedAction),
            field("_trackedParent", &RunStyle::_trackedParent));
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    UUID _parentUUID;
    RunPropsConstPtr _runProps;
    HyperlinkConstPtr _hyperlink;
    std::vector<UUID> _commentUUIDs;
    TrackedRunPropsConstPtr _trackedRunProps;
    TrackedActionConstPtr _trackedAction;
    TrackedTextStyleConstPtr _trackedParent;
};

} // namespace Zem::DOM
