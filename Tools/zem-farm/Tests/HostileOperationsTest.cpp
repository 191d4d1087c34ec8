#include "HostileOperations.h"

#include "Describe.h"
#include "Script.h"
#include "StartDocument.h"
#include "Values.h"

#include "CE_BaseOperationTransformer.h"
#include "CE_OperationEquality.h"
#include "CE_SetPropertyOperation.h"
#include "DClb_DocumentPositionTransformer.h"
#include "DOM_Blocks.h"
#include "DOM_CheckInvariants.h"
#include "DOM_Runs.h"
#include "EditingState/DClb_DOMEditingStateTransformer.h"
#include "Sharing/CS_Admission.h"
#include "Sharing/CS_Replica.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ZemFarm
{

using namespace Zem::CollaborationEngine;
using namespace Zem::CollaborationSession;
using Zem::cast;
namespace DOM = Zem::DOM;

namespace
{

constexpr ClientID hostile = 5;

/// What became of operations, so that a run in which nothing was reached fails.
struct Counts
{
    std::map<OperationFault, unsigned long> _faults;
    std::map<OperationFault, unsigned long> _misfits;
    unsigned long _refusedByDocument = 0;
    unsigned long _wereExecuted = 0;
    unsigned long _wereReversed = 0;
};

/// Whether a part sets a property. What is taken back then is what its author says that the value was.
bool hasSetting(const Operation& operation)
{
    if (const auto* composite = cast<CompositeOperation>(&operation))
    {
        return std::any_of(composite->getParts().begin(), composite->getParts().end(),
                           [](const OperationUPtr& part) { return hasSetting(*part); });
    }
    return cast<SetPropertyOperation>(&operation) != nullptr;
}

/// A small document, what a server does with a stranger's operations, and a colleague who does what users do.
class Stand
{
public:
    Stand(unsigned long seed, Counts& counts)
        : _random(seed)
        , _setup(makeSetup(seed))
        , _document(makeStartDocument(_setup))
        , _replica(_setup._kind, _document)
        , _hostile(_random, _setup._kind, _document, hostile)
        , _positions(std::make_shared<Zem::DOMCollaboration::DocumentPositionTransformer>())
        , _counts(counts)
    {
    }

    /// Sends an operation that was made beside one of the colleague's.
    void playOperation()
    {
        _colleagues = makeLegal(_document);
        const OperationUPtr operation = _hostile.makeOperation();
        if (!isWellFormed(*operation))
        {
            return;
        }
        cross(*operation);
        const bool isColleagueFirst = executeColleagues();
        _before = _replica.getDocument();
        execute(isColleagueFirst
                    ? _replica.getTransformer().include(*operation, *_colleagues, TieResolveCondition::SecondWins)
                    : cloneOperation(*operation));
        _before = _document;
        makeAgain();
    }

    void playSelection()
    {
        Selection selection = _hostile.makeSelection();
        try
        {
            BatchAdmission(hostile, countSlots(_document)).requireWellFormed(selection);
        }
        catch (const InvalidOperationError& error)
        {
            ++_counts._faults[error.getFault()];
            return;
        }
        const OperationUPtr legal = makeLegal(_document);
        Zem::DOMCollaboration::DOMEditingStateTransformer transformer(_positions);
        transformer.include(*legal, selection);
        transformer.exclude(*legal, selection);
        if (const auto misfit = findMisfit(selection, *_replica.getAdapter()))
        {
            ++_counts._misfits[*misfit];
        }
    }

private:
    static Setup makeSetup(unsigned long seed)
    {
        Setup setup;
        setup._kind = static_cast<DocumentKind>(seed % 3);
        setup._documentSeed = seed;
        setup._documentSize = 3;
        return setup;
    }

    /// Something that fits a document.
    OperationUPtr makeLegal(const DOM::Document& document)
    {
        using Nested = ListModificationOperation<MarkAsRemovedTag>;
        Places places = findPlaces(_setup._kind, document, _random);
        const TextPlace& place = _random.pickFrom(places._texts);
        const FlatText text(*place._text);
        constexpr unsigned long textType = 34;
        if (!text._elements.empty() && _random.isOnceIn(2))
        {
            const unsigned long slot = _random.pickFrom(text._elements)._slot;
            std::vector<Nested> nested{
                Nested(place._address, textType, Zem::CollaborationUtils::IndexRange<unsigned long>(slot, slot + 1))};
            return std::make_unique<ListMultirangeOperationImpl<Nested>>(std::move(nested));
        }
        using Insert = ListModificationOperation<InsertTag>;
        const auto items = Zem::makeSharedConst<Zem::DOMCollaboration::TextWithTombstonesItems>(
            Zem::DOMCollaboration::TextWithTombstonesElementVector(2, static_cast<short>('l')));
        std::vector<Insert> nested{Insert(
            place._address, textType, items,
            Zem::CollaborationUtils::IndexRange<unsigned long>::fromCount(_random.pick(text._slotsCount + 1), 2))};
        return std::make_unique<ListMultirangeOperationImpl<Insert>>(std::move(nested));
    }

    bool isWellFormed(const Operation& operation)
    {
        try
        {
            BatchAdmission(hostile, countSlots(_document)).requireWellFormed(operation);
            return true;
        }
        catch (const InvalidOperationError& error)
        {
            ++_counts._faults[error.getFault()];
            return false;
        }
    }

    /// All that is done with an operation that came in, before it is known whether it fits.
    void cross(const Operation& operation)
    {
        const BaseOperationTransformer& transformer = _replica.getTransformer();
        const OperationUPtr copy = cloneOperation(operation);
        EXPECT_TRUE(areDeeplyEqual(*copy, operation));
        static_cast<void>(transformer.include(*_colleagues, operation, TieResolveCondition::FirstWins));
        static_cast<void>(operation.getPseudoIdentity(transformer));
    }

    /// Whether the colleague's operation happens as it is.
    bool executeColleagues()
    {
        OperationUPtr changed;
        if (!_replica.getExecutor().executeAndChangeIfNeeded(*_colleagues, changed))
        {
            return true;
        }
        makeAgain();
        return false;
    }

    /// As a server does it: what happened is what happens again. A repair of a text may leave something to repair, and
    /// can't always be taken back; then the document is made again, and what was left is what is to happen.
    void execute(OperationUPtr planned)
    {
        SCOPED_TRACE(describe(*planned));
        AdmittingExecutor executor(_replica.getExecutor(), *_replica.getAdapter());
        OperationUPtr changed;
        for (int attempt = 0; attempt < 8; ++attempt)
        {
            try
            {
                executor.executeAndChangeIfNeeded(*planned, changed);
            }
            catch (const Zem::AssertionFailure&)
            {
                ++_counts._refusedByDocument;
                makeAgain();
                return;
            }
            if (!changed)
            {
                break;
            }
            makeAgain();
            planned = std::move(changed);
        }
        ASSERT_FALSE(changed);
        for (const OperationFault misfit : executor.getMisfits())
        {
            ++_counts._misfits[misfit];
        }
        ++_counts._wereExecuted;
        EXPECT_TRUE(checkInvariants(_replica.getDocument()).empty());
        passBy(*planned);
        takeBack(executor, *planned);
    }

    /// What happened is in the history of everybody: nobody may come to harm by it.
    void passBy(const Operation& happened)
    {
        const BaseOperationTransformer& transformer = _replica.getTransformer();
        const OperationUPtr legal = makeLegal(_before);
        const OperationUPtr beside = transformer.include(*legal, happened, TieResolveCondition::SecondWins);
        const OperationUPtr behind = transformer.include(happened, *legal, TieResolveCondition::FirstWins);
        EXPECT_TRUE(beside && behind);
    }

    void takeBack(AdmittingExecutor& executor, Operation& happened)
    {
        // The letter of an atomic run, which may have come in front of a block on the way.
        const bool bringsAtomicRun = describe(happened).find('~') != std::string::npos;
        const bool canBeExact = !bringsAtomicRun && !hasOpenParagraph(_replica.getDocument()) && !hasSetting(happened);
        bool isAsBefore = false;
        try
        {
            executor.reverse(happened);
            isAsBefore = _replica.getDocument() == _before;
        }
        catch (const Zem::AssertionFailure& failure)
        {
            EXPECT_FALSE(canBeExact) << failure.what();
        }
        EXPECT_TRUE(isAsBefore || !canBeExact) << describe(happened);
        ++_counts._wereReversed;
        if (!isAsBefore)
        {
            makeAgain();
        }
    }

    /// Whether a paragraph whose last run is atomic stands in front of an atomic block. What led there can't always be
    /// taken back; servers and clients take a copy of the document then.
    bool hasOpenParagraph(const DOM::Document& document)
    {
        const Places places = findPlaces(_setup._kind, document, _random);
        return std::any_of(places._texts.begin(), places._texts.end(),
                           [](const TextPlace& place) { return hasOpenParagraph(place._text->getBlocks()); });
    }

    static bool hasOpenParagraph(const DOM::Blocks& blocks)
    {
        for (std::size_t index = 1; index < blocks.size(); ++index)
        {
            const auto* paragraph = cast<DOM::Paragraph>(blocks[index - 1].get());
            if (paragraph && !cast<DOM::Paragraph>(blocks[index].get()) && !paragraph->getRuns().empty() &&
                paragraph->getRuns().back()->getKind() != DOM::RunKind::TextRun)
            {
                return true;
            }
        }
        return false;
    }

    void makeAgain()
    {
        _replica.replaceDocument(_before, {});
    }

    Random _random;
    Setup _setup;
    /// What both know.
    DOM::Document _document;
    /// What the operation is executed on.
    DOM::Document _before = _document;
    Replica _replica;
    HostileOperations _hostile;
    std::shared_ptr<Zem::DOMCollaboration::DocumentPositionTransformer> _positions;
    OperationUPtr _colleagues;
    Counts& _counts;
};

std::string judge(const Operation& operation)
{
    try
    {
        BatchAdmission(hostile, 1000).requireWellFormed(operation);
        return describe(operation);
    }
    catch (const InvalidOperationError& error)
    {
        return error.what();
    }
}

} // namespace

TEST(HostileOperations, AreRefusedOrDoNoHarm)
{
    Counts counts;
    for (unsigned long seed = 1; seed <= 40; ++seed)
    {
        Stand stand(seed, counts);
        for (int number = 0; number < 500; ++number)
        {
            SCOPED_TRACE(testing::Message() << "seed " << seed << ", operation " << number);
            stand.playOperation();
            stand.playSelection();
            if (testing::Test::HasFailure())
            {
                return;
            }
        }
    }
    // Nearly all faults are come by at random.
    EXPECT_GT(counts._faults.size(), 30u);
    EXPECT_GT(counts._misfits.size(), 6u);
    EXPECT_GT(counts._wereReversed, 1000u);
    EXPECT_EQ(counts._wereReversed, counts._wereExecuted);
}

TEST(HostileOperations, AreTheSameForTheSameSeed)
{
    const ::ZemFarm::Setup setup;
    const DOM::Document document = makeStartDocument(setup);
    const auto makeAll = [&]
    {
        Random random(7);
        HostileOperations operations(random, setup._kind, document, hostile);
        std::string all;
        for (int number = 0; number < 200; ++number)
        {
            all += std::to_string(operations.makeBase(10)) + judge(*operations.makeOperation()) + ' ';
        }
        return all;
    };
    EXPECT_EQ(makeAll(), makeAll());
}

} // namespace ZemFarm
