// How many pairs of text operations are brought past each other in a second. Each run checks its answers.

#include "CE_HierarchicalOperationTransformer.h"
#include "CE_ListMultirangeTransformers.h"
#include "CE_MultirangeOperationUtils.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace
{

using namespace Zem;
using namespace Zem::CollaborationEngine;

using Insert = ListModificationOperation<InsertTag>;
using MarkAsRemoved = ListModificationOperation<MarkAsRemovedTag>;
using Range = IndexRange<unsigned long>;

constexpr unsigned long textType = 34;
constexpr unsigned long placesCount = 64;

std::unique_ptr<HierarchicalOperationTransformer> makeTransformer()
{
    auto transformer = std::make_unique<HierarchicalOperationTransformer>();
    transformer->registerSameNodeTransformer(textType, std::make_shared<ListMultirangeSameNodeTransformer>());
    transformer->registerAdressModifierTransformer(textType,
                                                   std::make_shared<AncestorListMultirangeModificationTransformer>());
    return transformer;
}

OperationNodeAddress makeTextAddress()
{
    return OperationNodeAddress{OperationNodeAddress::FixedChunk(textType)};
}

template<class T>
std::vector<OperationUPtr> makeOperations(unsigned long count)
{
    const SharedConstPtr<ItemsCollection> items =
        makeSharedConst<SimpleItemsCollection<std::vector<char>>>(std::vector<char>(count, 'x'));
    std::vector<OperationUPtr> operations;
    for (unsigned long place = 0; place < placesCount; ++place)
    {
        operations.push_back(MultirangeOperationUtils::makeMultirangeOperationFromSingle(
            T(makeTextAddress(), textType, items, Range::fromCount(place * 10, count))));
    }
    return operations;
}

/// Where an operation on one range begins.
template<class T>
unsigned long getBegin(const Operation& operation)
{
    return cast<ListMultirangeOperationImpl<T>>(operation).getNestedOperations().front().getRange().getBegin();
}

/// Brings each of the first operations past each of the second; `expectedShift` tells by how much it moves.
template<class First, class Second, class ExpectedShift>
void includeAllPairs(benchmark::State& state, unsigned long count, const ExpectedShift& expectedShift)
{
    const auto transformer = makeTransformer();
    const std::vector<OperationUPtr> firsts = makeOperations<First>(count);
    const std::vector<OperationUPtr> seconds = makeOperations<Second>(1);
    for (auto _ : state)
    {
        for (unsigned long first = 0; first < placesCount; ++first)
        {
            for (unsigned long second = 0; second < placesCount; ++second)
            {
                const OperationUPtr result =
                    transformer->include(*firsts[first], *seconds[second], TieResolveCondition::SecondWins);
                if (getBegin<First>(*result) != first * 10 + expectedShift(first, second))
                {
                    state.SkipWithError("an operation came to a wrong place");
                    return;
                }
            }
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(placesCount * placesCount));
}

void insertionsPastInsertions(benchmark::State& state)
{
    includeAllPairs<Insert, Insert>(
        state, 1, [](unsigned long first, unsigned long second) { return second <= first ? 1ul : 0ul; });
}

void markingsPastInsertions(benchmark::State& state)
{
    includeAllPairs<MarkAsRemoved, Insert>(
        state, 5, [](unsigned long first, unsigned long second) { return second <= first ? 1ul : 0ul; });
}

void insertionsPastMarkings(benchmark::State& state)
{
    includeAllPairs<Insert, MarkAsRemoved>(state, 1, [](unsigned long, unsigned long) { return 0ul; });
}

/// A deletion of many stretches past an insertion in the middle: one walk over the stretches.
void scatteredMarkingPastInsertion(benchmark::State& state)
{
    const auto transformer = makeTransformer();
    const auto stretchesCount = static_cast<unsigned long>(state.range(0));
    std::vector<MarkAsRemoved> stretches;
    for (unsigned long stretch = stretchesCount; stretch > 0; --stretch)
    {
        stretches.emplace_back(makeTextAddress(), textType, Range::fromCount(stretch * 4, 2));
    }
    const ListMultirangeOperationImpl<MarkAsRemoved> marking(std::move(stretches));
    const unsigned long middle = stretchesCount / 2 * 4;
    const auto insertion = MultirangeOperationUtils::makeMultirangeOperationFromSingle(
        Insert(makeTextAddress(), textType, nullptr, Range::fromCount(middle, 1)));
    for (auto _ : state)
    {
        const OperationUPtr result = transformer->include(marking, *insertion, TieResolveCondition::SecondWins);
        if (getBegin<MarkAsRemoved>(*result) != stretchesCount * 4 + 1)
        {
            state.SkipWithError("a stretch came to a wrong place");
            return;
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(insertionsPastInsertions);
BENCHMARK(markingsPastInsertions);
BENCHMARK(insertionsPastMarkings);
BENCHMARK(scatteredMarkingPastInsertion)->Arg(10)->Arg(1000);

} // namespace
