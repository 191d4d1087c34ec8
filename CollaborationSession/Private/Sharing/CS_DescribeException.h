#pragma once

#include <exception>
#include <string>

namespace Zem::CollaborationSession
{

/// What the exception that is handled says, whatever it is: observers may throw anything.
/// Requires: it is called while one is handled.
inline std::string describeCurrentException()
{
    try
    {
        throw;
    }
    catch (const std::exception& error)
    {
        return error.what();
    }
    catch (...)
    {
        return "Something failed that doesn't say why.";
    }
}

} // namespace Zem::CollaborationSession
