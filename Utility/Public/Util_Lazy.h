#pragma once

#include <functional>
#include <optional>
#include <utility>

namespace Zem
{

/// A value that is worked out when it is first asked for, and only then.
template<class T>
class Lazy
{
public:
    explicit Lazy(std::function<T()> make)
        : _make(std::move(make))
    {
    }

    T& get()
    {
        if (!_value)
        {
            _value.emplace(_make());
        }
        return *_value;
    }

private:
    std::function<T()> _make;
    std::optional<T> _value;
};

} // namespace Zem
