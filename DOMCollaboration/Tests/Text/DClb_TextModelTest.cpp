// Random legal operations on random texts, against a plain vector of slots. What really happened is applied to the
// vector by the book; the document must then hold the same slots, live and dead, and a text that the rules call valid.
// Each operation also goes through all laws of `TextCase`: the mirror, the reversal, the JSON form.

#include "TS_TextCase.h"
#include "Text/DClb_TextBusinessRules.h"

#include "Util_Cast.h"
#include "Util_Visitor.h"

#include <gtest/gtest.h>

#include <random>

namespace Zem::TestSupport
{

using namespace CollaborationEngine;
using namespace DOMCollaboration::TextBusinessRules;
using DOMCollaboration::TextWithTombstonesElement;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

template<class Nested>
const DOMCollaboration::TextWithTombstonesElementVector& getItems(const Nested& nested)
{
    return cast<TextWithTombstonesItems>(*nested.getData()).getCollection();
}

/// Applies an operation to the slots, nested operation by nested operation.
void applyTo(ModelText& slots, const Operation& operation)
{
    if (cast<EmptyOperation>(&operation))
    {
        return;
    }
    const auto setLive = [&](const auto& nested, bool isLive)
    {
        for (unsigned long slot = nested.getRange().getBegin(); slot < nested.getRange().getEnd(); ++slot)
        {
            EXPECT_NE(isLive, slots[slot]._isLive);
            slots[slot]._isLive = isLive;
        }
    };
    visitWith(
        cast<ListMultirangeOperation>(operation),
        [&](const ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>& insertion)
        {
            for (const auto& nested : insertion.getNestedOperations())
            {
                ModelText inserted;
                for (const TextWithTombstonesElement& element : getItems(nested))
                {
                    inserted.push_back(ModelSlot{element, true});
                }
                const auto position = slots.begin() + static_cast<std::ptrdiff_t>(nested.getRange().getBegin());
                slots.insert(position, inserted.begin(), inserted.end());
            }
        },
        [&](const ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>& marking)
        {
            for (const auto& nested : marking.getNestedOperations())
            {
                setLive(nested, false);
            }
        },
        [&](const ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>& restoring)
        {
            for (const auto& nested : restoring.getNestedOperations())
            {
                setLive(nested, true);
                for (unsigned long offset = 0; offset < getItems(nested).size(); ++offset)
                {
                    slots[nested.getRange().getBegin() + offset]._element = getItems(nested)[offset];
                }
            }
        },
        [](const auto&) { ADD_FAILURE() << "an operation that isn't made here"; });
}

/// The first pair of neighbours among the live slots that doesn't fit, as text; empty when all fit. The grammar alone
/// would let an atomic block stand behind an atomic run, whose paragraph has no mark then.
std::string findMisfit(const ModelText& slots)
{
    const auto fit = [](ElementType prev, ElementType next)
    {
        const bool isMarkMissing = prev == ElementType::AtomicRun && next == ElementType::AtomicBlock;
        return !isMarkMissing && !processElement(
                                     prev, next, [](const TextWithTombstonesElement&) {}, [] {});
    };
    ElementType prev = ElementType::TextBegin;
    for (unsigned long slot = 0; slot < slots.size(); ++slot)
    {
        if (!slots[slot]._isLive)
        {
            continue;
        }
        const ElementType next = getElementType(slots[slot]._element);
        if (!fit(prev, next))
        {
            return "slot " + std::to_string(slot) + " doesn't fit what stands in front of it";
        }
        prev = next;
    }
    return fit(prev, ElementType::TextEnd) ? "" : "the end doesn't fit what stands in front of it";
}

class RandomText
{
public:
    explicit RandomText(std::uint64_t seed)
        : _random(seed)
    {
    }

    void run(unsigned int stepsCount)
    {
        for (unsigned int step = 0; step < stepsCount && !testing::Test::HasFailure(); ++step)
        {
            OperationUPtr operation = makeOperation();
            if (!operation)
            {
                continue;
            }
            const std::string before = print(_slots);
            const std::string printed = print(*operation);
            SCOPED_TRACE("step " + std::to_string(step) + ": " + printed + " on " + before);
            ModelText asAsked = _slots;
            const bool isInsertion = printed.compare(0, 6, "insert") == 0;
            if (!isInsertion)
            {
                applyTo(asAsked, *operation);
            }
            try
            {
                _case.after(std::move(operation));
            }
            catch (const AssertionFailure& failure)
            {
                FAIL() << failure.what();
            }
            applyTo(_slots, _case.getHappened());
            EXPECT_EQ(print(_slots), print(_case.getText()));
            EXPECT_EQ("", findMisfit(_slots));
            if (!isInsertion)
            {
                // Markings and restorings are refused exactly where the text would be broken by them.
                const bool isRefused = print(_case.getHappened()) == "empty";
                EXPECT_EQ(isRefused, !findMisfit(asAsked).empty());
            }
        }
    }

private:
    unsigned long pick(unsigned long count)
    {
        return std::uniform_int_distribution<unsigned long>(0, count - 1)(_random);
    }

