#pragma once

#include "Util_DeepComparison.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <utility>

namespace Zem::DOM
{

/// An immutable style that many elements share. It is held through `boost::intrusive_ptr<const SharedStyle<T>>`, whose
/// count is safe across threads. A document's styles are made by its `SharedObjectFactory`, so that equal ones are one
/// object; those that came with an operation are objects of their own. Two shared styles are equal when their styles
/// are.
///
/// A null pointer and a pointer to a default style say the same, and so they are equal, and have one hash, wherever
/// contents are compared. Either may stand in a document: an element that is set back to its defaults equals one that
/// was never styled, whatever it held before.
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

    /// What a null pointer stands for. It isn't counted: no `intrusive_ptr` may point at it.
    static const SharedStyle& getObjectForNull()
    {
        static const SharedStyle defaultStyle{T()};
        return defaultStyle;
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

/// Whether the style behind a pointer is the default one.
template<class T>
bool isDefaultStyle(const SharedStyleConstIPtr<T>& sharedStyle)
{
    return areDeeplyEqual(sharedStyle, SharedStyleConstIPtr<T>());
}

} // namespace Zem::DOM
