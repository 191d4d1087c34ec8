#pragma once

#include <memory>
#include <type_traits>
#include <utility>

namespace Zem
{

template<class Signature>
class CallableRef;

/// A non-owning reference to a callable object or function; the object must outlive it. Never allocates.
template<class Result, class... Arguments>
class CallableRef<Result(Arguments...)>
{
public:
    template<class Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, CallableRef> &&
             !std::is_function_v<std::remove_reference_t<Callable>> &&
             std::is_invocable_r_v<Result, Callable&, Arguments...>) CallableRef(Callable&& callable)
        : _call(
              [](Target target, Arguments... arguments) -> Result {
                  return (*static_cast<std::remove_reference_t<Callable>*>(target._object))(
                      std::forward<Arguments>(arguments)...);
              })
    {
        _target._object = const_cast<void*>(static_cast<const void*>(std::addressof(callable)));
    }

    CallableRef(Result (&function)(Arguments...))
        : _call([](Target target, Arguments... arguments) -> Result
                { return target._function(std::forward<Arguments>(arguments)...); })
    {
        _target._function = &function;
    }

    Result operator()(Arguments... arguments) const
    {
        return _call(_target, std::forward<Arguments>(arguments)...);
    }

private:
    union Target
    {
        void* _object;
        Result (*_function)(Arguments...);
    };

    Target _target{};
    Result (*_call)(Target, Arguments...);
};

} // namespace Zem
