#pragma once

namespace Zem::CollaborationSession
{

/// Servers and clients take operations from strangers, and an assertion that fails may cost the operation, not the
/// process. Fails: `NoThrowingHandlerError` in a process whose failed assertions don't throw.
void requireThrowingHandler();

} // namespace Zem::CollaborationSession
