#include "Sharing/CS_HostileCase.h"

namespace Zem::CollaborationSession
{

using namespace HostileCase;
using TestSupport::insert;

TEST(ContentAdmission, TakesEveryKindOfContent)
{
    auto table = std::make_unique<DOM::Table>(3, 3);
    table->getOrCreateCell(RowIndex(1), ColumnIndex(1)).getTextWithTombstones() = TestSupport::makeText("{|ab[cd]}");
    table->setMergeProps(RowIndex(0), ColumnIndex(0), 1, 1);
    table->replaceRowWithTombstone(CollaborationUtils::IndexIncludingTombstones(2));
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(table)))), noFault);
    EXPECT_EQ(findFault(insertElement(makeBlock(makeNest(4)))), noFault);
    EXPECT_EQ(findFault(insertElement(makeBlock(std::make_unique<DOM::FieldBlock>()))), noFault);
    EXPECT_EQ(findFault(insertElement(makeBlock(std::make_unique<DOM::SectionTag>()))), noFault);
    EXPECT_EQ(findFault(insertElement(makeRun(std::make_unique<DOM::DrawingRun>()))), noFault);
    EXPECT_EQ(findFault(insertElement(makeRun(std::make_unique<DOM::BookmarkRun>("a", DOM::BookmarkEdge::End)))),
              noFault);
    EXPECT_EQ(findFault(insertElement(makeRun(std::make_unique<DOM::AnchorRun>(UUID())))), noFault);
    EXPECT_EQ(findFault(insertElement(makeRun(std::make_unique<DOM::FieldRun>()))), noFault);
    EXPECT_EQ(findFault(insertElement(makeRun(std::make_unique<DOM::BreakRun>()))), noFault);
    EXPECT_EQ(findFault(insertElement(makeRun(std::make_unique<DOM::TextRun>()))), noFault);
}

TEST(ContentAdmission, RefusesOperationsWithoutTheirData)
{
    EXPECT_EQ(findFault(make<Insert>(nullptr, 0, 1)), OperationFault::MissingData);
    EXPECT_EQ(findFault(shadow(make<Insert>(nullptr, 0, 1), Shadows{})), OperationFault::MissingData);
    EXPECT_EQ(findFault(make<Restore>(nullptr, 0, 1)), OperationFault::MissingData);
    EXPECT_EQ(findFault(onScripts<MapInsertTag>(makeStringKey("a"), nullptr)), OperationFault::MissingData);
    EXPECT_EQ(findFault(onRow(InsertLine(0, nullptr))), OperationFault::MissingData);
    EXPECT_EQ(findFault(onRow(RestoreLine(0, nullptr))), OperationFault::MissingData);
    EXPECT_EQ(findFault(onRow(InsertLine(0, std::make_shared<RowOrColumn>()))), OperationFault::MissingData);
    auto row = makeRow(getFirstOperationID(author));
    row->getCells().emplace_back(0, nullptr, false);
    EXPECT_EQ(findFault(onRow(InsertLine(0, row))), OperationFault::MissingData);
}

TEST(ContentAdmission, RefusesDataOfAnotherKind)
{
    const SharedConstPtr<ItemsCollection> numbers =
        makeSharedConst<SimpleItemsCollection<std::vector<int>>>(std::vector<int>{1});
    EXPECT_EQ(findFault(make<Insert>(numbers, 0, 1)), OperationFault::WrongData);
    EXPECT_EQ(findFault(make<Mark>(numbers, 0, 1)), OperationFault::WrongData);
    EXPECT_EQ(findFault(makeRange<Insert>(makeItems("a"), 0, 1, {}, number(OperationDOMNodeType::FrameCollection))),
              OperationFault::WrongData);
    EXPECT_EQ(findFault(onScripts<MapInsertTag>(makeStringKey("a"), makeSharedConst<SimpleDataValue<int>>(1))),
              OperationFault::WrongData);
    EXPECT_EQ(findFault(setOnDocument(convertPropertyId(PropertyId::DocumentTimeZoneId), true)),
              OperationFault::WrongData);
    const std::string outside = "kept by nobody";
    EXPECT_EQ(findFault(onScripts<MapInsertTag>(
                  makeStringKey("a"), makeSharedConst<SimpleDataValue<std::reference_wrapper<const std::string>>>(
                                          std::reference_wrapper<const std::string>(outside)))),
              OperationFault::WrongData);
    auto row = std::make_shared<RowOrColumn>();
    row->setProps(makeSharedConst<SimpleDataValue<int>>(1));
    EXPECT_EQ(findFault(onRow(MarkLine(0, row))), OperationFault::WrongData);
    auto withNoCell = makeRow(0);
    withNoCell->getCells().emplace_back(0, makeSharedConst<SimpleDataValue<int>>(1), false);
    EXPECT_EQ(findFault(onRow(MarkLine(0, withNoCell))), OperationFault::WrongData);
}

