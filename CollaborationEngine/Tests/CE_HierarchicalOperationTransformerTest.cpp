#include "CE_HierarchicalOperationTransformer.h"

#include "CE_InverseOperation.h"
#include "CE_ListTransformers.h"
#include "OperationNotation.h"
#include "SlotModel.h"
#include "TreeReplica.h"

#include "TS_Assertions.h"

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using MapInsert = MapInsertOrRemoveOperation<MapInsertTag>;
using MapRemove = MapInsertOrRemoveOperation<MapRemoveTag>;
using RowInsert = TableRowOrColumnListModificationOperation<RowOrColumnInsertOperationTag>;

constexpr auto late = TieResolveCondition::SecondWins;

/// What lies on an operation below one dead element.
Shadows makeShadows(unsigned long chunkIndex)
{
    DeadPlace deadPlace;
    deadPlace._chunkIndex = chunkIndex;
    return Shadows{{deadPlace}};
}

} // namespace

TEST(HierarchicalOperationTransformer, RegistersOneTransformerForEachNodeType)
{
    HierarchicalOperationTransformer transformer;
    const auto sameNode = std::make_shared<ListSameNodeTransformer>();
    const auto ancestor = std::make_shared<AncestorListModificationTransformer>();
    transformer.registerSameNodeTransformer(3, sameNode);
    transformer.registerAdressModifierTransformer(3, ancestor);
    EXPECT_EQ(transformer.findSameNodeTransformer(3), sameNode.get());
    EXPECT_EQ(transformer.findAdressModifierTransformer(3), ancestor.get());
    EXPECT_EQ(transformer.findSameNodeTransformer(4), nullptr);
    EXPECT_EQ(transformer.findAdressModifierTransformer(4), nullptr);
    EXPECT_ASSERTION(transformer.registerSameNodeTransformer(3, sameNode), "isNew");
    EXPECT_ASSERTION(transformer.registerAdressModifierTransformer(3, ancestor), "isNew");
    EXPECT_ASSERTION(transformer.registerSameNodeTransformer(5, nullptr), "plainPtr");
}

TEST(HierarchicalOperationTransformer, UnregisteredNodeTypesFailWhereTheyAreNeeded)
{
    const HierarchicalOperationTransformer transformer;
    const auto setting = setWhole(listElementAddress(0), 0, 1);
    EXPECT_ASSERTION(transformer.include(*setting, *setting, late), "transformerIt != _sameNodeTransformers.end()");
    EXPECT_ASSERTION(transformer.include(*setting, *markElement(0), late),
                     "transformerIt != _adressModifierTransformers.end()");
    EXPECT_EQ(describe(*transformer.include(*markElement(0), *setting, late)), "/1 mark(0,1)");
}

TEST(HierarchicalOperationTransformer, OperationsOfTheWrongFamilyForTheirNodeTypeAreABadCast)
{
    const auto transformer = makeTreeTransformer();
    const Insert onMap(mapAddress(), ElementMapType, makeElementItems({makeElement(1)}), Range(0, 1));
    const MapRemove onList(listAddress(), ElementListType, makeKey("a"), nullptr);
    const SetPropertyOperation onTable(tableAddress(), CellTableType, WholeProperty, makeSharedConst<IntValue>(0),
                                       makeSharedConst<IntValue>(1));
    const MapRemove onElement(listElementAddress(0), ElementType, makeKey("a"), nullptr);
    const MapRemove onText(textAddress(listElementAddress(0)), ElementTextType, makeKey("a"), nullptr);
    for (const Operation* operation :
         std::initializer_list<const Operation*>{&onMap, &onList, &onTable, &onElement, &onText})
    {
        EXPECT_THROW(transformer->include(*operation, *operation, late), std::bad_cast) << describe(*operation);
    }
    EXPECT_THROW(transformer->include(*setWhole(listElementAddress(1), 0, 1), onList, late), std::bad_cast);
}

