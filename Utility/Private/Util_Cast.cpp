#include "Util_Cast.h"

#include <stdexcept>

namespace Zem
{

BaseRuntimeError::BaseRuntimeError(const std::string& message)
    : std::runtime_error(message)
{
}

BadNumCastError::BadNumCastError()
    : BaseRuntimeError("The number doesn't fit the type that it is converted to.")
{
}

void CastDetails::throwBadNumCastError()
{
    throw BadNumCastError();
}

std::optional<long> strToLong(const std::string& text, unsigned long* endPosition, int base)
{
    ZEM_ASSERT(base == 0 || (2 <= base && base <= 36));
    try
    {
        std::size_t end = 0;
        const long number = std::stol(text, &end, base);
        if (endPosition)
        {
            *endPosition = end;
        }
        else if (end != text.size())
        {
            return std::nullopt;
        }
        return number;
    }
    catch (const std::logic_error&)
    {
        return std::nullopt;
    }
}

} // namespace Zem
