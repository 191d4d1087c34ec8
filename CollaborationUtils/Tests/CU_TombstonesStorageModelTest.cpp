/// `TombstonesStorage` beside a model that keeps one boolean for each place.

#include "CU_TombstonesStorage.h"

#include "TS_Assertions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

using namespace Zem::CollaborationUtils;

namespace
{

using Place = TombstonesStorage::Place;
using LiveIndex = TombstonesStorage::LiveIndex;
using LiveMove = TombstonesStorage::LiveMove;
using PlacesRange = TombstonesStorage::PlacesRange;

/// The places of a list up to the last that was ever touched; those behind are live.
class Model
{
public:
    explicit Model(std::vector<bool> isDead = {})
        : _isDead(std::move(isDead))
    {
    }

    unsigned long getSize() const
    {
        return _isDead.size();
    }

    bool isDead(unsigned long place) const
    {
        return place < _isDead.size() && _isDead[place];
    }

    LiveIndex countLiveBefore(unsigned long place) const
    {
        unsigned long live = 0;
        for (unsigned long i = 0; i < place; ++i)
        {
            live += isDead(i) ? 0 : 1;
        }
        return LiveIndex{live};
    }

    Place findLive(unsigned long index) const
    {
        unsigned long place = 0;
        for (; isDead(place) || index > 0; ++place)
        {
            index -= isDead(place) ? 0 : 1;
        }
        return Place{place};
    }

    void insert(unsigned long place, bool dead)
    {
        grow(place);
        _isDead.insert(_isDead.begin() + static_cast<std::ptrdiff_t>(place), dead);
    }

    void remove(unsigned long place)
    {
        grow(place + 1);
        _isDead.erase(_isDead.begin() + static_cast<std::ptrdiff_t>(place));
    }

    void set(unsigned long place, bool dead)
    {
        grow(place + 1);
        _isDead[place] = dead;
    }

    std::vector<PlacesRange> getRanges(bool dead, unsigned long begin, unsigned long end) const
    {
        std::vector<PlacesRange> ranges;
        for (unsigned long i = begin; i < end; ++i)
        {
            if (isDead(i) != dead)
            {
                continue;
            }
            if (!ranges.empty() && ranges.back().getEnd() == Place{i})
            {
                ranges.back() = PlacesRange(ranges.back().getBegin(), Place{i + 1});
            }
            else
            {
                ranges.emplace_back(Place{i}, Place{i + 1});
            }
        }
        return ranges;
    }

    std::string draw() const
    {
        std::string drawing;
        for (unsigned long i = 0; i < getSize(); ++i)
        {
            drawing.push_back(isDead(i) ? '.' : 'x');
        }
        return drawing;
    }

private:
    void grow(unsigned long size)
    {
        _isDead.resize(std::max(_isDead.size(), size), false);
    }

