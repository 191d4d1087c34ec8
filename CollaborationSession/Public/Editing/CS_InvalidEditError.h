#pragma once

#include "Util_BaseRuntimeError.h"
#include "Util_Export.h"

namespace Zem::CollaborationSession
{

/// An edit that can't be made as it was asked for: a position that isn't there, bytes that aren't UTF-8, a text that
/// doesn't take what was typed. The message names what and where. Nothing was changed.
class ZEM_EXPORT InvalidEditError : public BaseRuntimeError
{
public:
    using BaseRuntimeError::BaseRuntimeError;
};

} // namespace Zem::CollaborationSession
