// error: constraints not satisfied|no matching (member )?function|invalid reference to function 'removeElements'
#include "TextWrappers/DClb_RunWrappers.h"

namespace Zem::DOMCollaboration
{

void change(GenericTextWrapper<false> text)
{
#ifdef MUST_NOT_COMPILE
    text.asConst().removeElements(IndexRange<unsigned long>(0, 1));
#else
    text.removeElements(IndexRange<unsigned long>(0, text.asConst().getSize()));
#endif
}

} // namespace Zem::DOMCollaboration
