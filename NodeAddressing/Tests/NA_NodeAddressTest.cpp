#include "NA_NodeAddress.h"

#include "Util_UUID.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

using namespace Zem;
using namespace Zem::NodeAddressing;

namespace
{

struct WorldTag
{
};

using Address = NodeAddress<WorldTag, unsigned long>;
using Fixed = Address::FixedChunk;

constexpr unsigned long highest = std::numeric_limits<unsigned long>::max();

AddressInList at(unsigned long index)
{
    return AddressInList(index);
}

AddressInTable cell(unsigned long row, unsigned long column)
{
    return AddressInTable(RowIndex(row), ColumnIndex(column));
}

AddressInMap key(const std::string& name)
{
    return AddressInMap(makeSharedConst<SimpleValueMapKey<std::string>>(name));
}

} // namespace

TEST(NodeAddress, IsTheRootWithoutChunks)
{
    const Address root;
    EXPECT_TRUE(root.isEmpty());
    EXPECT_EQ(0u, root.getSize());
    EXPECT_EQ(root, Address());
}

TEST(NodeAddress, HoldsItsChunksFromTheRootDown)
{
    const Address address{Fixed(34), at(7), cell(1, 2), key("a")};
    EXPECT_FALSE(address.isEmpty());
    EXPECT_EQ(4u, address.getSize());
    EXPECT_EQ(4u, address.getItems().size());
    EXPECT_TRUE(Address::Chunk(Fixed(34)) == address.getItem(0));
    EXPECT_TRUE(Address::Chunk(at(7)) == address.getItem(1));
    EXPECT_TRUE(Address::Chunk(cell(1, 2)) == address.getItem(2));
    EXPECT_TRUE(Address::Chunk(key("a")) == address.getItem(3));
}

TEST(NodeAddress, HasTheKindsOfChunksInTheOrderOfTheirNumbers)
{
    EXPECT_EQ(0, Address::Chunk(at(0)).which());
    EXPECT_EQ(1, Address::Chunk(cell(0, 0)).which());
    EXPECT_EQ(2, Address::Chunk(AddressInMap()).which());
    EXPECT_EQ(3, Address::Chunk(Fixed(0)).which());
}

TEST(NodeAddress, DiffersByAnyChunk)
{
    const Address address{Fixed(34), at(7), cell(1, 2), key("a")};
    EXPECT_EQ(address, (Address{Fixed(34), at(7), cell(1, 2), key("a")}));
    EXPECT_NE(address, (Address{Fixed(35), at(7), cell(1, 2), key("a")}));
    EXPECT_NE(address, (Address{Fixed(34), at(8), cell(1, 2), key("a")}));
    EXPECT_NE(address, (Address{Fixed(34), at(7), cell(0, 2), key("a")}));
    EXPECT_NE(address, (Address{Fixed(34), at(7), cell(1, 0), key("a")}));
    EXPECT_NE(address, (Address{Fixed(34), at(7), cell(1, 2), key("b")}));
    EXPECT_NE(address, (Address{Fixed(34), at(7), cell(1, 2)}));
    EXPECT_NE((Address{Fixed(7)}), (Address{at(7)}));
}

TEST(NodeAddress, TakesChunksAtItsEnd)
{
    Address address;
    address.appendItems(Fixed(34)).appendItems(at(7), cell(1, 2), key("a"));
    EXPECT_EQ((Address{Fixed(34), at(7), cell(1, 2), key("a")}), address);
    EXPECT_EQ(address, Address(address).appendItems());
}

TEST(NodeAddress, TakesItsOwnChunks)
{
    Address address{key("a"), key("b")};
    for (int count = 0; count < 5; ++count)
    {
        address.appendItems(address.getItem(0), address.getItem(1));
    }
    EXPECT_EQ(12u, address.getSize());
    for (unsigned long index = 0; index < address.getSize(); ++index)
    {
        EXPECT_TRUE(Address::Chunk(key(index % 2 == 0 ? "a" : "b")) == address.getItem(index));
    }
}

TEST(NodeAddress, TakesAStretchOfAnotherAddress)
{
    const Address other{at(0), at(1), at(2), at(3)};
    EXPECT_EQ((Address{Fixed(5), at(1), at(2)}), Address{Fixed(5)}.append(other, 1, 2));
    EXPECT_EQ((Address{Fixed(5), at(0), at(1), at(2), at(3)}), Address{Fixed(5)}.append(other, 0, 4));
    EXPECT_EQ((Address{Fixed(5)}), Address{Fixed(5)}.append(other, 2, 0));
    EXPECT_EQ((Address{Fixed(5)}), Address{Fixed(5)}.append(other, 4, 0));
}

TEST(NodeAddress, TakesAStretchOfItself)
{
    Address address{key("a"), key("b")};
    address.append(address, 0, 2).append(address, 1, 3);
    EXPECT_EQ((Address{key("a"), key("b"), key("a"), key("b"), key("b"), key("a"), key("b")}), address);
}