    OperationUPtr makeOperation()
    {
        const unsigned long kind = pick(10);
        if (kind < 5 || _slots.size() < 4)
        {
            return makeInsertion();
        }
        return kind < 8 ? makeMarking() : makeRestoring();
    }

    std::string makeElementsNotation()
    {
        static const std::vector<std::string> sensible{"a", "bc", "}{", "}{|", "|a", "{|a}", "{}", "}{|ab", "a}{|b"};
        if (pick(2) == 0)
        {
            return sensible[pick(sensible.size())];
        }
        std::string notation;
        for (unsigned long count = 1 + pick(5); count > 0; --count)
        {
            constexpr std::string_view symbols = "abc{}|~#$";
            notation += symbols[pick(symbols.size())];
        }
        return notation;
    }

    OperationUPtr makeInsertion()
    {
        std::vector<unsigned long> gaps;
        for (unsigned long count = 1 + pick(3) / 2; count > 0; --count)
        {
            gaps.push_back(pick(_slots.size() + 1));
        }
        std::sort(gaps.rbegin(), gaps.rend());
        std::vector<ListModificationOperation<InsertTag>> nested;
        for (const unsigned long gap : gaps)
        {
            const auto elements = makeElements(makeElementsNotation());
            nested.emplace_back(getTextAddress(), 34, makeSharedConst<TextWithTombstonesItems>(elements),
                                IndexRange<unsigned long>::fromCount(gap, elements.size()));
        }
        return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<InsertTag>>>(std::move(nested));
    }

    /// The maximal stretches of slots of one state inside one to three random stretches, from high to low.
    std::vector<Stretch> pickStretches(bool isLive)
    {
        std::vector<bool> isPicked(_slots.size());
        for (unsigned long count = 1 + pick(3); count > 0; --count)
        {
            const unsigned long begin = pick(_slots.size());
            const unsigned long end = std::min<unsigned long>(_slots.size(), begin + 1 + pick(8));
            std::fill(isPicked.begin() + static_cast<std::ptrdiff_t>(begin),
                      isPicked.begin() + static_cast<std::ptrdiff_t>(end), true);
        }
        std::vector<Stretch> stretches;
        for (unsigned long slot = _slots.size(); slot-- > 0;)
        {
            if (!isPicked[slot] || _slots[slot]._isLive != isLive)
            {
                continue;
            }
            if (!stretches.empty() && stretches.back()._begin == slot + 1)
            {
                stretches.back()._begin = slot;
                continue;
            }
            stretches.push_back(Stretch{slot, slot + 1});
        }
        return stretches;
    }

    OperationUPtr makeMarking()
    {
        std::vector<ListModificationOperation<MarkAsRemovedTag>> nested;
        for (const Stretch& stretch : pickStretches(true))
        {
            nested.emplace_back(getTextAddress(), 34, IndexRange<unsigned long>(stretch._begin, stretch._end));
        }
        if (nested.empty())
        {
            return nullptr;
        }
        return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<MarkAsRemovedTag>>>(
            std::move(nested));
    }

    OperationUPtr makeRestoring()
    {
        std::vector<ListModificationOperation<RestoreTag>> nested;
        for (const Stretch& stretch : pickStretches(false))
        {
            DOMCollaboration::TextWithTombstonesElementVector elements;
            for (unsigned long slot = stretch._begin; slot < stretch._end; ++slot)
            {
                elements.push_back(_slots[slot]._element);
            }
            nested.emplace_back(getTextAddress(), 34, makeSharedConst<TextWithTombstonesItems>(std::move(elements)),
                                IndexRange<unsigned long>(stretch._begin, stretch._end));
        }
        if (nested.empty())
        {
            return nullptr;
        }
        return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<RestoreTag>>>(std::move(nested));
    }

    std::mt19937_64 _random;
    ModelText _slots;
    TextCase _case{""};
};

class RandomTexts : public testing::TestWithParam<std::uint64_t>
{
};

} // namespace

TEST_P(RandomTexts, HoldWhatAVectorOfSlotsHolds)
{
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    RandomText(GetParam()).run(120);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomTexts, testing::Range<std::uint64_t>(1, 41));

} // namespace Zem::TestSupport
