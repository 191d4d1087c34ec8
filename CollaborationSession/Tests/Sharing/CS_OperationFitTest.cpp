#include "Sharing/CS_HostileCase.h"

#include "CE_AfterDocumentActionSignal.h"
#include "DOM_HeaderFooterPair.h"
#include "Sharing/CS_OperandTypes.h"
#include "Sharing/CS_Replica.h"

#include <algorithm>

namespace Zem::CollaborationSession
{

using namespace HostileCase;
using TestSupport::insert;
using TestSupport::mark;
using TestSupport::restore;

namespace
{

/// A shape, `ab`, two dead slots, `c`, a section tag; a table stands in front of all. There is a script "a".
class OperationFit : public ::testing::Test
{
protected:
    OperationFit()
        : _replica(DocumentKind::Text, makeDocument())
    {
        execute(*insertBlock(getMainText(), std::make_shared<const DOM::Table>(2, 2)));
        execute(*insertBlock(getCellText(1, 1), std::make_shared<const DOM::FieldBlock>()));
        execute(*insertScript("a", ""));
    }

    static DOM::Document makeDocument()
    {
        return SessionCase::makeDocument("#{|ab[cd]e}$");
    }

    void execute(Operation& operation)
    {
        OperationUPtr changed;
        ASSERT_FALSE(_replica.getExecutor().executeAndChangeIfNeeded(operation, changed));
    }

    std::optional<OperationFault> findMisfitOf(const OperationUPtr& operation) const
    {
        return findMisfit(cast<AtomicOperation>(*operation), *_replica.getAdapter());
    }

    /// What is done to one element.
    std::optional<OperationFault> findMisfitAt(OperationNodeAddress address) const
    {
        return findMisfitOf(set<PropertyId::RunPropertyId>(std::move(address), OperationDOMNodeType::Run,
                                                           std::shared_ptr<DOM::RunProps>(),
                                                           std::shared_ptr<DOM::RunProps>()));
    }