    std::vector<bool> _isDead;
};

TombstonesStorage makeStorage(const Model& model)
{
    return TombstonesStorage(model.getRanges(true, 0, model.getSize()));
}

void expectSameTombstones(const Model& model, const TombstonesStorage& storage)
{
    storage.checkInvariants();
    const std::vector<PlacesRange> ranges = model.getRanges(true, 0, model.getSize());
    EXPECT_EQ(ranges, storage.getRanges());
    EXPECT_EQ(ranges.size(), storage.getRangesCount());
    EXPECT_EQ(makeStorage(model), storage);
}

std::vector<PlacesRange> listLiveRanges(const TombstonesStorage& storage, const PlacesRange& stretch)
{
    std::vector<PlacesRange> ranges;
    storage.forEachLiveRange(stretch, [&](const PlacesRange& live) { ranges.push_back(live); });
    return ranges;
}

void expectSameAnswers(const Model& model, const TombstonesStorage& storage, unsigned long end)
{
    for (unsigned long i = 0; i < end; ++i)
    {
        const LiveIndex live = model.countLiveBefore(i);
        EXPECT_EQ(live, storage.getIndexToInsertTo(Place{i}));
        EXPECT_EQ(model.isDead(i) ? std::nullopt : std::optional(live), storage.convertIndex(Place{i}));
        EXPECT_EQ(model.findLive(i), storage.convertIndex(LiveIndex{i}));
        for (unsigned long stretchEnd = i + 1; stretchEnd <= end; ++stretchEnd)
        {
            EXPECT_EQ(model.getRanges(false, i, stretchEnd),
                      listLiveRanges(storage, PlacesRange(Place{i}, Place{stretchEnd})));
        }
    }
}

enum class Action
{
    Insert,
    Remove,
    Mark,
    Restore
};

constexpr Action allActions[] = {Action::Insert, Action::Remove, Action::Mark, Action::Restore};

bool isLegal(const Model& model, Action action, unsigned long begin, unsigned long count)
{
    for (unsigned long i = begin; i < begin + count; ++i)
    {
        if (action != Action::Insert && model.isDead(i) != (action == Action::Restore))
        {
            return false;
        }
    }
    return true;
}

void apply(Model& model, Action action, unsigned long begin, unsigned long count)
{
    for (unsigned long i = 0; i < count; ++i)
    {
        switch (action)
        {
        case Action::Insert:
            model.insert(begin + i, false);
            break;
        case Action::Remove:
            model.remove(begin);
            break;
        case Action::Mark:
            model.set(begin + i, true);
            break;
        case Action::Restore:
            model.set(begin + i, false);
            break;
        }
    }
}

LiveIndex apply(TombstonesStorage& storage, Action action, unsigned long begin, unsigned long count)
{
    switch (action)
    {
    case Action::Insert:
        return storage.insertElements(Place{begin}, count);
    case Action::Remove:
        return storage.removeElements(Place{begin}, count);
    case Action::Mark:
        return storage.replaceWithTombstones(Place{begin}, count);
    default:
        return storage.restoreElements(Place{begin}, count);
    }
}

LiveIndex applyOne(TombstonesStorage& storage, Action action, unsigned long place)
{
    switch (action)
    {
    case Action::Insert:
        return storage.insertElement(Place{place});
    case Action::Remove:
        return storage.removeElement(Place{place});
    case Action::Mark:
        return storage.replaceWithTombstone(Place{place});
    default:
        return storage.restoreElement(Place{place});
    }
}

/// The bulk form, the loop over the form for one element, and the model must agree.
void expectSameAction(const Model& before, Action action, unsigned long begin, unsigned long count)
{
    TombstonesStorage bulk = makeStorage(before);
    if (!isLegal(before, action, begin, count))
    {
        EXPECT_ASSERTION(apply(bulk, action, begin, count), "opt");
        expectSameTombstones(before, bulk);
        return;
    }
    Model after = before;
    apply(after, action, begin, count);
    EXPECT_EQ(before.countLiveBefore(begin), apply(bulk, action, begin, count));
    expectSameTombstones(after, bulk);

    TombstonesStorage loop = makeStorage(before);
    for (unsigned long i = 0; i < count; ++i)
    {
        const LiveIndex first = before.countLiveBefore(begin);
        const bool staysAtFirst = action == Action::Remove || action == Action::Mark;
        EXPECT_EQ(staysAtFirst ? first : first + i,
                  applyOne(loop, action, action == Action::Remove ? begin : begin + i));
    }
    expectSameTombstones(after, loop);
}

/// Moves a place in both.
void expectSameMove(Model& model, TombstonesStorage& storage, unsigned long from, unsigned long to)
{
    const bool isDead = model.isDead(from);
    const LiveIndex oldLive = model.countLiveBefore(from);
    model.remove(from);
    model.insert(to, isDead);
    const auto expected = isDead ? std::nullopt : std::optional(LiveMove(oldLive, model.countLiveBefore(to)));
    const SignedIndexIncludingTombstones diff{static_cast<long>(to) - static_cast<long>(from)};
    EXPECT_EQ(expected, storage.moveElement(Place{from}, diff));
}

} // namespace

TEST(TombstonesStorageModel, AgreesOnAllActionsInAllStatesOfUpToSixPlaces)
{
    for (unsigned state = 0; state < 64 && !testing::Test::HasFailure(); ++state)
    {
        std::vector<bool> isDead;
        for (unsigned bit = 0; bit < 6; ++bit)
        {
            isDead.push_back((state >> bit & 1U) != 0);
        }
        const Model model(isDead);
        SCOPED_TRACE(model.draw());
        expectSameAnswers(model, makeStorage(model), 8);
        for (unsigned long from = 0; from < 8; ++from)
        {
            for (unsigned long to = 0; to < 8; ++to)
            {
                Model movedModel = model;
                TombstonesStorage moved = makeStorage(model);
                expectSameMove(movedModel, moved, from, to);
                expectSameTombstones(movedModel, moved);
            }
            for (unsigned long count = 0; count < 4; ++count)
            {
                for (const Action action : allActions)
                {
                    expectSameAction(model, action, from, count);
                }
            }
        }
    }
}

TEST(TombstonesStorageModel, AgreesThroughRandomActions)
{
    const auto seed = std::random_device{}();
    std::mt19937_64 random(seed);
    constexpr unsigned long maximalSize = 400;
    Model model;
    TombstonesStorage storage;
    for (unsigned step = 0; step < 100000; ++step)
    {
        const unsigned long begin = random() % (model.getSize() + 3);
        const bool isFull = model.getSize() > maximalSize;
        const Action action = isFull ? Action::Remove : allActions[random() % std::size(allActions)];
        const unsigned long count = random() % 3 == 0 ? 1 + random() % 4 : 1;
        if (random() % 10 == 0)
        {
            expectSameMove(model, storage, begin, random() % (model.getSize() + 1));
        }
        else if (isLegal(model, action, begin, count))
        {
            EXPECT_EQ(model.countLiveBefore(begin), apply(storage, action, begin, count));
            apply(model, action, begin, count);
        }
        if (step % 100 == 0)
        {
            expectSameTombstones(model, storage);
            const unsigned long place = random() % (model.getSize() + 3);
            EXPECT_EQ(model.countLiveBefore(place), storage.getIndexToInsertTo(Place{place}));
            EXPECT_EQ(model.findLive(place), storage.convertIndex(LiveIndex{place}));
        }
        ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed << ", step " << step << ", now " << model.draw();
    }
}
