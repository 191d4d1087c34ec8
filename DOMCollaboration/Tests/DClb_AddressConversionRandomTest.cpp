#include "DClb_ElementPathUtils.h"

#include "DOMNodeAdapters/DClb_AddressModel.h"
#include "DOMNodeAdapters/DClb_BlocksAdapter.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"
#include "DOMNodeAdapters/DClb_RandomDocuments.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

using namespace Addresses;
using ElementPathUtils::convertNodeAddress;

namespace
{

constexpr unsigned long seedsCount = 150;

void expectAddressesOfModel(const DocumentAdapterWithNodeAdapter& document, const AddressModel::Nodes& nodes)
{
    for (const AddressModel::Node& node : nodes._twoWay)
    {
        SCOPED_TRACE(print(node._native) + " and " + print(node._operation));
        ASSERT_EQ(print(node._operation), print(convertNodeAddress(document, node._native)));
        ASSERT_EQ(print(node._native), print(convertNodeAddress(document, node._operation)));
        ASSERT_TRUE(node._operation == convertNodeAddress(document, node._native));
        ASSERT_TRUE(node._native == convertNodeAddress(document, node._operation));

        // A node is live where its address leads, so that trimming leaves the address alone.
        OperationNodeAddress trimmed = node._operation;
        ElementPathUtils::trimAddressToLive(document, trimmed);
        ASSERT_TRUE(trimmed == node._operation);
        ASSERT_NE(nullptr, ElementPathUtils::createDOMNodeAdapterIfPossible(document, node._operation));
        ASSERT_NE(nullptr, ElementPathUtils::createDOMNodeAdapter(document, node._native));
    }
    for (const AddressModel::Node& node : nodes._toOperationOnly)
    {
        SCOPED_TRACE(print(node._native));
        ASSERT_EQ(print(node._operation), print(convertNodeAddress(document, node._native)));
    }
}

template<class Adapter>
void expectRoundTripsInDocuments(bool isWorkbook, Native nativeText, Operation operationText, bool hasAllParts)
{
    unsigned long nodesCount = 0;
    for (unsigned long seed = 0; seed < seedsCount; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        DOM::Document document = RandomDocuments::Generator(seed).makeDocument(isWorkbook);
        const DOM::Document before = document;
        const Adapter adapter(document);
        AddressModel::Collector collector;
        collector.addDocument(document, nativeText, operationText, hasAllParts);
        const AddressModel::Nodes nodes = collector.takeNodes();
        ASSERT_NO_FATAL_FAILURE(expectAddressesOfModel(adapter, nodes));
        ASSERT_TRUE(before == document) << "Conversion must not change the document";
        nodesCount += nodes._twoWay.size();
    }
    EXPECT_GT(nodesCount, 20 * seedsCount) << "The documents are too poor to show anything";
}

} // namespace

TEST(AddressConversionRandom, EveryNodeOfATextDocumentComesBack)
{
    expectRoundTripsInDocuments<TextDocumentAdapter>(false, Native::BlockCollection, Operation::TextWithTombstones,
                                                     true);
}

TEST(AddressConversionRandom, EveryNodeOfAWorkbookComesBack)
{
    expectRoundTripsInDocuments<WorkbookDocumentAdapter>(true, Native::WorksheetCollection,
                                                         Operation::WorksheetCollection, true);
}

TEST(AddressConversionRandom, EveryNodeOfAPresentationComesBack)
{
    expectRoundTripsInDocuments<PresentationDocumentAdapter>(false, Native::BlockCollection,
                                                             Operation::TextWithTombstones, false);
}

TEST(AddressConversionRandom, EveryNodeOfADetachedTextComesBack)
{
    const DOM::Styles styles;
    const DOM::SharedObjectFactory factory;
    for (unsigned long seed = 0; seed < seedsCount; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        DOM::TextWithTombstones text = RandomDocuments::Generator(seed).makeText(2);
        const BlocksAdapterWithNodeAdapter adapter(text, styles, nullptr, nullptr, nullptr, nullptr, factory);
        AddressModel::Collector collector;
        collector.addDetachedText(text);
        ASSERT_NO_FATAL_FAILURE(expectAddressesOfModel(adapter, collector.takeNodes()));
    }
}

TEST(AddressConversionRandom, EveryDeadPlaceOfATextIsRefusedAndTrimmed)
{
    const DOM::Styles styles;
    const DOM::SharedObjectFactory factory;
    unsigned long deadCount = 0;
    for (unsigned long seed = 0; seed < seedsCount; ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        DOM::TextWithTombstones text = RandomDocuments::Generator(seed).makeText(1);
        const BlocksAdapterWithNodeAdapter adapter(text, styles, nullptr, nullptr, nullptr, nullptr, factory);
        for (const auto& range : text.getTombstones().getRanges())
        {
            for (unsigned long place = range.getBegin().get(); place < range.getEnd().get(); ++place)
            {
                OperationNodeAddress address = operation(fixed(Operation::TextWithTombstones), at(place));
                EXPECT_THROW(convertNodeAddress(adapter, address), AssertionFailure) << print(address);
                ElementPathUtils::trimAddressToLive(adapter, address);
                EXPECT_EQ(print(operation(fixed(Operation::TextWithTombstones))), print(address));
                ++deadCount;
            }
        }
    }
    EXPECT_GT(deadCount, seedsCount);
}

} // namespace Zem::DOMCollaboration
