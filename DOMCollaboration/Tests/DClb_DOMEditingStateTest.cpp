#include "EditingState/DClb_DOMEditingState.h"
#include "EditingState/DClb_DOMEditingStateTransformer.h"

#include "DClb_DocumentPositionTransformer.h"
#include "DClb_NodeTypes.h"
#include "DClb_TextElement.h"

#include "CE_MultirangeOperationUtils.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

namespace
{

using namespace CollaborationEngine;

constexpr unsigned long textType = static_cast<unsigned long>(OperationDOMNodeType::TextWithTombstones);

OperationNodeAddress makeSlotAddress(unsigned long slot)
{
    return {OperationNodeAddress::FixedChunk(textType), NodeAddressing::AddressInList(slot)};
}

template<class State>
State makeState(unsigned long begin, unsigned long end)
{
    using Position = typename State::SelectionPosition;
    return State(SelectionMode::Text, Position(makeSlotAddress(begin)), Position(makeSlotAddress(end)));
}

/// Two bytes at a slot of the main text.
OperationUPtr makeInsertion(unsigned long slot, unsigned long id)
{
    using Insert = ListModificationOperation<InsertTag>;
    auto items = std::make_unique<TextWithTombstonesItems>(TextWithTombstonesElementVector{short('a'), short('b')});
    auto operation = MultirangeOperationUtils::makeMultirangeOperationFromSingle(
        Insert({OperationNodeAddress::FixedChunk(textType)}, textType,
               SharedConstPtr<ItemsCollection>(std::move(items)), IndexRange<unsigned long>::fromCount(slot, 2)));
    operation->setIDIfNeeded(id);
    return operation;
}

DOMEditingStateTransformer makeTransformer()
{
    return DOMEditingStateTransformer(std::make_shared<DocumentPositionTransformer>());
}

TEST(DOMEditingState, StatesThatDifferOnlyInTheStickingOfOneEndAreNotEqual)
{
    const auto state = makeState<DOMEditingStateWithTS>(1, 2);
    auto sticking = state;
    EXPECT_TRUE(state == sticking);
    sticking.getSelectionEnd().setStickToPrevious(true);
    EXPECT_FALSE(state == sticking);
}

TEST(DOMEditingState, StatesThatDifferInModeOrAddressAreNotEqual)
{
    const auto state = makeState<DOMEditingStateWithTS>(1, 2);
    auto other = state;
    other.setSelectionMode(SelectionMode::Cells);
    EXPECT_EQ(other.getSelectionMode(), SelectionMode::Cells);
    EXPECT_FALSE(state == other);
    EXPECT_FALSE(state == makeState<DOMEditingStateWithTS>(1, 3));
    EXPECT_FALSE(state == makeState<DOMEditingStateWithTS>(0, 2));
}

TEST(DOMEditingState, StateOfTheOtherTagIsNotEqual)
{
    const auto withTombstones = makeState<DOMEditingStateWithTS>(1, 2);
    const auto withoutTombstones = makeState<DOMEditingStateWithoutTS>(1, 2);
    const ClientEditingState& first = withTombstones;
    const ClientEditingState& second = withoutTombstones;
    EXPECT_FALSE(first == second);
    EXPECT_FALSE(second == first);
    EXPECT_TRUE(second == second);
}

TEST(DOMEditingState, ClearingTheCacheKeepsTheAddresses)
{
    auto state = makeState<DOMEditingStateWithTS>(6, 2);
    const auto insertion = makeInsertion(5, 7);
    auto transformer = makeTransformer();
    transformer.exclude(*insertion, state);
    ASSERT_EQ(state.getSelectionBegin().getRevertedInsertOperations().size(), 1u);
    const auto before = state;
    state.clearCache();
    EXPECT_TRUE(state.getSelectionBegin().getRevertedInsertOperations().empty());
    EXPECT_TRUE(state == before);
}

TEST(DOMEditingState, ClonesAreEqualAndTheirOwn)
{
    auto state = makeState<DOMEditingStateWithTS>(1, 2);
    std::shared_ptr<ClientEditingState> shared;
    std::unique_ptr<ClientEditingState> unique;
    state.cloneTo(shared);
    state.cloneTo(unique);
    EXPECT_TRUE(*shared == state);
    EXPECT_TRUE(*unique == state);
    state.setSelectionMode(SelectionMode::Objects);
    EXPECT_FALSE(*shared == state);
    EXPECT_FALSE(*unique == state);
}

TEST(DOMEditingStateTransformer, StateWithoutTombstonesIsNeverTransformed)
{
    auto state = makeState<DOMEditingStateWithoutTS>(1, 2);
    auto transformer = makeTransformer();
    const auto insertion = makeInsertion(0, 1);
    EXPECT_ASSERTION(transformer.include(*insertion, state), "castedState");
    EXPECT_ASSERTION(transformer.exclude(*insertion, state), "castedState");
}

TEST(DOMEditingStateTransformer, BothEndsAreMovedAlsoIfTheyAreEqual)
{
    auto state = makeState<DOMEditingStateWithTS>(5, 5);
    auto transformer = makeTransformer();
    transformer.include(*makeInsertion(1, 1), state);
    EXPECT_TRUE(state == makeState<DOMEditingStateWithTS>(7, 7));
    transformer.exclude(*makeInsertion(1, 1), state);
    EXPECT_TRUE(state == makeState<DOMEditingStateWithTS>(5, 5));
}

TEST(DOMEditingStateTransformer, EndsAreMovedEachByItself)
{
    auto state = makeState<DOMEditingStateWithTS>(5, 5);
    state.getSelectionEnd().setStickToPrevious(true);
    makeTransformer().include(*makeInsertion(5, 1), state);
    EXPECT_EQ(state.getSelectionBegin().getAddress(), makeSlotAddress(7));
    EXPECT_EQ(state.getSelectionEnd().getAddress(), makeSlotAddress(5));
}

/// Tells which positions it was given, in their order.
class RecordingPositionTransformer final : public NodePositionTransformer
{
public:
    void include(const HierarchicalOperation&, NodeAddressWithTransformationData& position) const override
    {
        _positions.push_back(&position);
    }

    void exclude(const HierarchicalOperation&, NodeAddressWithTransformationData& position) const override
    {
        _positions.push_back(&position);
    }

    mutable std::vector<const NodeAddressWithTransformationData*> _positions;
};

TEST(DOMEditingStateTransformer, BeginIsMovedBeforeTheEnd)
{
    const auto recording = std::make_shared<RecordingPositionTransformer>();
    const auto positions = std::make_shared<PositionTransformer>();
    positions->registerNodePositionTransformer(textType, recording);
    DOMEditingStateTransformer transformer(positions);
    auto state = makeState<DOMEditingStateWithTS>(5, 5);
    transformer.include(*makeInsertion(1, 1), state);
    transformer.exclude(*makeInsertion(1, 1), state);
    const std::vector<const NodeAddressWithTransformationData*> expected = {
        &state.getSelectionBegin(), &state.getSelectionEnd(), &state.getSelectionBegin(), &state.getSelectionEnd()};
    EXPECT_EQ(recording->_positions, expected);
}

TEST(DOMEditingStateTransformer, NeedsAPositionTransformer)
{
    EXPECT_ASSERTION(DOMEditingStateTransformer(nullptr), "_positionTransformer");
}

} // namespace

} // namespace Zem::DOMCollaboration
