#pragma once

#include "CU_Index.h"

#include "Util_Assert.h"

namespace Zem::CollaborationUtils
{

/// A half-open range [begin, end) of indices; it is never empty. `UnsignedIndex` is `unsigned long` or a tagged one,
/// and says what is counted.
template<class UnsignedIndex>
class IndexRange
{
public:
    /// The range of the first place alone, which is what readers start from.
    constexpr IndexRange()
        : IndexRange(UnsignedIndex{0}, UnsignedIndex{1})
    {
    }

    /// Fails: "_begin < _end".
    constexpr IndexRange(UnsignedIndex begin, UnsignedIndex end)
        : _begin(begin)
        , _end(end)
    {
        ZEM_ASSERT(_begin < _end);
    }

    /// The range of `count` places from `begin` on.
    /// Fails: "count > UnsignedIndex{0}"; "_begin < _end" when the end is too high to be counted.
    static constexpr IndexRange fromCount(UnsignedIndex begin, UnsignedIndex count)
    {
        ZEM_ASSERT(count > UnsignedIndex{0});
        return IndexRange(begin, begin + count);
    }

    constexpr UnsignedIndex getBegin() const
    {
        return _begin;
    }

    constexpr UnsignedIndex getEnd() const
    {
        return _end;
    }

    constexpr UnsignedIndex getCount() const
    {
        return _end - _begin;
    }

    constexpr bool contains(UnsignedIndex index) const
    {
        return _begin <= index && index < _end;
    }

    friend constexpr bool operator==(const IndexRange&, const IndexRange&) = default;

    /// Both fail with "_begin < _end" on a range that doesn't increase. Defined in `CU_Json.h`.
    template<class Archive>
    void save(Archive& archive) const;
    template<class Archive>
    void load(Archive& archive);

private:
    UnsignedIndex _begin;
    UnsignedIndex _end;
};

} // namespace Zem::CollaborationUtils