TEST(NodeAddress, RefusesAStretchThatTheOtherAddressDoesNotHave)
{
    const Address other{at(0), at(1)};
    Address address{Fixed(5)};
    EXPECT_ASSERTION(address.append(other, 3, 0), "position <= _items.size()");
    EXPECT_ASSERTION(address.append(other, 0, 3), "position <= _items.size()");
    EXPECT_ASSERTION(address.append(other, 2, 1), "position <= _items.size()");
    EXPECT_ASSERTION(address.append(other, 1, highest), "position <= _items.size()");
    EXPECT_ASSERTION(address.append(other, highest, 1), "position <= _items.size()");
    EXPECT_EQ(Address{Fixed(5)}, address);
}

TEST(NodeAddress, IsTrimmedAtItsEnd)
{
    const Address address{Fixed(34), at(7), cell(1, 2)};
    EXPECT_EQ(address, address.getTrimmedAtEnd(0));
    EXPECT_EQ((Address{Fixed(34), at(7)}), address.getTrimmedAtEnd(1));
    EXPECT_EQ(Address(), address.getTrimmedAtEnd(3));
    Address trimmed(address);
    trimmed.trimAtEnd(2);
    EXPECT_EQ(Address{Fixed(34)}, trimmed);
    EXPECT_ASSERTION(trimmed.trimAtEnd(2), "trimSize <= _items.size()");
    EXPECT_ASSERTION(address.getTrimmedAtEnd(4), "trimSize <= _items.size()");
    EXPECT_ASSERTION(address.getTrimmedAtEnd(highest), "trimSize <= _items.size()");
}

TEST(NodeAddress, GivesAChunkFromTheEndAsItsKind)
{
    const Address address{Fixed(34), at(7), cell(1, 2)};
    ASSERT_NE(nullptr, address.getItemFromEndAs<AddressInTable>(0));
    EXPECT_EQ(cell(1, 2), *address.getItemFromEndAs<AddressInTable>(0));
    ASSERT_NE(nullptr, address.getItemFromEndAs<AddressInList>(1));
    EXPECT_EQ(at(7), *address.getItemFromEndAs<AddressInList>(1));
    ASSERT_NE(nullptr, address.getItemFromEndAs<Fixed>(2));
    EXPECT_EQ(Fixed(34), *address.getItemFromEndAs<Fixed>(2));
}

TEST(NodeAddress, GivesNullForAChunkOfAnotherKind)
{
    Address address{Fixed(34), at(7)};
    EXPECT_EQ(nullptr, address.getItemFromEndAs<Fixed>(0));
    EXPECT_EQ(nullptr, address.getItemFromEndAs<AddressInTable>(0));
    EXPECT_EQ(nullptr, address.getItemFromEndAs<AddressInMap>(1));
}

TEST(NodeAddress, ChangesAChunkFromTheEnd)
{
    Address address{at(7), cell(1, 2)};
    address.getItemFromEndAs<AddressInList>(1)->setIndex(9);
    address.getItemFromEndAs<AddressInTable>(0)->setRow(RowIndex(3));
    address.getItemFromEndAs<AddressInTable>(0)->setColumn(ColumnIndex(4));
    EXPECT_EQ((Address{at(9), cell(3, 4)}), address);
    address.getItem(0) = Fixed(1);
    EXPECT_EQ((Address{Fixed(1), cell(3, 4)}), address);
}

TEST(NodeAddress, HasNoChunkBehindItsLast)
{
    Address address{at(7)};
    EXPECT_ASSERTION(address.getItem(1), "index < _items.size()");
    EXPECT_ASSERTION(std::as_const(address).getItem(1), "index < _items.size()");
    EXPECT_ASSERTION(address.getItemFromEndAs<AddressInList>(1), "index < _items.size()");
    EXPECT_ASSERTION(std::as_const(address).getItemFromEndAs<AddressInList>(highest), "index < _items.size()");
    EXPECT_ASSERTION(Address().getItemFromEndAs<AddressInList>(0), "index < _items.size()");
}

TEST(NodeAddress, IsAPrefixOfWhatLiesBelowIt)
{
    const Address address{Fixed(34), at(7)};
    EXPECT_TRUE(Address().isPrefixOf(address));
    EXPECT_TRUE(address.isPrefixOf(address));
    EXPECT_TRUE(address.isPrefixOf(Address{Fixed(34), at(7), Fixed(1)}));
    EXPECT_FALSE(address.isPrefixOf(Address{Fixed(34)}));
    EXPECT_FALSE(address.isPrefixOf(Address{Fixed(34), at(8), Fixed(1)}));
}

TEST(NodeAddress, CopiesAreIndependent)
{
    const Address address{Fixed(34), at(7), cell(1, 2), key("a")};
    Address copy(address);
    copy.getItemFromEndAs<AddressInList>(2)->setIndex(8);
    EXPECT_EQ((Address{Fixed(34), at(7), cell(1, 2), key("a")}), address);
    EXPECT_EQ((Address{Fixed(34), at(8), cell(1, 2), key("a")}), copy);
}
