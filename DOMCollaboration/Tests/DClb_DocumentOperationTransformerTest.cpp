#include "DClb_DocumentOperationTransformer.h"
#include "DClb_DocumentPositionTransformer.h"
#include "DClb_NodeTypes.h"
#include "DClb_PropertyId.h"
#include "DClb_TextElement.h"

#include "TS_Assertions.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_NodeAddressWithTransformationData.h"
#include "CE_SetPropertyOperation.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

using namespace CollaborationEngine;

namespace
{

SetPropertyOperation makeOperationOn(OperationDOMNodeType nodeType, PropertyId id, OperationNodeAddress address = {})
{
    return {std::move(address), convertOperationNodeType(nodeType), convertPropertyId(id),
            std::make_shared<SimpleDataValue<bool>>(false), std::make_shared<SimpleDataValue<bool>>(true)};
}

using TextMarking = ListModificationOperation<MarkAsRemovedTag>;

ListMultirangeOperationImpl<TextMarking> markText(std::vector<CollaborationUtils::IndexRange<unsigned long>> ranges)
{
    std::vector<TextMarking> nested;
    for (const auto& range : ranges)
    {
        nested.emplace_back(OperationNodeAddress(), convertOperationNodeType(OperationDOMNodeType::TextWithTombstones),
                            range);
    }
    return ListMultirangeOperationImpl<TextMarking>(std::move(nested));
}

} // namespace

TEST(DocumentOperationTransformer, HasTransformersForEachNodeType)
{
    const DocumentOperationTransformer transformer;
    for (unsigned long nodeType = 0; nodeType <= 34; ++nodeType)
    {
        EXPECT_TRUE(transformer.findSameNodeTransformer(nodeType)) << nodeType;
        EXPECT_TRUE(transformer.findAdressModifierTransformer(nodeType)) << nodeType;
    }
    EXPECT_FALSE(transformer.findSameNodeTransformer(35));
    EXPECT_FALSE(transformer.findAdressModifierTransformer(35));
}

TEST(DocumentOperationTransformer, EachHasTransformersOfItsOwn)
{
    const DocumentOperationTransformer first;
    const DocumentOperationTransformer second;
    EXPECT_NE(first.findSameNodeTransformer(17), second.findSameNodeTransformer(17));
}

TEST(DocumentOperationTransformer, OperationsOnOneShapeAreGuarded)
{
    const DocumentOperationTransformer transformer;
    const auto operation = makeOperationOn(OperationDOMNodeType::Shape, PropertyId::ExtentId);
    EXPECT_ASSERTION(transformer.include(operation, operation, TieResolveCondition::FirstWins),
                     "Same node transformation should never happen for this node type.");
}

TEST(DocumentOperationTransformer, AShapeAboveAnotherNodeIsGuarded)
{
    const DocumentOperationTransformer transformer;
    const auto above = makeOperationOn(OperationDOMNodeType::Shape, PropertyId::ExtentId);
    const auto below = makeOperationOn(OperationDOMNodeType::Run, PropertyId::ExtentId,
                                       {OperationNodeAddress::FixedChunk(34), NodeAddressing::AddressInList(0)});
    EXPECT_ASSERTION(transformer.include(below, above, TieResolveCondition::FirstWins),
                     "Ancestor node transformation should never happen for this node type.");
}

TEST(DocumentOperationTransformer, LeavesWhatIsNotAMultirangeOperationAsItIs)
{
    const DocumentOperationTransformer transformer;
    const auto first = makeOperationOn(OperationDOMNodeType::DocumentProps, PropertyId::ChangesTrackingEnabledId);
    const auto second = makeOperationOn(OperationDOMNodeType::DocumentProps, PropertyId::CommentResolvedId);
    const auto result = transformer.include(first, second, TieResolveCondition::FirstWins);
    const auto* same = cast<SetPropertyOperation>(result.get());
    ASSERT_TRUE(same);
    EXPECT_EQ(first.getPropertyID(), same->getPropertyID());
    EXPECT_EQ(first.getNewValue(), same->getNewValue());
}

TEST(DocumentOperationTransformer, JoinsNeighbouringPiecesOfAMultirangeResult)
{
    const DocumentOperationTransformer transformer;
    using Range = CollaborationUtils::IndexRange<unsigned long>;
    const auto first = markText({Range(4, 6), Range(2, 4)});
    const auto second = makeOperationOn(OperationDOMNodeType::DocumentProps, PropertyId::ChangesTrackingEnabledId,
                                        {OperationNodeAddress::FixedChunk(24)});
    const auto result = transformer.include(first, second, TieResolveCondition::FirstWins);
    const auto& nested = cast<ListMultirangeOperationImpl<TextMarking>>(*result).getNestedOperations();
    ASSERT_EQ(1u, nested.size());
    EXPECT_EQ(Range(2, 6), nested[0].getRange());
}

TEST(DocumentPositionTransformer, HasATransformerForEachNodeType)
{
    const DocumentPositionTransformer transformer;
    for (unsigned long nodeType = 0; nodeType <= 34; ++nodeType)
    {
        EXPECT_TRUE(transformer.findNodePositionTransformer(nodeType)) << nodeType;
    }
    EXPECT_FALSE(transformer.findNodePositionTransformer(35));
}

TEST(DocumentPositionTransformer, APositionBelowAShapeIsGuarded)
{
    const DocumentPositionTransformer transformer;
    const auto operation = makeOperationOn(OperationDOMNodeType::Shape, PropertyId::ExtentId);
    NodeAddressWithTransformationData position{
        OperationNodeAddress{OperationNodeAddress::FixedChunk(34), NodeAddressing::AddressInList(0)}};
    EXPECT_ASSERTION(transformer.include(operation, position),
                     "Node position include transformation should never happen for this node type.");
    EXPECT_ASSERTION(transformer.exclude(operation, position),
                     "Node position exclude transformation should never happen for this node type.");
}

} // namespace Zem::DOMCollaboration
