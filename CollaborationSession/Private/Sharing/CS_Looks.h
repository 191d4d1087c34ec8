#pragma once

/// What was meant for a stretch of text, as it is moved, cut and taken back.

#include "Editing/CS_Action.h"

#include "DOMNodeAdapters/DClb_DocumentAdapterWithNodeAdapter.h"

#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// Whether nothing is left of an action. A look whose stretch is dead is still meant: it holds on what is in there,
/// once that is back or somebody else has typed there.
bool isNothing(const Action& action);

/// What stays of `looks` if nothing that `later` sets, too, is touched. All are in one state.
std::vector<LookSetting> withoutLater(std::vector<LookSetting> looks, const LookSetting& later);

/// What the things that `operation` gave another look had before, for the settings of `meaning`. The document is as
/// `operation` left it. Cost: the walk to each of them from the one before.
std::vector<LookSetting>
findFormerLooks(const std::shared_ptr<const DOMCollaboration::DocumentAdapterWithNodeAdapter>& document,
                const CollaborationEngine::Operation& operation, const Meaning& meaning);

} // namespace Zem::CollaborationSession
