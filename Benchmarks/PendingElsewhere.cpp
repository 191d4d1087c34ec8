// What does it cost a client with n pending edits to take in m of a colleague who works elsewhere: n keystrokes in one
// cell or n properties of the document here, and m keystrokes in another cell there? With the short road, on which
// nothing is taken back, and without it. The m come in one by one, as they do while somebody types, or all in one call.

#include "JoinedUser.h"

#include "CE_SetPropertyOperation.h"
#include "DClb_NodeTypes.h"
#include "DClb_PropertyId.h"
#include "DClb_PropertyValues.h"
#include "DOM_Blocks.h"
#include "DOM_Table.h"
#include "DOM_TimeZone.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <vector>

namespace
{

using namespace Zem;
using namespace Zem::CollaborationSession;
using CollaborationEngine::OperationNodeAddress;
using DOMCollaboration::OperationDOMNodeType;
using DOMCollaboration::PropertyId;

enum Pending : long
{
    TypedInACell,
    DocumentProperties
};

OperationNodeAddress getCellText(unsigned long column)
{
    const auto makeChunk = [](OperationDOMNodeType nodeType)
    { return OperationNodeAddress::FixedChunk(convertOperationNodeType(nodeType)); };
    OperationNodeAddress address = TextEditor::getMainTextAddress();
    address.appendItems(NodeAddressing::AddressInList(0), makeChunk(OperationDOMNodeType::CellCollection),
                        NodeAddressing::AddressInTable(RowIndex(0), ColumnIndex(column)),
                        makeChunk(OperationDOMNodeType::TextWithTombstones));
    return address;
}

class User : public JoinedUser
{
public:
    User(Server& server, unsigned long column)
        : JoinedUser(server, getCellText(column))
    {
    }

    /// Each keystroke at the end, every fifth a backspace.
    void type(unsigned long keysCount)
    {
        unsigned long length = 0;
        for (unsigned long key = 1; key <= keysCount; ++key)
        {
            const bool isBackspace = key % 5 == 0;
            getEditor().replace(length - (isBackspace ? 1 : 0), length, isBackspace ? "" : "x");
            length += isBackspace ? -1UL : 1;
        }
    }

    void setTimeZones(unsigned long count)
    {
        using Value = DOMCollaboration::MapPropertyIdToSimpleDataValue<PropertyId::DocumentTimeZoneId>;
        constexpr auto nodeType = convertOperationNodeType(OperationDOMNodeType::DocumentProps);
        for (unsigned long done = 0; done < count; ++done)
        {
            const auto makeZone = [](unsigned long number)
            { return makeSharedConst<Value>(DOM::TimeZone(static_cast<short>(number % 24))); };
            CollaborationEngine::SetPropertyOperation setting(
                OperationNodeAddress{OperationNodeAddress::FixedChunk(nodeType)}, nodeType,
                convertPropertyId(PropertyId::DocumentTimeZoneId), makeZone(done), makeZone(done + 1));
            CollaborationEngine::OperationUPtr changedOp;
            getClient().getExecutor().executeAndChangeIfNeeded(setting, changedOp);
        }
    }
};

DOM::Document makeDocument()
{
    DOM::Document document;
    document.getTextWithTombstones().getBlocks().push_back(std::make_unique<DOM::Table>(1, 2));
    return document;
}

void makePending(User& user, Pending what, unsigned long count)
{
    if (what == TypedInACell)
    {
        user.type(count);
    }
    else
    {
        user.setTimeZones(count);
    }
}

void takeIn(benchmark::State& state, Pending what, bool oneByOne)
{
    const auto pendingCount = static_cast<unsigned long>(state.range(0));
    const auto remoteCount = static_cast<unsigned long>(state.range(1));
    const bool alwaysTakesBack = state.range(2) != 0;
    const DOM::Document document = makeDocument();
    for (auto _ : state)
    {
        Server server(DocumentKind::Text, document);
        User first(server, 0);
        User second(server, 1);
        first.getClient().setAlwaysTakesBack(alwaysTakesBack);
        // Who is to get keystroke by keystroke is sent them so.
        second.getClient().setComposesTyping(false);
        makePending(first, what, pendingCount);
        second.type(remoteCount);
        second.send(server);

        const auto begin = std::chrono::steady_clock::now();
        first.receive(oneByOne);
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());

        const unsigned long besideCount = first.getClient().getStatistics()._besidePendingCount;
        first.send(server);
        first.receive(false);
        second.receive(false);
        if (besideCount != (alwaysTakesBack ? 0 : remoteCount))
        {
            state.SkipWithError("Another road was taken");
        }
        if (!(first.getClient().getDocument() == server.getDocument()) ||
            !(second.getClient().getDocument() == server.getDocument()))
        {
            state.SkipWithError("The replicas differ");
        }
    }
}

void TypingPendingOneByOne(benchmark::State& state)
{
    takeIn(state, TypedInACell, true);
}

void TypingPendingAllAtOnce(benchmark::State& state)
{
    takeIn(state, TypedInACell, false);
}

void PropertiesPendingOneByOne(benchmark::State& state)
{
    takeIn(state, DocumentProperties, true);
}

void PropertiesPendingAllAtOnce(benchmark::State& state)
{
    takeIn(state, DocumentProperties, false);
}

void byCount(benchmark::internal::Benchmark* measured)
{
    measured->ArgNames({"pending", "remote", "takesBack"})->UseManualTime()->Unit(benchmark::kMillisecond);
    for (const long pending : {1, 30, 1000})
    {
        for (const long takesBack : {0, 1})
        {
            measured->Args({pending, 1000, takesBack});
        }
    }
}

BENCHMARK(TypingPendingOneByOne)->Apply(byCount);
BENCHMARK(TypingPendingAllAtOnce)->Apply(byCount);
BENCHMARK(PropertiesPendingOneByOne)->Apply(byCount);
BENCHMARK(PropertiesPendingAllAtOnce)->Apply(byCount);

} // namespace
