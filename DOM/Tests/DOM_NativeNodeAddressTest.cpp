#include "DOM_NativeNodeAddress.h"

#include "Util_UUID.h"

#include <gtest/gtest.h>

namespace Zem::DOM::Tests
{

namespace
{

using Type = NativeDOMNodeType;
using Fixed = NativeNodeAddress::FixedChunk;
using NodeAddressing::AddressInList;
using NodeAddressing::AddressInTable;

/// A byte in the cell of a table that stands in another table's cell.
NativeNodeAddress makeNestedAddress()
{
    const AddressInTable cell(RowIndex(1), ColumnIndex(2));
    return {Fixed(Type::BlockCollection), AddressInList(0), Fixed(Type::CellCollection), cell,
            Fixed(Type::BlockCollection), AddressInList(3), Fixed(Type::CellCollection), cell,
            Fixed(Type::BlockCollection), AddressInList(4)};
}

} // namespace

TEST(NodeAddressUtils, MakesAddressesOfFixedSteps)
{
    using namespace NodeAddressUtils;
    const NativeNodeAddress expected{Fixed(Type::BlockCollection), Fixed(Type::CellCollection)};
    EXPECT_EQ(expected, (makeAddress<Type::BlockCollection, Type::CellCollection>()));
    EXPECT_EQ(expected, makeAddress(Type::BlockCollection, Type::CellCollection));
    EXPECT_EQ(NativeNodeAddress(), makeAddress<>());
}

TEST(NodeAddressUtils, FindsTheLastStepOfAType)
{
    const NativeNodeAddress address = makeNestedAddress();
    EXPECT_EQ(8u, NodeAddressUtils::findLastItem(address, Type::BlockCollection).value());
    EXPECT_EQ(6u, NodeAddressUtils::findLastItem(address, Type::CellCollection).value());
    EXPECT_FALSE(NodeAddressUtils::findLastItem(address, Type::RunCollection));
    EXPECT_FALSE(NodeAddressUtils::findLastItem(NativeNodeAddress(), Type::BlockCollection));
}

TEST(NodeAddressUtils, TakesNoIndexForAType)
{
    const NativeNodeAddress address{AddressInList(static_cast<unsigned long>(Type::BlockCollection))};
    EXPECT_FALSE(NodeAddressUtils::findLastItem(address, Type::BlockCollection));
}

TEST(NodeAddressUtils, CutsBehindTheLastCollectionOfAType)
{
    const NativeNodeAddress address = makeNestedAddress();
    EXPECT_TRUE(address.getTrimmedAtEnd(3) ==
                NodeAddressUtils::getCutAfterLastCollection(address, Type::CellCollection));
    EXPECT_TRUE(address.getTrimmedAtEnd(1) ==
                NodeAddressUtils::getCutAfterLastCollection(address, Type::BlockCollection));
    EXPECT_FALSE(NodeAddressUtils::getCutAfterLastCollection(address, Type::RunCollection));
    const auto whole = NodeAddressUtils::makeAddress<Type::BlockCollection>();
    EXPECT_TRUE(whole == NodeAddressUtils::getCutAfterLastCollection(whole, Type::BlockCollection));
}

} // namespace Zem::DOM::Tests
