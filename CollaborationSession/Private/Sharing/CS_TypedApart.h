#pragma once

/// Two who type at one place: the one whose letter the server has first stands in front. What either types behind his
/// own letter stays behind that, in front of what the other typed, so that nobody's words are mixed. For that it is
/// remembered what a text was typed behind where it stands apart from it.

#include "Sharing/CS_FitIntoText.h"

#include "Editing/CS_Action.h"

#include <memory>
#include <optional>
#include <vector>

namespace Zem::CollaborationSession
{

/// Where the nested insertions of `happened`, executed, stand apart from what they were typed behind, in the state
/// behind it. `typings` has one for each, in the state before.
std::vector<Stretch> findTypedApart(const TextInsertion& happened, const std::vector<Typing>& typings);

/// The slot, before `insertion`, of what one of its nested insertions was typed behind, if it stands apart from that.
std::optional<unsigned long> findAnchorApart(const TextInsertion& insertion, std::size_t index,
                                             const std::vector<Stretch>& typedApart);

/// `insertion` with what stands behind texts of others that were typed apart, with its own anchor in between, moved in
/// front of these. Null if nothing moves. All are in the state before it.
std::unique_ptr<TextInsertion> moveInFrontOfOthers(const TextInsertion& insertion, const std::vector<Typing>& typings,
                                                   const std::vector<Stretch>& othersTypedApart);

} // namespace Zem::CollaborationSession