TEST(HierarchicalOperationTransformer, OperationOnNoNodeIsABadCast)
{
    class NodelessOperation final : public OperationImpl<NodelessOperation, AtomicOperation, AtomicOperation>
    {
    public:
        using OperationImpl::cloneTo;

        void cloneTo(std::shared_ptr<AtomicOperation>& target) const override
        {
            target = std::make_shared<NodelessOperation>(*this);
        }

        void cloneTo(std::unique_ptr<AtomicOperation>& target) const override
        {
            target = std::make_unique<NodelessOperation>(*this);
        }

        OperationUPtr getPseudoIdentity(const BaseOperationTransformer&) const override
        {
            return std::make_unique<EmptyOperation>();
        }
    };
    const auto transformer = makeTreeTransformer();
    EXPECT_EQ(NodelessOperation().getIfHierarchical(), nullptr);
    EXPECT_THROW(transformer->include(NodelessOperation(), *markElement(0), late), std::bad_cast);
    EXPECT_THROW(transformer->include(*markElement(0), NodelessOperation(), late), std::bad_cast);
}

TEST(HierarchicalOperationTransformer, ResultsKeepTheId)
{
    const auto transformer = makeTreeTransformer();
    for (const OperationUPtr& result :
         {transformer->include(*setWhole(listElementAddress(1), 0, 1), *markElement(1), late),
          transformer->include(*setWhole(listElementAddress(1), 0, 1), *setWhole(listElementAddress(1), 0, 2), late),
          transformer->include(*setWhole(listElementAddress(1), 0, 1), EmptyOperation(), late)})
    {
        EXPECT_EQ(result->getID().value_or(0), 1u);
    }
}

TEST(Shadows, EditInARowThatWasRemovedIsThereWhenTheRowIsRestored)
{
    TreeReplica replica;
    replica.run(row(RowMark(0, nullptr)));
    replica.run(replica.pastHistory(insertText(cellAddress(0, 1), 0, 900, 4), 0));
    replica.undo(0);
    EXPECT_EQ(textOf(replica.getDocument()._table._cells.at({61, 72})), "900 61720 61721 ");
}

TEST(Shadows, WordTypedLetterByLetterIntoADeadElementComesBackInOrder)
{
    TreeReplica replica;
    replica.run(markElement(1));
    OperationUPtr undo = replica.pastHistory(makeUndo(*markElement(1), *makeTreeTransformer()), 1);
    replica.run(replica.pastHistory(insertText(listElementAddress(1), 1, 901, 4), 0));
    replica.run(insertText(listElementAddress(0), 0, 800, 5));
    const auto second = insertText(listElementAddress(1), 2, 902, 6);
    replica.run(std::make_unique<ShadowedOperation>(dynamicUPtrCheckedCast<AtomicOperation>(cloneOperation(*second)),
                                                    makeShadows(1)));
    replica.undo(0);
    EXPECT_EQ(textOf(replica.getDocument()._list[1]._element), "20 901 902 21 ");
}

TEST(Shadows, LettersThatArriveBehindTheRestoringComeBackInOrder)
{
    const auto transformer = makeTreeTransformer();
    TreeReplica replica;
    replica.run(markElement(1));
    replica.run(replica.pastHistory(insertText(listElementAddress(1), 1, 901, 4), 0));
    replica.undo(0);
    // The second letter was typed behind the first, and is brought past the marking and the restoring.
    const Shadows shadows = makeShadows(1);
    OperationUPtr second = std::make_unique<ShadowedOperation>(
        dynamicUPtrCheckedCast<AtomicOperation>(insertText(listElementAddress(1), 2, 902, 6)), shadows);
    replica.run(replica.pastHistory(std::move(second), 2));
    EXPECT_EQ(textOf(replica.getDocument()._list[1]._element), "20 901 902 21 ");
}

TEST(Shadows, OperationBelowTwoDeadElementsWaitsForBoth)
{
    const auto transformer = makeTreeTransformer();
    const OperationNodeAddress inner = textAddress(listElementAddress(0)).appendItems(NodeAddressing::AddressInList(1));
    const MarkAsRemoved outerMarking(listAddress(), ElementListType, Range::fromCount(0, 1));
    const ListMultirangeOperationImpl<MarkAsRemoved> innerMarking(
        {MarkAsRemoved(textAddress(listElementAddress(0)), ElementTextType, Range::fromCount(1, 1))});
    OperationUPtr operation = transformer->include(*setWhole(inner, 0, 1), innerMarking, late);
    operation = transformer->include(*operation, outerMarking, late);
    EXPECT_EQ(describe(*operation), "shadowed(/1[0]/2[1] set(property 10), dead at 3, dead at 1)");
    operation = transformer->include(
        *operation, Insert(listAddress(), ElementListType, makeElementItems({makeElement(9)}), Range(0, 1)), late);
    operation = transformer->include(
        *operation, Restore(listAddress(), ElementListType, makeElementItems({makeElement(1)}), Range(1, 2)), late);
    EXPECT_EQ(describe(*operation), "shadowed(/1[1]/2[1] set(property 10), dead at 3)");
}

