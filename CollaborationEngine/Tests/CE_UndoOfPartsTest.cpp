// Undoing what consists of several parts takes all back, in few transformations.

#include "CE_InverseOperation.h"
#include "CE_ListMultirangeTransformers.h"
#include "CE_SetPropertyTransformers.h"
#include "OperationNotation.h"
#include "RandomTreeOperations.h"
#include "TreeReplica.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

constexpr auto late = TieResolveCondition::SecondWins;

/// Only what is live, for what was inserted and undone stays as dead slots.
TreeText keepLive(const TreeText& text);

TreeElement keepLive(const TreeElement& element)
{
    TreeElement live = element;
    live._text = keepLive(element._text);
    return live;
}

TreeText keepLive(const TreeText& text)
{
    TreeText live;
    for (const TreeSlot& slot : text)
    {
        if (slot._isLive)
        {
            live.push_back({slot._identity, true, keepLive(slot._element)});
        }
    }
    return live;
}

std::vector<TreeLine> keepLive(const std::vector<TreeLine>& lines)
{
    std::vector<TreeLine> live = lines;
    std::erase_if(live, [](const TreeLine& line) { return !line._isLive; });
    return live;
}

bool hasLine(const std::vector<TreeLine>& lines, int identity)
{
    return std::any_of(lines.begin(), lines.end(),
                       [identity](const TreeLine& line) { return line._identity == identity; });
}

TreeDocument keepLive(const TreeDocument& document)
{
    TreeDocument live;
    live._list = keepLive(document._list);
    for (const auto& [key, element] : document._map)
    {
        live._map.emplace(key, keepLive(element));
    }
    live._table._rows = keepLive(document._table._rows);
    live._table._columns = keepLive(document._table._columns);
    for (const auto& [place, cell] : document._table._cells)
    {
        if (hasLine(live._table._rows, place.first) && hasLine(live._table._columns, place.second))
        {
            live._table._cells.emplace(place, keepLive(cell));
        }
    }
    return live;
}

/// What undoes each part, transformed one by one against all behind it and against what undid these.
OperationUPtr undoOneByOne(const std::vector<OperationUPtr>& parts, const BaseOperationTransformer& transformer)
{
    std::vector<OperationUPtr> undoings;
    for (std::size_t index = parts.size(); index > 0; --index)
    {
        OperationUPtr undoing = makeUndo(*parts[index - 1], transformer);
        for (std::size_t later = index; later < parts.size(); ++later)
        {
            undoing = transformer.include(*undoing, *parts[later], late);
        }
        for (const OperationUPtr& undoingOfLater : undoings)
        {
            undoing = transformer.include(*undoing, *undoingOfLater, late);
        }
        undoings.push_back(std::move(undoing));
    }
    return makeOperationFromParts(std::move(undoings));
}

/// One author's operations one behind the other. If `mayUndo`, some of them undo those before them.
class Burst
{
public:
    Burst(unsigned long seed, bool mayUndo)
        : _operations(seed)
    {
        const unsigned long count = _operations.below(10) + 2;
        while (_replica.getHistory().size() < count)
        {
            const unsigned long past = _replica.getHistory().size();
            const bool undoes = mayUndo && past > 0 && _operations.below(4) == 0;
            OperationUPtr operation =
                undoes ? _replica.makeUndoOf(_operations.below(past)) : _operations.make(_replica.getDocument());
            unsigned long nextID = 100 + past;
            operation->setIDIfNeeded(nextID);
            _replica.run(std::move(operation));
        }
    }

    const std::vector<OperationUPtr>& getParts() const
    {
        return _replica.getHistory();
    }

    CompositeOperation makeComposite() const
    {
        std::vector<OperationUPtr> parts;
        for (const OperationUPtr& part : getParts())
        {
            parts.push_back(cloneOperation(*part));
        }
        return CompositeOperation(std::move(parts));
    }

    bool hasShadowedParts() const
    {
        return describe(makeComposite()).find("shadowed") != std::string::npos;
    }

    bool hasMoves() const
    {
        return describe(makeComposite()).find("move(") != std::string::npos;
    }

    /// The document behind the burst and `undoing`; none if that isn't legal there.
    std::optional<TreeDocument> applyUndoing(const Operation& undoing) const
    {
        TreeDocument document = _replica.getDocument();
        BaseOperationExecutor executor(std::make_unique<TreeExecutor>(document), makeTreeTransformer());
        OperationUPtr changedOp;
        try
        {
            executor.executeAndChangeIfNeeded(*cloneOperation(undoing), changedOp);
        }
        catch (const std::exception&)
        {
            return std::nullopt;
        }
        return document;
    }

private:
    RandomTreeOperations _operations;
    TreeReplica _replica;
};

class CountingTransformer final : public HierarchicalOperationTransformer
{
public:
    CountingTransformer()
    {
        registerSameNodeTransformer(ElementTextType, std::make_shared<ListMultirangeSameNodeTransformer>());
        registerAdressModifierTransformer(ElementTextType,
                                          std::make_shared<AncestorListMultirangeModificationTransformer>());
        registerAdressModifierTransformer(ElementType, std::make_shared<AncestorSetPropertyModificationTransformer>());
    }

