#include "Sharing/CS_RequireThrowingHandler.h"

#include "Sharing/CS_NoThrowingHandlerError.h"

#include "Util_Assert.h"

namespace Zem::CollaborationSession
{

namespace
{

/// A handler that returns is followed by the end of the process: it is only asked here, outside of any failure.
bool throws(AssertionHandler handler)
{
    if (!handler)
    {
        return false;
    }
    try
    {
        handler(__FILE__, __LINE__, "Whether failed assertions throw");
    }
    catch (...)
    {
        return true;
    }
    return false;
}

} // namespace

void requireThrowingHandler()
{
    if (!throws(getAssertionHandler()))
    {
        throw NoThrowingHandlerError("Sharing a document needs an assertion handler that throws: install "
                                     "throwAssertionFailure by setAssertionHandler first");
    }
}

} // namespace Zem::CollaborationSession
