// error: constraints not satisfied|no matching function for call to 'deepCopy'|constraint
#include "Util_DeepCopy.h"

struct Shape
{
    virtual ~Shape() = default;
};

struct Point
{
};

#ifdef MUST_NOT_COMPILE
using Copied = Shape;
#else
using Copied = Point;
#endif

std::unique_ptr<Copied> copy(const std::unique_ptr<Copied>& pointer)
{
    return Zem::deepCopy(pointer);
}
