// What strangers send beside people who work: it is an error of its sender, or refused, and nobody else notices.

#include "Sharing/CS_HostileCase.h"
#include "Sharing/CS_HostileClient.h"
#include "Sharing/CS_SessionCase.h"

#include "DOM_RunProps.h"

#include <functional>
#include <limits>

namespace Zem::CollaborationSession
{

using namespace HostileCase;

namespace
{

/// One user has typed an x that isn't sent, another has put a caret behind the b.
class AgainstAnybody : public testing::Test
{
protected:
    AgainstAnybody()
        : _session("{|ab}{|cd}")
        , _hostile(_session.getServer())
    {
        _session[1].putCaret(2);
        _session.settle();
        _session[0].replace(1, 1, "x");
    }

    ~AgainstAnybody() override
    {
        _session.settle();
        EXPECT_EQ(_session[1].getText(), "axb\ncd");
        EXPECT_TRUE(_session[0].getClient().takeRefusals().empty());
        EXPECT_TRUE(_session[1].getClient().findOwnSelection() != nullptr);
    }

    OperationUPtr own(OperationUPtr operation, unsigned long number = 0) const
    {
        return withID(std::move(operation), getFirstOperationID(_hostile.getID()) + number);
    }

    void expectError(OperationFault fault, std::shared_ptr<const Operation> operation,
                     std::shared_ptr<const Meaning> meaning = nullptr)
    {
        const Revision before = _session.getServer().getRevision();
        try
        {
            _hostile.send(std::move(operation), std::move(meaning));
            ADD_FAILURE() << "it was taken in";
        }
        catch (const InvalidOperationError& error)
        {
            EXPECT_EQ(error.getFault(), fault) << error.what();
        }
        EXPECT_EQ(_session.getServer().getRevision(), before);
    }

