// Operations that nobody would make: slots that are dead, taken or beyond the end, ranges that overlap or ascend, data
// that doesn't belong there or is no data, executed and reversed. Each either is carried out, and leaves a text whose
// invariants hold, or fails, and leaves the text, the slots and what the observer knows as they were.

#include "TS_TextCase.h"

#include "DClb_DocumentOperationTransformer.h"
#include "DOM_Blocks.h"
#include "DOM_CheckInvariants.h"
#include "DOM_Runs.h"

#include <gtest/gtest.h>

#include <random>

namespace Zem::TestSupport
{

using namespace CollaborationEngine;
using DOMCollaboration::TextWithTombstonesElementVector;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

/// An element that is no byte has no notation.
std::string tryToPrint(const Operation& operation)
{
    try
    {
        return print(operation);
    }
    catch (const BadNumCastError&)
    {
        return "an operation with an element that is no byte";
    }
}

class MalformedOperations
{
public:
    explicit MalformedOperations(std::uint64_t seed)
        : _random(seed)
        , _text(makeText(seed % 2 == 0 ? "{|ab[cd]e}[..]{~|f[{]g~}#" : "{|ab[cd]e~}[..]#{|f[{]g}$"))
    {
        auto adapter = std::make_shared<DOMCollaboration::BlocksAdapterWithNodeAdapter>(
            _text, _document.getStyles(), nullptr, nullptr, nullptr, nullptr, _document.getSharedObjectFactory());
        _executor = std::make_unique<DOMCollaboration::DocumentOperationExecutor>(
            std::move(adapter), std::make_shared<DOMCollaboration::DocumentOperationTransformer>(), _mirror);
    }

    void run(unsigned int stepsCount)
    {
        for (unsigned int step = 0; step < stepsCount && !testing::Test::HasFailure(); ++step)
        {
            OperationUPtr operation = makeOperation();
            const bool isReverse = pick(3) == 0;
            SCOPED_TRACE("step " + std::to_string(step) + (isReverse ? ", reverse of " : ", ") +
                         tryToPrint(*operation) + " on " + print(_text));
            const DOM::TextWithTombstones before = _text;
            try
            {
                carryOut(*operation, isReverse);
                ++_carriedOutCount;
            }
            catch (const std::exception& failure)
            {
                ++_failedCount;
                EXPECT_TRUE(before == _text) << failure.what() << " left " << print(_text);
            }
            EXPECT_EQ("", _mirror->findDifferences());
            EXPECT_TRUE(DOM::checkInvariants(_text).empty()) << DOM::checkInvariants(_text).front() << print(_text);
        }
    }

    unsigned int getCarriedOutCount() const
    {
        return _carriedOutCount;
    }

    unsigned int getFailedCount() const
    {
        return _failedCount;
    }

private:
    void carryOut(Operation& operation, bool isReverse)
    {
        if (isReverse)
        {
            _executor->reverse(operation);
            return;
        }
        OperationUPtr changedOp;
        _executor->executeAndChangeIfNeeded(operation, changedOp);
    }

    unsigned long pick(unsigned long count)
    {
        return std::uniform_int_distribution<unsigned long>(0, count - 1)(_random);
    }

    unsigned long pickSlot()
    {
        constexpr unsigned long slotsCount = 24;
        return pick(40) == 0 ? ~0ul - 1 - pick(20) : pick(slotsCount);
    }

    TextWithTombstonesElementVector makeElementsOf(unsigned long count)
    {
        std::string notation;
        while (notation.size() < count)
        {
            constexpr std::string_view symbols = "ab{}|~#$";
            notation += symbols[pick(symbols.size())];
        }
        TextWithTombstonesElementVector elements = makeElements(notation);
        if (pick(10) == 0)
        {
            elements[pick(count)] = static_cast<short>(300);
        }
        if (pick(20) == 0)
        {
            auto paragraph = std::make_shared<DOM::Paragraph>();
            paragraph->getRuns().push_back(std::make_unique<DOM::TabRun>());
            elements.push_back(SharedConstPtr<DOM::Block>(paragraph));
        }
        return elements;
    }

    template<class Tag>
    OperationUPtr makeOperationOf()
    {
        std::vector<ListModificationOperation<Tag>> nested;
        for (unsigned long count = 1 + pick(3); count > 0; --count)
        {
            const unsigned long elementsCount = 1 + pick(5);
            const auto data = pick(25) == 0 ? SharedConstPtr<TextWithTombstonesItems>()
                                            : makeSharedConst<TextWithTombstonesItems>(makeElementsOf(elementsCount));
            const unsigned long slotsCount = pick(25) == 0 ? elementsCount + 1 : elementsCount;
            nested.emplace_back(
                getTextAddress(), 34, data,
                IndexRange<unsigned long>::fromCount(std::min(pickSlot(), ~0ul - slotsCount), slotsCount));
        }
        if (pick(5) != 0)
        {
            std::sort(nested.begin(), nested.end(),
                      [](const auto& left, const auto& right)
                      { return left.getRange().getBegin() > right.getRange().getBegin(); });
        }
        return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<Tag>>>(std::move(nested));
    }

    OperationUPtr makeOperation()
    {
        switch (pick(3))
        {
        case 0:
            return makeOperationOf<InsertTag>();
        case 1:
            return makeOperationOf<MarkAsRemovedTag>();
        default:
            return makeOperationOf<RestoreTag>();
        }
    }

    std::mt19937_64 _random;
    DOM::Document _document;
    DOM::TextWithTombstones _text;
    std::shared_ptr<MirrorObserver> _mirror = std::make_shared<MirrorObserver>(
        _text, DOM::NodeAddressUtils::makeAddress<DOM::NativeDOMNodeType::BlockCollection>());
    std::unique_ptr<DOMCollaboration::DocumentOperationExecutor> _executor;
    unsigned int _carriedOutCount = 0;
    unsigned int _failedCount = 0;
};

class MalformedTextOperations : public testing::TestWithParam<std::uint64_t>
{
};

} // namespace

TEST_P(MalformedTextOperations, AreCarriedOutOrChangeNothing)
{
    SCOPED_TRACE("seed " + std::to_string(GetParam()));
    MalformedOperations operations(GetParam());
    operations.run(500);
    EXPECT_LT(20u, operations.getCarriedOutCount());
    EXPECT_LT(20u, operations.getFailedCount());
}

INSTANTIATE_TEST_SUITE_P(Seeds, MalformedTextOperations, testing::Range<std::uint64_t>(1, 21));

} // namespace Zem::TestSupport