TEST(ContentAdmission, RefusesRangesThatClaimOtherCountsThanTheirData)
{
    EXPECT_EQ(findFault(make<Insert>(makeItems("ab"), 0, 3)), OperationFault::CountOfOtherData);
    EXPECT_EQ(findFault(make<Insert>(makeItems("ab"), 0, 40)), OperationFault::CountOfOtherData);
    EXPECT_EQ(findFault(make<Mark>(makeItems("ab"), 0, 1)), OperationFault::CountOfOtherData);
    EXPECT_EQ(findFault(make<Restore>(makeItems("ab"), 0, 1)), OperationFault::CountOfOtherData);
    EXPECT_EQ(findFault(make<Leave>(makeItems("ab"), 0, 1)), OperationFault::CountOfOtherData);
    // A range may claim whatever it likes: nothing is made by that number.
    AdmissionLimits limits;
    limits._namedSlots = greatest;
    EXPECT_EQ(findFault(make<Insert>(makeItems("ab"), 0, 1ul << 40U), limits), OperationFault::CountOfOtherData);
}

TEST(ContentAdmission, RefusesMissingElements)
{
    EXPECT_EQ(findFault(insertElement(SharedConstPtr<DOM::Block>())), OperationFault::MissingElement);
    EXPECT_EQ(findFault(insertElement(SharedConstPtr<DOM::Run>())), OperationFault::MissingElement);
    auto shape = std::make_unique<DOM::Shape>();
    shape->getTextWithTombstones().getBlocks().push_back(nullptr);
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(shape)))), OperationFault::MissingElement);
    auto withRun = std::make_unique<DOM::Shape>();
    auto paragraph = std::make_unique<DOM::Paragraph>();
    paragraph->getRuns().push_back(nullptr);
    withRun->getTextWithTombstones().getBlocks().push_back(std::move(paragraph));
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(withRun)))), OperationFault::MissingElement);
    auto table = std::make_unique<DOM::Table>(1, 1);
    table->getFrames().getElements().push_back(nullptr);
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(table)))), OperationFault::MissingElement);
    auto formatted = std::make_unique<DOM::Table>(1, 1);
    formatted->getConditionalFormats().getElements().push_back(nullptr);
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(formatted)))), OperationFault::MissingElement);
}

TEST(ContentAdmission, RefusesElementsThatBringWhatBelongsInOthers)
{
    auto paragraph = std::make_unique<DOM::Paragraph>();
    paragraph->getRuns().push_back(std::make_unique<DOM::TabRun>());
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(paragraph)))), OperationFault::ElementWithChildren);
    EXPECT_EQ(findFault(insertElement(makeRun(std::make_unique<DOM::TextRun>("a")))),
              OperationFault::ElementWithChildren);
}

TEST(ContentAdmission, RefusesElementsThatAreNoBytes)
{
    for (const short byte : {short{-128}, short{127}})
    {
        EXPECT_EQ(findFault(insertElement(byte)), noFault);
    }
    for (const short byte : {short{-129}, short{128}, std::numeric_limits<short>::max()})
    {
        EXPECT_EQ(findFault(insertElement(byte)), OperationFault::InvalidByte);
    }
}

TEST(ContentAdmission, RefusesValuesThatEnumerationsDoNotHave)
{
    const auto breakRun = [](int type)
    { return insertElement(makeRun(std::make_unique<DOM::BreakRun>(static_cast<DOM::BreakType>(type)))); };
    EXPECT_EQ(findFault(breakRun(2)), noFault);
    EXPECT_EQ(findFault(breakRun(3)), OperationFault::InvalidEnumerator);
}

TEST(ContentAdmission, RefusesNumbersThatAreNotFinite)
{
    for (const float number : {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
                               -std::numeric_limits<float>::infinity()})
    {
        EXPECT_EQ(findFault(setRunSize(3, number)), OperationFault::NumberNotFinite);
        auto shape = std::make_unique<DOM::Shape>();
        shape->setSize({number, 1});
        EXPECT_EQ(findFault(insertElement(makeBlock(std::move(shape)))), OperationFault::NumberNotFinite);
    }
    const DOM::BlockValue<FloatNumber> value{FloatNumber(std::numeric_limits<double>::quiet_NaN())};
    EXPECT_EQ(findFault(insertElement(makeBlock(std::make_unique<DOM::FieldBlock>(value)))),
              OperationFault::NumberNotFinite);
}

