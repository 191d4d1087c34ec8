#include "DOM_NativeNodeAddress.h"

namespace Zem::DOM::NodeAddressUtils
{

boost::optional<unsigned long> findLastItem(const NativeNodeAddress& address, NativeDOMNodeType type)
{
    for (unsigned long count = address.getSize(); count > 0; --count)
    {
        const auto* fixed = boost::get<NativeNodeAddress::FixedChunk>(&address.getItem(count - 1));
        if (fixed && fixed->getNodeType() == type)
        {
            return count - 1;
        }
    }
    return boost::none;
}

boost::optional<NativeNodeAddress> getCutAfterLastCollection(const NativeNodeAddress& address, NativeDOMNodeType type)
{
    const boost::optional<unsigned long> index = findLastItem(address, type);
    if (!index)
    {
        return boost::none;
    }
    return address.getTrimmedAtEnd(address.getSize() - *index - 1);
}

} // namespace Zem::DOM::NodeAddressUtils
