#pragma once

#include "CE_SetPropertyDataMerger.h"

#include <memory>

namespace Zem::DOMCollaboration
{

/// A new merger for each property, none shared with another call: of its own for those whose values are bundles of
/// independent fields or shared styles, the engine's for all others.
std::shared_ptr<CollaborationEngine::SetPropertyDataMergerImpl> makeSetPropertyDataMerger();

} // namespace Zem::DOMCollaboration