TEST(ContentAdmission, RefusesContentThatIsNotSound)
{
    using Storage = CollaborationUtils::TombstonesStorage;
    using Place = CollaborationUtils::IndexIncludingTombstones;
    auto shape = std::make_unique<DOM::Shape>();
    shape->getTextWithTombstones().getTombstones() = Storage({{Place(7), Place(8)}});
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(shape)))), OperationFault::BrokenContent);

    auto table = std::make_unique<DOM::Table>(1, 1);
    table->getFrames().getTombstones() = Storage({{Place(7), Place(8)}});
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(table)))), OperationFault::BrokenContent);
}

TEST(ContentAdmission, RefusesRangesThatDoNotIncrease)
{
    auto table = std::make_unique<DOM::Table>(1, 1);
    TableRange range;
    range._endRow = RowIndex(0);
    table->setFilterInfo(DOM::TableFilterInfo(range));
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(table)))), OperationFault::BrokenContent);
}

TEST(ContentAdmission, RefusesContentThatLiesTooDeep)
{
    EXPECT_EQ(findFault(insertElement(makeBlock(makeNest(16)))), noFault);
    EXPECT_EQ(findFault(insertElement(makeBlock(makeNest(17)))), OperationFault::ContentTooDeep);
    EXPECT_EQ(findFault(insertElement(makeBlock(makeNest(3000)))), OperationFault::ContentTooDeep);
}

TEST(ContentAdmission, RefusesTooManyElements)
{
    AdmissionLimits limits;
    limits._elements = 4;
    EXPECT_EQ(findFault(insert(0, "abcd"), limits), noFault);
    EXPECT_EQ(findFault(insert(0, "abcde"), limits), OperationFault::TooManyElements);
    EXPECT_EQ(findFault(make<Mark>(makeItems("abcde"), 0, 5), limits), OperationFault::TooManyElements);
    // Ways to claim many where few are.
    EXPECT_EQ(findFault(insertElement(makeBlock(std::make_unique<DOM::Table>(2, 3))), limits),
              OperationFault::TooManyElements);
    auto shape = std::make_unique<DOM::Shape>();
    shape->getTextWithTombstones() = TestSupport::makeText("[abcd]");
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(shape))), limits), OperationFault::TooManyElements);
}

TEST(ContentAdmission, AnElementThatIsSharedCountsEachTime)
{
    AdmissionLimits limits;
    limits._bytes = 100000;
    auto shape = std::make_unique<DOM::Shape>();
    shape->getTextWithTombstones().getBlocks().push_back(std::make_unique<DOM::Paragraph>());
    auto& paragraph = cast<DOM::Paragraph>(*shape->getTextWithTombstones().getBlocks().front());
    paragraph.getRuns().push_back(std::make_unique<DOM::TextRun>(std::string(2000, 'x')));
    const TextWithTombstonesElement element = makeBlock(std::move(shape));
    EXPECT_EQ(findFault(insertElement(element), limits), noFault);
    const auto items = makeSharedConst<TextWithTombstonesItems>(TextWithTombstonesElementVector(100, element));
    EXPECT_EQ(findFault(make<Insert>(items, 0, 100), limits), OperationFault::TooManyBytes);
}

TEST(ContentAdmission, RefusesTablesWithTooManyLines)
{
    constexpr unsigned long limit = 1ul << 20U;
    EXPECT_EQ(findFault(insertElement(makeBlock(std::make_unique<DOM::Table>(limit, 1)))), noFault);
    EXPECT_EQ(findFault(insertElement(makeBlock(std::make_unique<DOM::Table>(limit + 1, 1)))),
              OperationFault::IndexTooHigh);
    EXPECT_EQ(findFault(insertElement(makeBlock(std::make_unique<DOM::Table>(1, limit + 1)))),
              OperationFault::IndexTooHigh);
}

TEST(ContentAdmission, RefusesMergesThatCaptureTooMuch)
{
    auto table = std::make_unique<DOM::Table>(2, 2);
    table->setMergeProps(RowIndex(0), ColumnIndex(0), 1ul << 40U, 1);
    EXPECT_EQ(findFault(insertElement(makeBlock(std::move(table)))), OperationFault::IndexTooHigh);
}