    using HierarchicalOperationTransformer::includeImpl;

    OperationUPtr includeImpl(const AtomicOperation& first, const AtomicOperation& second,
                              TieResolveCondition tieResolveCondition) const override
    {
        ++_count;
        return HierarchicalOperationTransformer::includeImpl(first, second, tieResolveCondition);
    }

    mutable unsigned long _count = 0;
};

template<class MakePart>
CompositeOperation makeComposite(unsigned long count, const MakePart& makePart)
{
    std::vector<OperationUPtr> parts;
    for (unsigned long index = 0; index < count; ++index)
    {
        parts.push_back(makePart(index));
    }
    return CompositeOperation(std::move(parts));
}

constexpr unsigned long manyParts = 1000;
constexpr unsigned long fewTransformationsForEach = 30;

} // namespace

TEST(UndoOfParts, TakesBackWhateverABurstDid)
{
    for (unsigned long seed = 1; seed <= 10000; ++seed)
    {
        const Burst burst(seed, false);
        const OperationUPtr undoing = makeUndo(burst.makeComposite(), *makeTreeTransformer());
        const auto undone = burst.applyUndoing(*undoing);
        ASSERT_TRUE(undone) << "seed " << seed << "\n" << describe(burst.makeComposite()) << "\n" << describe(*undoing);
        ASSERT_EQ(toString(keepLive(*undone)), toString(keepLive(makeTreeDocument())))
            << "seed " << seed << "\n"
            << describe(burst.makeComposite()) << "\n"
            << describe(*undoing);
    }
}

// Pairwise transformation loses a setting behind another one, and a restoring behind another one; and a slot that was
// moved back may stand on the other side of a dead one.
TEST(UndoOfParts, HasTheEffectOfUndoingOneByOneWhereThatTakesAllBack)
{
    unsigned long sameCount = 0;
    for (unsigned long seed = 1; seed <= 10000; ++seed)
    {
        const Burst burst(seed, seed % 2 == 0);
        if (burst.hasMoves())
        {
            continue;
        }
        const auto transformer = makeTreeTransformer();
        const OperationUPtr oneByOne = undoOneByOne(burst.getParts(), *transformer);
        const auto expected = burst.applyUndoing(*oneByOne);
        if (!burst.hasShadowedParts() && (!expected || !(keepLive(*expected) == keepLive(makeTreeDocument()))))
        {
            continue;
        }
        ++sameCount;
        const OperationUPtr undoing = makeUndo(burst.makeComposite(), *transformer);
        ASSERT_EQ(burst.applyUndoing(*undoing), expected) << "seed " << seed << "\n"
                                                          << describe(burst.makeComposite()) << "\n"
                                                          << describe(*undoing) << "\n"
                                                          << describe(*oneByOne);
    }
    EXPECT_GT(sameCount, 3000u);
}

// The last setting used to win against what undid the first one.
TEST(UndoOfParts, TakesBackTwoSettingsOfOneProperty)
{
    TreeReplica replica;
    const int before = makeTreeDocument()._list[0]._element._whole;
    replica.run(
        std::make_unique<CompositeOperation>(makeComposite(2,
                                                           [before](unsigned long index)
                                                           {
                                                               const int value = before + static_cast<int>(index);
                                                               return setWhole(listElementAddress(0), value, value + 1);
                                                           })));
    replica.undo(0);
    EXPECT_EQ(replica.getDocument(), makeTreeDocument());
}

TEST(UndoOfParts, RestoresWhatWasMarkedAndRestoredAndMarkedAgain)
{
    TreeReplica replica;
    replica.run(markElement(0));
    replica.undo(0);
    replica.run(markElement(0));
    std::vector<OperationUPtr> parts;
    for (const OperationUPtr& part : replica.getHistory())
    {
        parts.push_back(cloneOperation(*part));
    }
    replica.run(makeUndo(CompositeOperation(std::move(parts)), *makeTreeTransformer()));
    EXPECT_EQ(replica.getDocument(), makeTreeDocument());
}

TEST(UndoOfParts, OfManyInsertionsIntoOneTextTakesFewTransformations)
{
    const CountingTransformer transformer;
    // Each goes in between two that are there, so that they don't become one range.
    const CompositeOperation scattered =
        makeComposite(manyParts, [](unsigned long index)
                      { return insertText(listElementAddress(0), index * 7 % (index + 1), 900, 1); });
    const OperationUPtr undoing = makeUndo(scattered, transformer);
    EXPECT_EQ(cast<CompositeOperation>(*undoing).getParts().size(), manyParts);
    EXPECT_LT(transformer._count, manyParts * fewTransformationsForEach);
}

TEST(UndoOfParts, OfOperationsOnManyNodesTakesNone)
{
    const CountingTransformer transformer;
    const CompositeOperation settings =
        makeComposite(manyParts, [](unsigned long index) { return setWhole(listElementAddress(index), 0, 1); });
    makeUndo(settings, transformer);
    EXPECT_EQ(transformer._count, 0u);
}

} // namespace Zem::CollaborationEngine::Testing