TEST(Shadows, ReplacedTextShadowsForGood)
{
    const auto transformer = makeTreeTransformer();
    const SetPropertyOperation replacement(listElementAddress(0), ElementType, WholeTextProperty,
                                           makeSharedConst<SimpleDataValue<TreeText>>(),
                                           makeSharedConst<SimpleDataValue<TreeText>>());
    const OperationUPtr inside = transformer->include(*insertText(listElementAddress(0), 0, 900, 4), replacement, late);
    ASSERT_NE(cast<ShadowedOperation>(inside.get()), nullptr);
    EXPECT_TRUE(cast<ShadowedOperation>(*inside).getShadows().areForGood());
    EXPECT_EQ(describe(*transformer->include(*inside, *makeReversal(replacement), late)), describe(*inside));
    const OperationUPtr other = transformer->include(*setWhole(listElementAddress(0), 0, 1), replacement, late);
    EXPECT_EQ(describe(*other), "/1[0] set(property 10)");
}

TEST(Shadows, OperationInAnElementThatWentForGoodIsShadowedForGood)
{
    const auto transformer = makeTreeTransformer();
    const Remove removal(listAddress(), ElementListType, Range(0, 1));
    const OperationUPtr result = transformer->include(*setWhole(listElementAddress(0), 0, 1), removal, late);
    EXPECT_TRUE(cast<ShadowedOperation>(*result).getShadows().areForGood());
}

TEST(Holders, UndoOfOneOfTwoDeletionsLeavesTheWordDeleted)
{
    TreeReplica replica;
    replica.run(markElement(1));
    replica.run(replica.pastHistory(markElement(1), 0));
    replica.undo(0);
    EXPECT_FALSE(replica.getDocument()._list[1]._isLive);
    replica.undo(1);
    EXPECT_TRUE(replica.getDocument()._list[1]._isLive);
    EXPECT_EQ(textOf(replica.getDocument()._list[1]._element), "20 21 ");
}

