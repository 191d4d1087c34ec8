#include "DClb_NodeTypes.h"

#include "DClb_ElementPathUtils.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <set>

namespace Zem::DOMCollaboration
{

using DOM::NativeDOMNodeType;
using ElementPathUtils::getCorrespondingNodeType;

namespace
{

/// The numbers as they travel: operation type and native type, written out once more.
constexpr std::pair<unsigned long, unsigned long> numbers[] = {
    {0, 0},   {1, 1},   {2, 2},   {3, 3},   {4, 4},   {34, 5},  {5, 6},   {6, 7},   {7, 8},
    {8, 9},   {9, 10},  {10, 11}, {11, 12}, {12, 13}, {13, 14}, {14, 15}, {15, 16}, {17, 18},
    {18, 20}, {16, 21}, {19, 22}, {20, 23}, {21, 24}, {22, 25}, {23, 26}, {24, 27}, {25, 28},
    {26, 29}, {27, 30}, {28, 31}, {29, 32}, {30, 33}, {31, 34}, {32, 35}, {33, 36}};

} // namespace

TEST(NodeTypes, EveryOperationTypeHasItsNativeType)
{
    std::set<unsigned long> seen;
    for (const auto& [operationNumber, nativeNumber] : numbers)
    {
        const auto nativeType = getCorrespondingNodeType(static_cast<OperationDOMNodeType>(operationNumber));
        EXPECT_EQ(nativeNumber, static_cast<unsigned long>(nativeType)) << operationNumber;
        seen.insert(operationNumber);
    }
    EXPECT_EQ(operationNodeTypesCount, seen.size());
}

TEST(NodeTypes, EveryNativeTypeButTwoHasItsOperationType)
{
    std::set<unsigned long> seen;
    for (const auto& [operationNumber, nativeNumber] : numbers)
    {
        const auto operationType = getCorrespondingNodeType(static_cast<NativeDOMNodeType>(nativeNumber));
        EXPECT_EQ(operationNumber, convertOperationNodeType(operationType)) << nativeNumber;
        seen.insert(nativeNumber);
    }
    EXPECT_EQ(nativeNodeTypesCount - 2, seen.size());
}

TEST(NodeTypes, CollectionsInsideParagraphsAndRunsHaveNoOperationType)
{
    EXPECT_ASSERTION(getCorrespondingNodeType(NativeDOMNodeType::RunCollection), "No corresponding node type");
    EXPECT_ASSERTION(getCorrespondingNodeType(NativeDOMNodeType::CharCollection), "No corresponding node type");
}

TEST(NodeTypes, ValuesOutsideTheEnumerationsAreRefused)
{
    EXPECT_ASSERTION(getCorrespondingNodeType(static_cast<NativeDOMNodeType>(37)), "Invalid code branch");
    EXPECT_ASSERTION(getCorrespondingNodeType(static_cast<OperationDOMNodeType>(35)), "Invalid code branch");
    EXPECT_ASSERTION(getCorrespondingNodeType(static_cast<OperationDOMNodeType>(~0UL)), "Invalid code branch");
}

TEST(NodeTypes, ConversionForTheEngineKeepsTheNumber)
{
    EXPECT_EQ(34u, convertOperationNodeType(OperationDOMNodeType::TextWithTombstones));
    EXPECT_EQ(0u, convertOperationNodeType(OperationDOMNodeType::TextDocument));
}

} // namespace Zem::DOMCollaboration
