#include "Editing/CS_TypedStyle.h"

#include "DOM_SetToSharedStyle.h"

#include "Util_DeepComparison.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

namespace Zem::CollaborationSession
{

namespace
{

const DOM::RunStyle& getStyle(const DOM::Run* run)
{
    return DOM::derefSharedStyle(run ? run->getSharedStyle() : RunStylePtr());
}

} // namespace

RunStylePtr makeTypedStyle(const RunStylePtr& model, const DOM::Run* inFront, const DOM::Run* behind)
{
    const DOM::RunStyle& left = getStyle(inFront);
    const DOM::RunStyle& right = getStyle(behind);
    const bool hasLink = areDeeplyEqual(left.getHyperlink(), right.getHyperlink());
    DOM::HyperlinkConstPtr link = hasLink ? left.getHyperlink() : nullptr;
    std::vector<UUID> comments;
    std::copy_if(left.getCommentUUIDs().begin(), left.getCommentUUIDs().end(), std::back_inserter(comments),
                 [&](const UUID& uuid)
                 {
                     const auto& others = right.getCommentUUIDs();
                     return std::find(others.begin(), others.end(), uuid) != others.end();
                 });
    const DOM::RunStyle& present = DOM::derefSharedStyle(model);
    if (areDeeplyEqual(present.getHyperlink(), link) && present.getCommentUUIDs() == comments)
    {
        return model;
    }
    DOM::RunStyle style = present;
    style.setHyperlink(std::move(link));
    style.getCommentUUIDs() = std::move(comments);
    return RunStylePtr(new DOM::SharedStyle<DOM::RunStyle>(std::move(style)));
}

} // namespace Zem::CollaborationSession
