#pragma once

#include "CE_PositionTransformer.h"

#include "Util_Export.h"

namespace Zem::DOMCollaboration
{

/// Brings a position in a document, such as a cursor, past an operation. Read-only once built, so that several threads
/// may use it.
class ZEM_EXPORT DocumentPositionTransformer final : public CollaborationEngine::PositionTransformer
{
public:
    /// Registers what the node factories make for each type of node.
    DocumentPositionTransformer();
};

} // namespace Zem::DOMCollaboration