TEST(Holders, ThreeDeletionsAreUndoneInAnyOrder)
{
    std::vector<std::size_t> order{0, 1, 2};
    do
    {
        TreeReplica replica;
        replica.run(markElement(1));
        replica.run(replica.pastHistory(markElement(1), 0));
        replica.run(replica.pastHistory(markElement(1), 0));
        for (std::size_t undone = 0; undone < 3; ++undone)
        {
            EXPECT_FALSE(replica.getDocument()._list[1]._isLive);
            replica.undo(order[undone]);
        }
        EXPECT_TRUE(replica.getDocument()._list[1]._isLive);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(Holders, MapKeysAndRowsCountThemToo)
{
    const auto remove = [] { return std::make_unique<MapRemove>(mapAddress(), ElementMapType, makeKey("a"), nullptr); };
    TreeReplica replica;
    replica.run(remove());
    replica.run(replica.pastHistory(remove(), 0));
    replica.run(row(RowMark(0, nullptr)));
    replica.run(replica.pastHistory(row(RowMark(0, nullptr)), 2));
    replica.undo(0);
    replica.undo(2);
    EXPECT_EQ(replica.getDocument()._map.count("a"), 0u);
    EXPECT_FALSE(replica.getDocument()._table._rows[0]._isLive);
    replica.undo(1);
    replica.undo(3);
    EXPECT_EQ(replica.getDocument(), makeTreeDocument());
}

TEST(MapTransformers, WinnerOfTwoInsertionsStands)
{
    const auto transformer = makeTreeTransformer();
    const MapInsert first(mapAddress(), ElementMapType, makeKey("k"), makeSharedConst<ElementValue>(makeElement(1)));
    const MapInsert second(mapAddress(), ElementMapType, makeKey("k"), makeSharedConst<ElementValue>(makeElement(2)));
    EXPECT_EQ(describe(*transformer->include(first, second, TieResolveCondition::FirstWins)),
              "[/4 remove(k); /4 insert(k); ]");
    EXPECT_EQ(describe(*transformer->include(first, second, TieResolveCondition::SecondWins)), "nothing");
    const MapInsert elsewhere(mapAddress(), ElementMapType, makeKey("l"), nullptr);
    EXPECT_EQ(describe(*transformer->include(first, elsewhere, late)), "/4 insert(k)");
}

TEST(Holders, UndoOfARemovalOfAKeyBringsWhatOthersInsertedMeanwhileAndNotWhatItRemoved)
{
    const auto remove = [] { return std::make_unique<MapRemove>(mapAddress(), ElementMapType, makeKey("a"), nullptr); };
    TreeReplica replica;
    replica.run(remove());
    OperationUPtr insertion =
        replica.pastHistory(std::make_unique<MapInsert>(mapAddress(), ElementMapType, makeKey("a"),
                                                        makeSharedConst<ElementValue>(makeElement(900))),
                            1);
    replica.run(replica.pastHistory(remove(), 0));
    replica.run(replica.pastHistory(std::move(insertion), 1));
    EXPECT_EQ(replica.getDocument()._map.count("a"), 0u);
    replica.undo(1);
    EXPECT_EQ(replica.getDocument()._map.at("a")._name, 900);
}

TEST(MapTransformers, NullKeyFails)
{
    const MapInsert broken(mapAddress(), ElementMapType, nullptr, nullptr);
    EXPECT_ASSERTION(makeTreeTransformer()->include(broken, broken, late), "plainPtr");
}

TEST(MapTransformers, OperationOnALostElementDoesNotWakeOnTheOneThatTookItsKey)
{
    const auto transformer = makeTreeTransformer();
    const MapRemove removal(mapAddress(), ElementMapType, makeKey("k"), makeSharedConst<ElementValue>(makeElement(1)));
    const OperationUPtr shadowed = transformer->include(*setWhole(mapElementAddress("k"), 0, 1), removal, late);
    const MapInsert other(mapAddress(), ElementMapType, makeKey("k"), makeSharedConst<ElementValue>(makeElement(2)));
    EXPECT_EQ(describe(*transformer->include(*shadowed, other, late)), describe(*shadowed));
    EXPECT_EQ(describe(*transformer->include(*shadowed, *makeReversal(removal), late)), "/4[k] set(property 10)");
}

TEST(TableTransformers, TravellingRowFollowsColumns)
{
    const auto transformer = makeTreeTransformer();
    RowOrColumn data;
    data.getCells().emplace_back(0, nullptr, false);
    data.getCells().emplace_back(1, nullptr, false);
    const auto travelling = row(RowInsert(0, makeSharedConst<RowOrColumn>(data)));
    const auto past = [&](TableColumnOperation::NestedOperation nested)
    {
        return describe(*transformer->include(
            *travelling, TableColumnOperation(tableAddress(), CellTableType, std::move(nested)), late));
    };
    EXPECT_EQ(past(RowInsert(1, nullptr)), "/6 row insert(0, cells 0 2)");
    EXPECT_EQ(past(RowOrColumnRemoveOperation(0, nullptr)), "/6 row insert(0, cells 0)");
    EXPECT_EQ(past(RowMark(1, nullptr)), "/6 row insert(0, cells 0 1removed)");
    EXPECT_EQ(past(RowOrColumnMoveOperation(0, 1)), "/6 row insert(0, cells 0 1)");
    EXPECT_EQ(past(RowOrColumnLeaveTombstoneOperation(0, nullptr)), "/6 row insert(0, cells 0 1)");
}

TEST(TableTransformers, PropertyOfARemovedRowWaitsForIt)
{
    TreeReplica replica;
    replica.run(row(RowMark(0, nullptr)));
    const auto setting = row(
        SetRowOrColumnPropertyOperation(0, RowProperty, makeSharedConst<IntValue>(0), makeSharedConst<IntValue>(7)));
    replica.run(replica.pastHistory(cloneOperation(*setting), 0));
    EXPECT_EQ(replica.getDocument()._table._rows[0]._property, 0);
    replica.undo(0);
    EXPECT_EQ(replica.getDocument()._table._rows[0]._property, 7);
}

// Each of the two was marked while the other was dead or alive; the cell where they cross must not be lost.
TEST(TableTransformers, CellWhereARowAndAColumnCrossComesBackWithTheLastOfThem)
{
    const auto markColumn = []
    { return std::make_unique<TableColumnOperation>(tableAddress(), CellTableType, RowMark(1, nullptr)); };
    for (const bool isRowFirst : {true, false})
    {
        TreeReplica replica;
        replica.run(row(RowMark(0, nullptr)));
        replica.run(markColumn());
        replica.undo(isRowFirst ? 0 : 1);
        EXPECT_EQ(replica.getDocument()._table._cells.count({61, 72}), 0u);
        replica.undo(isRowFirst ? 1 : 0);
        EXPECT_EQ(replica.getDocument(), makeTreeDocument());
    }
}

TEST(SetPropertyTransformers, LoserKeepsWhatTheWinnerDidNotTouch)
{
    const auto transformer = makeTreeTransformer();
    const auto setPair = [](PairValue oldValue, PairValue newValue)
    {
        using Value = SimpleDataValue<PairValue>;
        return SetPropertyOperation(listElementAddress(0), ElementType, PairProperty, makeSharedConst<Value>(oldValue),
                                    makeSharedConst<Value>(newValue));
    };
    const SetPropertyOperation first = setPair({0, 0}, {1, 1});
    const SetPropertyOperation second = setPair({0, 0}, {2, 0});
    for (const auto tie : {TieResolveCondition::FirstWins, TieResolveCondition::SecondWins})
    {
        const OperationUPtr result = transformer->include(first, second, tie);
        const auto& setting = cast<SetPropertyOperation>(*result);
        const PairValue expected = tie == TieResolveCondition::FirstWins ? PairValue(1, 1) : PairValue(2, 1);
        EXPECT_EQ(getSimpleDataValue<PairValue>(setting.getNewValue()), expected);
        EXPECT_EQ(getSimpleDataValue<PairValue>(setting.getOldValue()), PairValue(2, 0));
    }
}

TEST(SetPropertyDataMerger, SimpleMergerTakesTheValueUnlessNothingWasChanged)
{
    const SimpleDataMerger merger;
    const IntValue value(1);
    const IntValue replacement(2);
    EXPECT_EQ(*merger.getMergedValue(value, replacement, IntValue(0), IntValue(1)), value);
    EXPECT_EQ(*merger.getMergedValue(value, replacement, IntValue(1), IntValue(1)), replacement);
}

TEST(SetPropertyDataMerger, EachPropertyHasOneMerger)
{
    SetPropertyDataMergerImpl merger;
    const auto simple = std::make_shared<SimpleDataMerger>();
    merger.registerDataMerger(34, simple);
    EXPECT_EQ(merger.findDataMerger(34), simple.get());
    EXPECT_EQ(merger.findDataMerger(35), nullptr);
    EXPECT_ASSERTION(merger.registerDataMerger(34, simple), "isNew");
    EXPECT_ASSERTION(merger.registerDataMerger(35, nullptr), "plainPtr");
    EXPECT_ASSERTION(merger.getMergedValue(35, IntValue(1), IntValue(1), IntValue(1), IntValue(1)),
                     "mergerIt != _dataMergers.end()");
}

TEST(BaseOperationTransformer, LongCompositesDontDeepenTheStack)
{
    const auto transformer = makeTreeTransformer();
    const auto makeLong = [](unsigned long count)
    {
        std::vector<OperationUPtr> parts;
        for (unsigned long index = 0; index < count; ++index)
        {
            parts.push_back(std::make_unique<Insert>(listAddress(), ElementListType, makeElementItems({makeElement(1)}),
                                                     Range::fromCount(0, 1)));
        }
        return std::make_unique<CompositeOperation>(std::move(parts));
    };
    const OperationUPtr result = transformer->include(*makeLong(20000), *makeLong(3), late);
    EXPECT_EQ(cast<CompositeOperation>(*result).getParts().size(), 20000u);
    EXPECT_EQ(describe(*cast<CompositeOperation>(*result).getParts().front()), "/1 insert(3,1, 1 items)");
}

} // namespace Zem::CollaborationEngine::Testing
