#pragma once

#include "DOM_SharedStyle.h"

#include "Util_DeepComparison.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>
#include <utility>

namespace Zem::DOM
{

/// The styles of one type that a factory holds, found by their content.
template<class Style>
class StylePool
{
public:
    StylePool() = default;

    /// Takes over the styles that somebody beside `other` holds.
    StylePool(const StylePool& other)
    {
        for (const SharedStyleConstIPtr<Style>& style : other._styles)
        {
            if (style->use_count() > 1)
            {
                _styles.insert(style);
            }
        }
        _dropAt = getNextDrop();
    }

    StylePool& operator=(const StylePool&) = delete;

    SharedStyleConstIPtr<Style> create(Style style)
    {
        const auto known = _styles.find(style);
        if (known != _styles.end())
        {
            return *known;
        }
        if (_styles.size() >= _dropAt)
        {
            std::erase_if(_styles, [](const auto& held) { return held->use_count() == 1; });
            _dropAt = getNextDrop();
        }
        return *_styles.insert(SharedStyleConstIPtr<Style>(new SharedStyle<Style>(std::move(style)))).first;
    }

    std::size_t getCount() const
    {
        return _styles.size();
    }

private:
    static constexpr std::size_t smallestDrop = 64;

    struct Hash
    {
        using is_transparent = void;

        std::size_t operator()(const Style& style) const
        {
            return deepHash(style);
        }

        std::size_t operator()(const SharedStyleConstIPtr<Style>& style) const
        {
            return deepHash(style->get());
        }
    };

    struct Equal
    {
        using is_transparent = void;

        bool operator()(const SharedStyleConstIPtr<Style>& left, const SharedStyleConstIPtr<Style>& right) const
        {
            return areDeeplyEqual(left, right);
        }

        bool operator()(const Style& left, const SharedStyleConstIPtr<Style>& right) const
        {
            return areDeeplyEqual(left, right->get());
        }

        bool operator()(const SharedStyleConstIPtr<Style>& left, const Style& right) const
        {
            return areDeeplyEqual(left->get(), right);
        }
    };

    std::size_t getNextDrop() const
    {
        return std::max(smallestDrop, 2 * _styles.size());
    }

    std::unordered_set<SharedStyleConstIPtr<Style>, Hash, Equal> _styles;
    std::size_t _dropAt = smallestDrop;
};

} // namespace Zem::DOM
