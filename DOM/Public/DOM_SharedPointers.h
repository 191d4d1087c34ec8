#pragma once

/// The pointers through which elements of a document share immutable objects, and how an archive finds out which of
/// them are equal.

#include "DOM_CellStyle.h"
#include "DOM_Hyperlink.h"
#include "DOM_PageProps.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RowColumnStyle.h"
#include "DOM_RunStyle.h"
#include "DOM_SharedStyle.h"
#include "DOM_TableStyle.h"
#include "DOM_TrackedObject.h"

#include "Util_DeepComparison.h"
#include "Util_TypeList.h"

#include <boost/functional/hash.hpp>

#include <cstddef>
#include <memory>
#include <tuple>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>

namespace Zem::DOM
{

/// The closed list of such pointers: to styles, and to the bundles of properties inside and beside them.
using SharedPointers =
    TypeList<SharedStyleConstIPtr<CellStyle>, SharedStyleConstIPtr<ColumnStyle>, SharedStyleConstIPtr<ParagraphStyle>,
             SharedStyleConstIPtr<RowStyle>, SharedStyleConstIPtr<RunStyle>, SharedStyleConstIPtr<TableStyle>,
             CellPropsConstPtr, std::shared_ptr<const ColumnProps>, HyperlinkConstPtr, PagePropsConstPtr,
             ParaPropsConstPtr, std::shared_ptr<const RowProps>, RunPropsConstPtr, TablePropsConstPtr,
             TrackedActionConstPtr, TrackedParaPropsConstPtr, TrackedRunPropsConstPtr, TrackedTextStyleConstPtr>;

namespace JsonDetails
{

template<class T, class List>
constexpr bool isInList = false;

template<class T, class... Types>
constexpr bool isInList<T, TypeList<Types...>> = (std::is_same_v<T, Types> || ...);

/// The pointers of one class that an archive has met, and those among them that were the first with their content. What
/// equals a null pointer has that as its first.
///
/// Cost: the content is hashed and compared once for each pointer; from then on the pointer is found by its address.
template<class Pointer>
class MetPointers
{
public:
    /// The first of all pointers that are deeply equal to `pointer`. The reference stays good.
    const Pointer& findFirst(const Pointer& pointer)
    {
        const auto [entry, isNew] = _firstOfEach.try_emplace(pointer);
        if (isNew)
        {
            entry->second = *_firsts.insert(pointer).first;
        }
        return entry->second;
    }

private:
    struct DeepHash
    {
        std::size_t operator()(const Pointer& pointer) const
        {
            return deepHash(pointer);
        }
    };

    struct DeepEqual
    {
        bool operator()(const Pointer& left, const Pointer& right) const
        {
            return areDeeplyEqual(left, right);
        }
    };

    std::unordered_set<Pointer, DeepHash, DeepEqual> _firsts{Pointer()};
    std::unordered_map<Pointer, Pointer, boost::hash<Pointer>> _firstOfEach;
};

template<class List>
struct MetPointersOfList;

template<class... Pointers>
struct MetPointersOfList<TypeList<Pointers...>>
{
    using Type = std::tuple<MetPointers<Pointers>...>;
};

/// The pointers of all classes that an archive has met.
class MetSharedPointers
{
public:
    template<class Pointer>
    const Pointer& findFirst(const Pointer& pointer)
    {
        return std::get<MetPointers<Pointer>>(_pointers).findFirst(pointer);
    }

private:
    MetPointersOfList<SharedPointers>::Type _pointers;
};

} // namespace JsonDetails

/// A class of the list.
template<class T>
concept SharedPointer = JsonDetails::isInList<T, SharedPointers>;

} // namespace Zem::DOM
