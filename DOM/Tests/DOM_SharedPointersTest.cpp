#include "DOM_SharedPointers.h"
#include "DOM_Blocks.h"
#include "DOM_Document.h"

#include "CU_CollectionWithTombstones.h"
#include "Util_Fields.h"

#include <boost/optional.hpp>
#include <boost/variant.hpp>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

/// Whether all shared pointers that the fields of a class lead to are in the list.
template<class T>
struct Pointers
{
    static constexpr bool areListed()
    {
        if constexpr (HasFields<T>)
        {
            return allFields<T>([](const auto& row) { return areListedIn(row._member); });
        }
        return true;
    }

    template<class Owner, class Member>
    static constexpr bool areListedIn(Member Owner::*)
    {
        return Pointers<Member>::areListed();
    }
};

template<class... Types>
struct PointersOfAll
{
    static constexpr bool areListed()
    {
        return (Pointers<Types>::areListed() && ...);
    }
};

template<class T>
struct Pointers<std::shared_ptr<const T>>
{
    static constexpr bool areListed()
    {
        return SharedPointer<std::shared_ptr<const T>> && Pointers<T>::areListed();
    }
};

template<class Style>
struct Pointers<SharedStyleConstIPtr<Style>>
{
    static constexpr bool areListed()
    {
        return SharedPointer<SharedStyleConstIPtr<Style>> && Pointers<Style>::areListed();
    }
};

template<class T>
struct Pointers<std::unique_ptr<T>> : PointersOfAll<T>
{
};

template<class T>
struct Pointers<std::vector<T>> : PointersOfAll<T>
{
};

template<class T>
struct Pointers<boost::optional<T>> : PointersOfAll<T>
{
};

template<class T>
struct Pointers<UUIDContainer<T>> : PointersOfAll<T>
{
};

template<class T>
struct Pointers<CollaborationUtils::CollectionWithTombstones<T>> : PointersOfAll<T>
{
};

template<class First, class Second>
struct Pointers<std::pair<First, Second>> : PointersOfAll<First, Second>
{
};

template<class Key, class Value>
struct Pointers<std::map<Key, Value>> : PointersOfAll<Key, Value>
{
};

template<class... Types>
struct Pointers<boost::variant<Types...>> : PointersOfAll<Types...>
{
};

struct Unlisted
{
    std::vector<std::pair<int, boost::optional<std::shared_ptr<const int>>>> _inside;

    static constexpr auto fields()
    {
        return std::make_tuple(field("_inside", &Unlisted::_inside));
    }
};

} // namespace

TEST(SharedPointers, AreAllThatTheFieldsOfADocumentLeadTo)
{
    // A document's lists of fields end at texts, tables and cells, which have none. What these hold stands beside it.
    EXPECT_TRUE((PointersOfAll<Document, FieldBlock, SectionProps, PivotTable, Table::ConditionalFormats, Table::Frames,
                               TableFilterInfo, TableSettings>::areListed()));
    EXPECT_TRUE((PointersOfAll<CellStyle, ColumnStyle, ParagraphStyle, RowStyle, RunStyle, TableStyle>::areListed()));
    EXPECT_FALSE(Pointers<Unlisted>::areListed());
}

} // namespace Zem::DOM::Tests