    Replica _replica;
};

// The slots: the table, the shape, { | a b . . e } $, and the end.
constexpr unsigned long runSlot = 3;
constexpr unsigned long deadSlot = 6;
constexpr unsigned long slotsCount = 11;

Selection select(const OperationNodeAddress& address)
{
    const Selection::SelectionPosition position(address);
    return Selection(SelectionMode::Text, position, position);
}

} // namespace

TEST_F(OperationFit, TakesWhatFits)
{
    EXPECT_EQ(findMisfitOf(insert(slotsCount, "{}")), std::nullopt);
    EXPECT_EQ(findMisfitOf(mark({{8, 9}, {4, 6}})), std::nullopt);
    EXPECT_EQ(findMisfitOf(mark(10, slotsCount)), std::nullopt);
    EXPECT_EQ(findMisfitOf(restore(deadSlot, "cd")), std::nullopt);
    EXPECT_EQ(findMisfitOf(make<Leave>(nullptr, 6, 8)), std::nullopt);
    EXPECT_EQ(findMisfitOf(inText(getCellText(0, 0), insert(0, "{}"))), std::nullopt);
    EXPECT_EQ(findMisfitAt(getElement(runSlot)), std::nullopt);
    EXPECT_EQ(findMisfitOf(setTimeZone(1)), std::nullopt);
    EXPECT_EQ(findMisfitOf(insertScript("b", "")), std::nullopt);
    EXPECT_EQ(findMisfitOf(onScripts<MapRemoveTag>(makeStringKey("a"), nullptr)), std::nullopt);
}

TEST_F(OperationFit, RefusesAddressesThatLeadNowhere)
{
    EXPECT_EQ(findMisfitAt(getElement(slotsCount + 1)), OperationFault::NoSuchNode);
    EXPECT_EQ(findMisfitAt(getCellText(5, 0)), OperationFault::NoSuchNode);
    EXPECT_EQ(findMisfitAt(getElement(runSlot).appendItems(NodeAddressing::AddressInList(0))),
              OperationFault::NoSuchNode);
    EXPECT_EQ(findMisfitAt(makeFixed(OperationDOMNodeType::Run)), OperationFault::NoSuchNode);
    const NodeAddressing::AddressInMap byString(makeStringKey("a"));
    EXPECT_EQ(findMisfitAt(makeFixed(OperationDOMNodeType::CommentCollection).appendItems(byString)),
              OperationFault::NoSuchNode);
    EXPECT_EQ(findMisfitAt(makeFixed(OperationDOMNodeType::ScriptCollection).appendItems(byString)),
              OperationFault::NoSuchNode);
}

TEST_F(OperationFit, HeadersAndFootersHaveTextsOnly)
{
    DOM::Document document;
    DOM::HeaderFooterPair pair{UUID()};
    document.getHeadersFooters().insert(std::move(pair));
    const Replica replica(DocumentKind::Text, document);
    const auto find = [&](OperationDOMNodeType nodeType)
    {
        OperationNodeAddress address = makeFixed(OperationDOMNodeType::HeaderFooterPairCollection);
        address.appendItems(NodeAddressing::AddressInMap(makeUUIDKey()), makeChunk(nodeType),
                            makeChunk(OperationDOMNodeType::TextWithTombstones));
        return findMisfit(cast<AtomicOperation>(*inText(address, insert(0, "{}"))), *replica.getAdapter());
    };
    EXPECT_EQ(find(OperationDOMNodeType::Header), std::nullopt);
    EXPECT_EQ(find(OperationDOMNodeType::Footer), std::nullopt);
    EXPECT_EQ(find(OperationDOMNodeType::TextWithTombstones), OperationFault::NoSuchNode);
}

TEST_F(OperationFit, RefusesAddressesThatLeadToWhatWasRemoved)
{
    EXPECT_EQ(findMisfitAt(getElement(deadSlot)), OperationFault::DeadNode);
    execute(*mark(0, 1));
    EXPECT_EQ(findMisfitOf(inText(getCellText(0, 0), insert(0, "{}"))), OperationFault::DeadNode);
}

TEST_F(OperationFit, RefusesNodesOfAnotherType)
{
    EXPECT_EQ(findMisfitAt(getElement(2)), OperationFault::NodeOfOtherType);
    EXPECT_EQ(findMisfitAt(getElement(4)), OperationFault::NodeOfOtherType);
    EXPECT_EQ(findMisfitAt(getMainText()), OperationFault::NodeOfOtherType);
    EXPECT_EQ(findMisfitOf(inText(getElement(runSlot), mark(0, 1))), OperationFault::NodeOfOtherType);
    EXPECT_EQ(findMisfitOf(inText({}, mark(0, 1))), OperationFault::NodeOfOtherType);
}

TEST_F(OperationFit, RefusesRangesBehindTheEnd)
{
    EXPECT_EQ(findMisfitOf(insert(slotsCount + 1, "{}")), OperationFault::BehindTheEnd);
    EXPECT_EQ(findMisfitOf(mark(slotsCount, slotsCount + 1)), OperationFault::BehindTheEnd);
    EXPECT_EQ(findMisfitOf(restore(slotsCount, "x")), OperationFault::BehindTheEnd);
    EXPECT_EQ(findMisfitOf(make<Leave>(nullptr, 6, 12)), OperationFault::BehindTheEnd);
}

TEST_F(OperationFit, TombstonesAtTheEndBelongToTheList)
{
    execute(*mark(10, 11));
    EXPECT_EQ(findMisfitOf(restore(10, "$")), std::nullopt);
    EXPECT_EQ(findMisfitOf(insert(11, "$")), std::nullopt);
    EXPECT_EQ(findMisfitOf(insert(12, "$")), OperationFault::BehindTheEnd);
    EXPECT_EQ(findMisfitOf(make<Leave>(nullptr, 10, 12)), OperationFault::BehindTheEnd);
}

TEST_F(OperationFit, RefusesToRemoveWhatIsDead)
{
    EXPECT_EQ(findMisfitOf(mark(5, 7)), OperationFault::DeadSlots);
}

TEST_F(OperationFit, RefusesToRestoreOrLeaveWhatIsLive)
{
    EXPECT_EQ(findMisfitOf(restore(7, "de")), OperationFault::LiveSlots);
    EXPECT_EQ(findMisfitOf(make<Leave>(nullptr, 7, 9)), OperationFault::LiveSlots);
    // One that stands for a marking that doesn't take place may be anywhere.
    const std::vector<Leave> idle{Leave(getMainText(), textType, nullptr, Range(7, 9), 0)};
    EXPECT_EQ(findMisfitOf(makeRanges(idle)), std::nullopt);
}

TEST_F(OperationFit, RefusesRestoringsWithoutData)
{
    EXPECT_EQ(findMisfitOf(make<Restore>(nullptr, 6, 8)), OperationFault::MissingData);
}

TEST_F(OperationFit, RefusesRemovalsForGood)
{
    EXPECT_EQ(findMisfitOf(make<Remove>(nullptr, 4, 5)), OperationFault::RemovalForGood);
}

TEST_F(OperationFit, RefusesFormulasOutsideOfCells)
{
    const TextWithTombstonesElement formula = makeBlock(std::make_unique<DOM::FieldBlock>());
    EXPECT_EQ(findMisfitOf(make<Insert>(makeItems(formula), 0, 1)), OperationFault::FormulaOutsideCell);
    // Executors look at the first element of the first range alone.
    std::vector<Insert> ranges{makeRange<Insert>(makeItems("{"), 2, 3), makeRange<Insert>(makeItems(formula), 0, 1)};
    EXPECT_EQ(findMisfitOf(makeRanges(ranges)), OperationFault::FormulaOutsideCell);
    EXPECT_EQ(findMisfitOf(inText(getShapeText(), make<Insert>(makeItems(formula), 0, 1))),
              OperationFault::FormulaOutsideCell);
    EXPECT_EQ(findMisfitOf(inText(getCellText(0, 0), make<Insert>(makeItems(formula), 0, 1))), std::nullopt);
    const auto contents = std::make_shared<const DOM::FieldBlock>(DOM::TableOfContentsInfo());
    EXPECT_EQ(findMisfitOf(insertBlock(getMainText(), contents)), std::nullopt);
}

TEST_F(OperationFit, RefusesKeysThatAreThereOrNot)
{
    EXPECT_EQ(findMisfitOf(insertScript("a", "")), OperationFault::TakenKey);
    EXPECT_EQ(findMisfitOf(onScripts<MapRemoveTag>(makeStringKey("b"), nullptr)), OperationFault::FreeKey);
    const auto leave = [](unsigned long holdersCount)
    {
        return std::make_unique<MapLeaveRemovedOperation>(makeFixed(OperationDOMNodeType::ScriptCollection),
                                                          number(OperationDOMNodeType::ScriptCollection),
                                                          makeStringKey("a"), nullptr, holdersCount);
    };
    EXPECT_EQ(findMisfitOf(leave(1)), OperationFault::TakenKey);
    EXPECT_EQ(findMisfitOf(leave(0)), std::nullopt);
}

TEST_F(OperationFit, SelectionsLieInTheDocument)
{
    const auto find = [&](const OperationNodeAddress& address)
    { return findMisfit(select(address), *_replica.getAdapter()); };
    EXPECT_EQ(find(getElement(slotsCount)), std::nullopt);
    EXPECT_EQ(find(getElement(deadSlot)), std::nullopt);
    EXPECT_EQ(find(getElement(deadSlot).appendItems(NodeAddressing::AddressInList(100))), std::nullopt);
    EXPECT_EQ(find(getElement(slotsCount + 1)), OperationFault::NoSuchNode);
    Selection selection = select(getElement(0));
    selection.getSelectionEnd().getAddress() = getElement(slotsCount + 1);
    EXPECT_EQ(findMisfit(selection, *_replica.getAdapter()), OperationFault::NoSuchNode);
}

TEST_F(OperationFit, ExecutorLeavesOutWhatDoesNotFit)
{
    AdmittingExecutor executor(_replica.getExecutor(), *_replica.getAdapter());
    const DOM::Document before = _replica.getDocument();
    OperationUPtr changed;
    EXPECT_TRUE(executor.executeAndChangeIfNeeded(*make<Leave>(nullptr, 4, 5), changed));
    EXPECT_TRUE(cast<EmptyOperation>(changed.get()));
    EXPECT_TRUE(before == _replica.getDocument());
    EXPECT_EQ(executor.getMisfits(), std::vector{OperationFault::LiveSlots});
}

TEST_F(OperationFit, ExecutorLooksAtEachPartWhereItRuns)
{
    AdmittingExecutor executor(_replica.getExecutor(), *_replica.getAdapter());
    const DOM::Document before = _replica.getDocument();
    // The leaving finds dead what the marking in front of it removed; the last part is behind the end.
    const OperationUPtr composite =
        compose(makeParts(mark(4, 5), make<Leave>(nullptr, 4, 5), mark(slotsCount, slotsCount + 1)));
    OperationUPtr changed;
    ASSERT_TRUE(executor.executeAndChangeIfNeeded(*composite, changed));
    EXPECT_EQ(cast<CompositeOperation>(*changed).getParts().size(), 2u);
    EXPECT_EQ(executor.getMisfits(), std::vector{OperationFault::BehindTheEnd});
    executor.reverse(*changed);
    EXPECT_TRUE(before == _replica.getDocument());
}

TEST_F(OperationFit, ExecutorRaisesItsOwnSignalOnce)
{
    AdmittingExecutor executor(_replica.getExecutor(), *_replica.getAdapter());
    int ownCount = 0;
    int innerCount = 0;
    executor.getAfterDocumentActionSignal().connect([&] { ++ownCount; });
    _replica.getExecutor().getAfterDocumentActionSignal().connect([&] { ++innerCount; });
    OperationUPtr changed;
    executor.executeAndChangeIfNeeded(*compose(makeParts(mark(4, 5), mark(5, 6))), changed);
    EXPECT_EQ(ownCount, 1);
    EXPECT_EQ(innerCount, 0);
}

TEST(CountSlots, IsABoundOfAllLists)
{
    Replica replica(DocumentKind::Text, SessionCase::makeDocument("{|ab[cd]e}"));
    EXPECT_EQ(countSlots(replica.getDocument()), 8u);
    const OperationUPtr insertion = insertBlock(getMainText(), std::make_shared<const DOM::Table>(2, 3));
    EXPECT_EQ(countInsertedSlots(*insertion), 6u);
    EXPECT_EQ(countInsertedSlots(*compose(makeParts(insert(0, "xy"), shadow(insert(0, "z"), Shadows{}), mark(0, 1)))),
              3u);
    EXPECT_EQ(countInsertedSlots(*onRow(InsertLine(0, makeRow(0)))), 1u);
    EXPECT_EQ(countInsertedSlots(EmptyOperation()), 0u);
    OperationUPtr changed;
    replica.getExecutor().executeAndChangeIfNeeded(*insertion, changed);
    const OperationUPtr inCell = inText(getCellText(0, 0), insert(0, "{|abc}"));
    replica.getExecutor().executeAndChangeIfNeeded(*inCell, changed);
    EXPECT_EQ(countSlots(replica.getDocument()), 8u + 6u + 6u);
}

namespace
{

template<PropertyId id>
SharedConstPtr<DataValue> makeDefault()
{
    return makeSharedConst<MapPropertyIdToSimpleDataValue<id>>();
}

const std::vector<std::pair<PropertyId, SharedConstPtr<DataValue>>>& getDefaults()
{
    static const std::vector<std::pair<PropertyId, SharedConstPtr<DataValue>>> defaults{
#define ZEM_DEFAULT_VALUE(number, name, ...) {PropertyId::name, makeDefault<PropertyId::name>()},
        ZEM_PROPERTIES(ZEM_DEFAULT_VALUE)
#undef ZEM_DEFAULT_VALUE
    };
    return defaults;
}

bool executes(Replica& replica, Operation& operation)
{
    try
    {
        OperationUPtr changed;
        replica.getExecutor().executeAndChangeIfNeeded(operation, changed);
        return true;
    }
    catch (const std::exception&)
    {
        return false;
    }
}

} // namespace

TEST(OperandTypes, HaveTheVeryPropertiesThatExecutorsSet)
{
    DOM::Document document = SessionCase::makeDocument("{|a}$");
    auto& blocks = document.getTextWithTombstones().getBlocks();
    auto& paragraph = cast<DOM::Paragraph>(*blocks.front());
    paragraph.getRuns().insert(paragraph.getRuns().begin(), std::make_unique<DOM::DrawingRun>());
    blocks.push_back(std::make_unique<DOM::FieldBlock>(DOM::TableOfContentsInfo()));
    Replica replica(DocumentKind::Text, document);
    const std::vector<std::pair<OperationDOMNodeType, OperationNodeAddress>> nodes{
        {OperationDOMNodeType::ParagraphTag, getElement(0)},
        {OperationDOMNodeType::Run, getElement(1)},
        {OperationDOMNodeType::SectionTag, getElement(5)},
        {OperationDOMNodeType::FieldBlock, getElement(6)},
        {OperationDOMNodeType::DocumentProps, makeFixed(OperationDOMNodeType::DocumentProps)}};
    for (const auto& [nodeType, address] : nodes)
    {
        const auto type = findOperandType(number(nodeType));
        ASSERT_TRUE(type && type->_isExecuted);
        for (const auto& [id, value] : getDefaults())
        {
            SetPropertyOperation setting(address, number(nodeType), convertPropertyId(id), value, value);
            ASSERT_EQ(findMisfit(setting, *replica.getAdapter()), std::nullopt);
            const bool isListed =
                std::find(type->_properties.begin(), type->_properties.end(), id) != type->_properties.end();
            EXPECT_EQ(executes(replica, setting), isListed) << number(nodeType) << ", " << convertPropertyId(id);
        }
    }
}

TEST(OperandTypes, EveryTypeOfNodeWithoutAnExecutorRefusesAll)
{
    Replica replica(DocumentKind::Text, DOM::Document());
    for (unsigned long nodeType = 0; nodeType < operationNodeTypesCount; ++nodeType)
    {
        const auto type = findOperandType(nodeType);
        if (type && type->_isExecuted)
        {
            continue;
        }
        SetPropertyOperation setting({}, nodeType, 34, getDefaults().front().second, getDefaults().front().second);
        try
        {
            OperationUPtr changed;
            replica.getExecutor().executeAndChangeIfNeeded(setting, changed);
            ADD_FAILURE() << nodeType;
        }
        catch (const AssertionFailure& failure)
        {
            EXPECT_STREQ(failure.what(), "Operation execution should never happen for this node type.");
        }
    }
}

} // namespace Zem::CollaborationSession
