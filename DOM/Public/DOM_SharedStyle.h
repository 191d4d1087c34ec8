#pragma once

#include "Util_DeepComparison.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <utility>

namespace Zem::DOM
{

/// An immutable style that many elements share. It is held through `boost::intrusive_ptr<const SharedStyle<T>>`, whose
/// count is safe across threads; a null pointer stands for the default style. A document's styles are made by its
/// `SharedObjectFactory`, so that equal ones are one object. Two shared styles are equal when their styles are.
template<class T>
class SharedStyle : public boost::intrusive_ref_counter<SharedStyle<T>, boost::thread_safe_counter>
{
public:
    explicit SharedStyle(T style)
        : _style(std::move(style))
    {
    }

    const T& get() const
    {
        return _style;
    }

    friend bool operator==(const SharedStyle& left, const SharedStyle& right)
    {
        return areDeeplyEqual(left._style, right._style);
    }

    friend std::size_t hash_value(const SharedStyle& style)
    {
        return deepHash(style._style);
    }

private:
    T _style;
};

template<class T>
using SharedStyleConstIPtr = boost::intrusive_ptr<const SharedStyle<T>>;

} // namespace Zem::DOM