TEST(ContentAdmission, RefusesValuesThatAreTooBig)
{
    AdmissionLimits limits;
    limits._valueBytes = 1000;
    EXPECT_EQ(findFault(insertScript("a", std::string(900, 'x')), limits), noFault);
    EXPECT_EQ(findFault(insertScript("a", std::string(1000, 'x')), limits), OperationFault::ValueTooBig);
    const std::vector<UUID> uuids(100);
    EXPECT_EQ(findFault(setComments(uuids), limits), OperationFault::ValueTooBig);
}

TEST(ContentAdmission, RefusesTooManyBytes)
{
    AdmissionLimits limits;
    limits._bytes = 1000;
    BatchAdmission batch(author, slotsBound, limits);
    batch.requireWellFormed(*insertScript("a", std::string(600, 'x')));
    try
    {
        batch.requireWellFormed(*insertScript("b", std::string(600, 'x')));
        FAIL();
    }
    catch (const InvalidOperationError& error)
    {
        EXPECT_EQ(error.getFault(), OperationFault::TooManyBytes);
    }
}

TEST(ContentAdmission, RefusesUnknownProperties)
{
    for (const unsigned long propertyId : {0ul, 33ul, 66ul, 75ul, greatest})
    {
        EXPECT_EQ(findFault(setOnDocument(propertyId, true)), OperationFault::UnknownProperty);
    }
    EXPECT_EQ(findFault(setOnDocument(convertPropertyId(PropertyId::CommentResolvedId), true)),
              OperationFault::UnknownProperty);
    const auto value = makeSharedConst<SimpleDataValue<bool>>(true);
    EXPECT_EQ(findFault(onRow(SetRowOrColumnPropertyOperation(0, 47, value, value))), OperationFault::UnknownProperty);
}

TEST(ContentAdmission, RefusesOperationsOnMapsWithoutKeys)
{
    EXPECT_EQ(findFault(onScripts<MapRemoveTag>(nullptr, nullptr)), OperationFault::MissingKey);
}

TEST(ContentAdmission, RefusesKeysOfAnotherKind)
{
    EXPECT_EQ(findFault(onScripts<MapRemoveTag>(makeUUIDKey(), nullptr)), OperationFault::WrongKey);
    const auto number = makeSharedConst<NodeAddressing::SimpleValueMapKey<int>>(1);
    EXPECT_EQ(findFault(setRunOn(getMainText().appendItems(NodeAddressing::AddressInMap(number)))),
              OperationFault::WrongKey);
}

TEST(ContentAdmission, RefusesKeysThatAreTooLong)
{
    EXPECT_EQ(findFault(insertScript(std::string(1024, 'a'), "")), noFault);
    EXPECT_EQ(findFault(insertScript(std::string(1025, 'a'), "")), OperationFault::KeyTooLong);
}

TEST(ContentAdmission, RefusesLinesWhoseCellsDoNotAscend)
{
    auto row = makeRow(getFirstOperationID(author));
    row->getCells().emplace_back(1, makeCellValue(), false);
    row->getCells().emplace_back(1, makeCellValue(), false);
    EXPECT_EQ(findFault(onRow(InsertLine(0, row))), OperationFault::CellsNotAscending);
}

TEST(ContentAdmission, LooksAtAllOfALineThoughNobodyExecutesItYet)
{
    auto row = makeRow(getFirstOperationID(author));
    row->getCells().emplace_back(1, makeCellValue(), false);
    EXPECT_EQ(findFault(onRow(InsertLine(0, row))), OperationFault::NodeTypeWithoutOperations);
    EXPECT_EQ(findFault(onRow(MarkLine(0, nullptr))), OperationFault::NodeTypeWithoutOperations);
    EXPECT_EQ(findFault(onRow(RestoreLine(0, row))), OperationFault::NodeTypeWithoutOperations);
    EXPECT_EQ(findFault(onRow(RowOrColumnLeaveTombstoneOperation(0, row))), OperationFault::NodeTypeWithoutOperations);
    const auto style = makeSharedConst<SimpleDataValue<RowStylePtr>>(RowStylePtr());
    EXPECT_EQ(findFault(onRow(SetRowOrColumnPropertyOperation(0, 46, style, style))),
              OperationFault::NodeTypeWithoutOperations);
    row->getCells().emplace_back(greatest, makeCellValue(), false);
    EXPECT_EQ(findFault(onRow(InsertLine(0, row))), OperationFault::IndexTooHigh);
}

} // namespace Zem::CollaborationSession
