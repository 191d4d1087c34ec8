#include "NA_AddressChunks.h"

#include "Util_UUID.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <string>

using namespace Zem;
using namespace Zem::NodeAddressing;

namespace
{

template<class T>
AddressInMap makeKey(const T& value)
{
    return AddressInMap(makeSharedConst<SimpleValueMapKey<T>>(value));
}

} // namespace

TEST(AddressChunks, BeginAtTheFirstPlace)
{
    EXPECT_EQ(0u, AddressInList().getIndex());
    EXPECT_EQ(RowIndex(0), AddressInTable().getRow());
    EXPECT_EQ(ColumnIndex(0), AddressInTable().getColumn());
    EXPECT_EQ(0u, FixedNodeAddress<unsigned long>().getNodeType());
}

TEST(AddressChunks, HoldWhatIsSet)
{
    AddressInList inList(3);
    EXPECT_EQ(3u, inList.getIndex());
    inList.setIndex(4);
    EXPECT_EQ(AddressInList(4), inList);

    AddressInTable inTable(RowIndex(1), ColumnIndex(2));
    EXPECT_EQ(RowIndex(1), inTable.getRow());
    EXPECT_EQ(ColumnIndex(2), inTable.getColumn());
    inTable.setRow(RowIndex(5));
    inTable.setColumn(ColumnIndex(6));
    EXPECT_EQ(AddressInTable(RowIndex(5), ColumnIndex(6)), inTable);
    EXPECT_NE(AddressInTable(RowIndex(6), ColumnIndex(5)), inTable);

    EXPECT_EQ(34u, FixedNodeAddress<unsigned long>(34).getNodeType());
}

TEST(AddressInMap, HasNoKeyAtFirst)
{
    EXPECT_FALSE(AddressInMap().getKey());
    EXPECT_EQ(AddressInMap(), AddressInMap());
    EXPECT_NE(AddressInMap(), makeKey(std::string()));
    EXPECT_NE(makeKey(std::string()), AddressInMap());
}

TEST(AddressInMap, ComparesItsKeysByContent)
{
    const UUID uuid = UUID::generate();
    EXPECT_EQ(makeKey(uuid), makeKey(uuid));
    EXPECT_NE(makeKey(uuid), makeKey(UUID()));
    EXPECT_EQ(makeKey(std::string("a")), makeKey(std::string("a")));
    EXPECT_NE(makeKey(std::string("a")), makeKey(std::string("b")));
    EXPECT_NE(makeKey(UUID()), makeKey(UUID().toString()));
}

TEST(AddressInMap, SharesItsKeyWithItsCopies)
{
    const AddressInMap address = makeKey(std::string("a"));
    const AddressInMap copy(address);
    EXPECT_EQ(address.getKey().get(), copy.getKey().get());
}
