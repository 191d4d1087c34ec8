#pragma once

#include "Util_BaseRuntimeError.h"
#include "Util_Export.h"

namespace Zem::CollaborationSession
{

/// A process in which a failed assertion ends everything can't share documents: one bad operation would do that.
class ZEM_EXPORT NoThrowingHandlerError : public BaseRuntimeError
{
public:
    using BaseRuntimeError::BaseRuntimeError;
};

} // namespace Zem::CollaborationSession
