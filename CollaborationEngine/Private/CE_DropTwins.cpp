#include "CE_DropTwins.h"

#include "CE_OperationEquality.h"
#include "CE_OperationKinds.h"
#include "CE_Shadows.h"

#include <algorithm>

namespace Zem::CollaborationEngine
{

namespace
{

/// A part that is shadowed by something dead above it; null for any other one.
const ShadowedOperation* findShadowedPart(const Operation& part)
{
    const auto* shadowed = getIf<ShadowedOperation>(part);
    return shadowed && !shadowed->getShadows()._deadPlaces.empty() ? shadowed : nullptr;
}

/// Whether two lists of dead places are alike but for one in each.
bool differInOnePlace(const std::vector<DeadPlace>& first, const std::vector<DeadPlace>& second)
{
    const auto isInSecond = [&](const DeadPlace& place)
    { return std::find(second.begin(), second.end(), place) != second.end(); };
    return first.size() == second.size() &&
           static_cast<std::size_t>(std::count_if(first.begin(), first.end(), isInSecond)) + 1 == first.size();
}

/// Whether both parts are one edit, of which each of two restorings brings back one of the elements that shadow it.
bool areTwins(const Operation& first, const Operation& second)
{
    const ShadowedOperation* firstShadowed = findShadowedPart(first);
    const ShadowedOperation* secondShadowed = findShadowedPart(second);
    return firstShadowed && secondShadowed && first.getID() == second.getID() &&
           differInOnePlace(firstShadowed->getShadows()._deadPlaces, secondShadowed->getShadows()._deadPlaces) &&
           haveEqualEffects(firstShadowed->getOriginal(), secondShadowed->getOriginal());
}

/// For each part, whether the other list has a twin of it, of its own.
std::vector<bool> findTwins(const OperationParts& parts, const OperationParts& others)
{
    std::vector<bool> isTaken(others.size());
    std::vector<bool> hasTwin;
    for (const OperationUPtr& part : parts)
    {
        std::size_t other = 0;
        while (other < others.size() && (isTaken[other] || !areTwins(*part, *others[other])))
        {
            ++other;
        }
        hasTwin.push_back(other < others.size());
        if (hasTwin.back())
        {
            isTaken[other] = true;
        }
    }
    return hasTwin;
}

bool hasEachShadowedATwin(const OperationParts& parts, const std::vector<bool>& hasTwin)
{
    for (std::size_t index = 0; index < parts.size(); ++index)
    {
        if (findShadowedPart(*parts[index]) && !hasTwin[index])
        {
            return false;
        }
    }
    return true;
}

void drop(OperationParts& parts, const std::vector<bool>& isDropped)
{
    std::size_t index = 0;
    std::erase_if(parts, [&](const OperationUPtr&) { return isDropped[index++]; });
}

} // namespace

void dropTwins(OperationParts& first, OperationParts& second)
{
    const std::vector<bool> hasSecondTwin = findTwins(second, first);
    if (std::find(hasSecondTwin.begin(), hasSecondTwin.end(), true) == hasSecondTwin.end())
    {
        return;
    }
    if (hasEachShadowedATwin(second, hasSecondTwin))
    {
        drop(second, hasSecondTwin);
    }
    else
    {
        drop(first, findTwins(first, second));
    }
}

} // namespace Zem::CollaborationEngine
