// error: no match for .operator==.|invalid operands to binary expression
#include "Util_DeepComparison.h"

namespace Zem
{

struct Base
{
    static constexpr auto fields()
    {
        return std::make_tuple(field("_first", &Base::_first));
    }

    int _first = 0;
};

struct Derived : Base
{
#ifndef MUST_NOT_COMPILE
    static constexpr auto fields()
    {
        return std::tuple_cat(Base::fields(), std::make_tuple(field("_second", &Derived::_second)));
    }
#endif

    int _second = 0;
};

bool areEqual(const Derived& left, const Derived& right)
{
    return left == right;
}

} // namespace Zem