    SessionCase _session;
    HostileClient _hostile;
};

std::shared_ptr<const Meaning> makeMeaning(const std::function<void(Meaning&)>& change)
{
    auto meaning = std::make_shared<Meaning>();
    change(*meaning);
    return meaning;
}

LookSetting makeBold()
{
    return {Participant::makeCaret(2), LookTarget::Runs,
            LookChange::setField(&DOM::RunProps::_weight, DOM::FontWeight::Bold)};
}

OperationUPtr makeEmptyUnit()
{
    auto unit = compose(makeParts(TestSupport::restore(1, "a")), CompositeKind::Restoring);
    cast<CompositeOperation>(*unit).getParts().clear();
    return unit;
}

TEST_F(AgainstAnybody, AUnitWithoutPartsIsAnErrorOfItsSender)
{
    expectError(OperationFault::EmptyComposite, makeEmptyUnit());
    expectError(OperationFault::EmptyComposite, compose(makeParts(makeEmptyUnit(), own(TestSupport::mark(1, 2)))));
}

TEST_F(AgainstAnybody, ALeavingThatAscendsIsAnErrorOfItsSender)
{
    std::vector<Leave> ranges;
    for (const unsigned long slot : {1ul, 3ul})
    {
        ranges.push_back(makeRange<Leave>(nullptr, slot, slot + 1));
    }
    expectError(OperationFault::RangesNotDescending, makeRanges(ranges));
}

TEST_F(AgainstAnybody, ARangeOfFourQuintillionSlotsIsAnErrorOfItsSender)
{
    constexpr unsigned long huge = 1ul << 62U;
    expectError(OperationFault::IndexTooHigh, TestSupport::mark(0, huge));
    expectError(OperationFault::IndexTooHigh, make<Restore>(makeItems("x"), huge, huge + 1));
    expectError(OperationFault::TooManyNamedSlots, make<Insert>(makeItems("x"), 0, 1ul << 33U));
    expectError(OperationFault::CountOfOtherData, make<Insert>(makeItems("x"), 0, 1ul << 20U));
}

TEST_F(AgainstAnybody, IDsOfOthersAreErrorsOfTheirSender)
{
    const ClientID victim = _session[1].getClient().getID();
    expectError(OperationFault::ForeignID, withID(TestSupport::insert(2, "y"), getFirstOperationID(victim)));
    expectError(OperationFault::ForeignID,
                compose(makeParts(withID(TestSupport::insert(2, "y"), getFirstOperationID(victim)))));
}

TEST_F(AgainstAnybody, WhatARestoringDoesntBringAlongHasNoIDsOfOthers)
{
    const Operation::Id others = getFirstOperationID(_session[1].getClient().getID());
    expectError(OperationFault::ForeignID,
                compose(makeParts(own(TestSupport::restore(1, "|")), withID(TestSupport::insert(3, "y"), others)),
                        CompositeKind::Restoring));
}

TEST_F(AgainstAnybody, ABatchOfTooManyOperationsIsAnErrorOfItsSender)
{
    std::vector<OperationUPtr> parts;
    for (unsigned long number = 0; number <= AdmissionLimits()._operations; ++number)
    {
        parts.push_back(std::make_unique<EmptyOperation>());
    }
    expectError(OperationFault::TooManyOperations, compose(std::move(parts)));
}

TEST_F(AgainstAnybody, LooksThatAreNoneAreErrorsOfTheirSender)
{
    const auto expectLookError = [this](OperationFault fault, const std::function<void(LookSetting&)>& spoil)
    {
        expectError(fault, std::make_shared<EmptyOperation>(),
                    makeMeaning(
                        [&](Meaning& meaning)
                        {
                            meaning._looks.push_back(makeBold());
                            spoil(meaning._looks.back());
                        }));
    };
    expectLookError(OperationFault::NoStretchOfText,
                    [](LookSetting& look) { look._stretch.getSelectionBegin().getAddress().trimAtEnd(1); });
    expectLookError(OperationFault::IndexTooHigh,
                    [](LookSetting& look) { look._stretch = Participant::makeCaret(1ul << 60U); });
    expectLookError(OperationFault::InvalidEnumerator,
                    [](LookSetting& look) { look._target = static_cast<LookTarget>(9); });
    expectLookError(OperationFault::UnknownProperty,
                    [](LookSetting& look) { look._change = LookChange::clearField(&DOM::ParaProps::_alignment); });
    expectLookError(
        OperationFault::NumberNotFinite, [](LookSetting& look)
        { look._change = LookChange::setField(&DOM::RunProps::_fontSize, std::numeric_limits<float>::quiet_NaN()); });
}

TEST_F(AgainstAnybody, ABatchInFrontOfItsSendersLastActionIsAnErrorOfItsSender)
{
    _hostile.send(std::make_shared<EmptyOperation>());
    EXPECT_THROW(_hostile.sendAll({{std::make_shared<EmptyOperation>(), nullptr}}, 0), InvalidBatchError);
    EXPECT_NO_THROW(_hostile.sendAll({{std::make_shared<EmptyOperation>(), nullptr}}, 1));
}

TEST_F(AgainstAnybody, AnActionThatDidntHappenAsAWholeLeavesNoTraceOfWhatItsAuthorSaysThatWas)
{
    // The setting in front of the part that fails tells another value than the one that is there.
    const auto lie = [](float size)
    {
        auto props = std::make_shared<DOM::RunProps>();
        props->_fontSize = size;
        return props;
    };
    std::vector<OperationUPtr> parts =
        makeParts(set<PropertyId::RunPropertyId>(getElement(1), OperationDOMNodeType::Run, lie(77), lie(10)),
                  SessionCase::makeBadOperation());
    _hostile.send(compose(std::move(parts)), makeMeaning([](Meaning& meaning) { meaning._isAllOrNothing = true; }));
    ASSERT_EQ(_hostile.getRefusals().size(), 1u);
    EXPECT_EQ(_hostile.getRefusals().front()._reason, RefusalReason::NotWhole);
}

TEST(LaggingClient, IsToldSoIfItsBatchesAreBroughtPastTooMuchAndItDoesntComeNearer)
{
    ServerSettings settings;
    settings._limits._lag = 1000;
    SessionCase session("{|ab}", 1, settings);
    HostileClient lagging(session.getServer());
    for (int round = 0; round < 20; ++round)
    {
        session[0].replace(1, 1, "x");
        session.settle();
    }
    const Selection caret = Participant::makeCaret(2);
    unsigned long sentCount = 0;
    for (; sentCount < 1000 && !lagging.isTooFarBehind(); ++sentCount)
    {
        lagging.select(caret, 0);
    }
    EXPECT_EQ(sentCount, 51u);
    // What else it sends is passed over.
    EXPECT_NO_THROW(lagging.sendAll({{TestSupport::insert(2, "y"), nullptr}}, 0));
    session.settle();
    EXPECT_EQ(session.getServer().getRevision(), 20u);
}

TEST(LaggingClient, MaySelectAllTheTimeWhileOthersTypeAndItComesNearer)
{
    ServerSettings settings;
    settings._limits._lag = 50;
    SessionCase session("{|ab}", 1, settings);
    HostileClient lagging(session.getServer());
    for (Revision round = 0; round < 60; ++round)
    {
        session[0].replace(1, 1, "x");
        session.settle();
        lagging.select(Participant::makeCaret(2), round < 20 ? 0 : round - 20);
    }
    EXPECT_FALSE(lagging.isTooFarBehind());
}

TEST(FailingBatch, CostsTheServerOnlySoManyDocuments)
{
    ServerSettings settings;
    settings._limits._failures = 3;
    SessionCase session("{|ab}", 1, settings);
    HostileClient hostile(session.getServer());
    int replacementsCount = 0;
    session.getServer().setOnDocumentReplaced([&] { ++replacementsCount; });
    std::vector<Action> actions;
    for (int number = 0; number < 50; ++number)
    {
        actions.push_back({SessionCase::makeFailingOperation(), nullptr});
    }
    hostile.sendAll(std::move(actions), 0);
    EXPECT_EQ(replacementsCount, 3);
    ASSERT_EQ(hostile.getRefusals().size(), 50u);
    EXPECT_EQ(hostile.getRefusals()[2]._reason, RefusalReason::FitsNoDocument);
    EXPECT_EQ(hostile.getRefusals()[3]._reason, RefusalReason::HasNoPlace);
    session.settle();
}

TEST(FailingBatch, IsBroughtPastOnlySoMuch)
{
    ServerSettings settings;
    settings._limits._passedRanges = 10000;
    SessionCase session("{|ab}", 1, settings);
    HostileClient hostile(session.getServer());
    for (int round = 0; round < 10; ++round)
    {
        session[0].setRunLook(0, 1, LookChange::setField(&DOM::RunProps::_fontSize, 10.f + static_cast<float>(round)));
        session.settle();
    }
    std::vector<Action> actions;
    for (int number = 0; number < 100; ++number)
    {
        actions.push_back({TestSupport::insert(3, "x"), nullptr});
    }
    hostile.sendAll(std::move(actions), 0);
    EXPECT_FALSE(hostile.getRefusals().empty());
    EXPECT_LT(hostile.getRefusals().size(), 100u);
    session.settle();
    EXPECT_EQ(session[0].getText(), "a" + std::string(100 - hostile.getRefusals().size(), 'x') + "b");
}

} // namespace

} // namespace Zem::CollaborationSession
