// What does it cost when two users who didn't see each other meet? One comes back with n pending keystrokes, and takes
// in m of the other; then the server takes in the n. And what does it cost to bring a caret past what others typed?

#include "JoinedUser.h"

#include "CE_ListMultirangeOperation.h"
#include "CE_MultirangeOperationUtils.h"
#include "DClb_DocumentPositionTransformer.h"
#include "DClb_NodeTypes.h"
#include "DClb_TextElement.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace
{

using namespace Zem;
using namespace Zem::CollaborationSession;

constexpr unsigned long linesCount = 1000;
constexpr unsigned long lineSize = 80;

DOM::Document makeDocument()
{
    Replica replica(DocumentKind::Text, DOM::Document());
    std::string text;
    for (unsigned long line = 0; line < linesCount; ++line)
    {
        text += (line == 0 ? "" : "\n") + std::string(lineSize, 'a');
    }
    TextEditor(replica.getAdapter(), replica.getExecutor(), replica.getNotifications(),
               TextEditor::getMainTextAddress())
        .replace(0, 0, text);
    return replica.getDocument();
}

class User : public JoinedUser
{
public:
    User(Server& server, bool composesTyping)
        : JoinedUser(server, TextEditor::getMainTextAddress())
    {
        getClient().setComposesTyping(composesTyping);
    }

    /// Bursts of 1 to 30 keystrokes, one of five a backspace, on every second line from `firstLine` on, or on the eight
    /// in the middle.
    void type(unsigned long keysCount, unsigned long firstLine, bool isHot)
    {
        std::mt19937_64 random(firstLine + 1);
        const auto pick = [&](unsigned long count)
        { return std::uniform_int_distribution<unsigned long>(0, count - 1)(random); };
        std::vector<unsigned long> lengths(linesCount, lineSize);
        while (keysCount > 0)
        {
            const unsigned long line = isHot ? linesCount / 2 + pick(8) : firstLine + 2 * pick(linesCount / 2);
            unsigned long begin = line;
            for (unsigned long before = 0; before < line; ++before)
            {
                begin += lengths[before];
            }
            unsigned long caret = pick(lengths[line] + 1);
            for (unsigned long burst = std::min(keysCount, 1 + pick(30)); burst > 0; --burst, --keysCount)
            {
                const bool isBackspace = caret > 0 && lengths[line] > 1 && pick(5) == 0;
                getEditor().replace(begin + caret - (isBackspace ? 1 : 0), begin + caret, isBackspace ? "" : "x");
                caret += isBackspace ? -1UL : 1;
                lengths[line] += isBackspace ? -1UL : 1;
            }
        }
    }
};

void rebase(benchmark::State& state, bool isHot)
{
    const auto keysCount = static_cast<unsigned long>(state.range(0));
    const bool composesTyping = state.range(1) != 0;
    const DOM::Document document = makeDocument();
    for (auto _ : state)
    {
        Server server(DocumentKind::Text, document);
        User first(server, composesTyping);
        User second(server, composesTyping);
        first.type(keysCount, 0, isHot);
        second.type(keysCount, 1, isHot);
        first.send(server);

        const auto begin = std::chrono::steady_clock::now();
        second.receive();
        second.send(server);
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count());

        first.receive();
        second.receive();
        if (!(first.getClient().getDocument() == server.getDocument()) ||
            !(second.getClient().getDocument() == server.getDocument()))
        {
            state.SkipWithError("The replicas differ");
        }
    }
}

void RebaseOnDifferentLines(benchmark::State& state)
{
    rebase(state, false);
}

void RebaseOnTheSameLines(benchmark::State& state)
{
    rebase(state, true);
}

/// A caret at the end of a text of 100,000 bytes, past as many insertions of one byte in front of it.
void CaretPastInsertions(benchmark::State& state)
{
    using namespace CollaborationEngine;
    using Insert = ListModificationOperation<InsertTag>;
    constexpr unsigned long operationsCount = 100000;
    const auto type =
        DOMCollaboration::convertOperationNodeType(DOMCollaboration::OperationDOMNodeType::TextWithTombstones);
    const auto items = makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(
        DOMCollaboration::TextWithTombstonesElementVector{short('x')});
    std::vector<OperationUPtr> operations;
    for (unsigned long index = 0; index < operationsCount; ++index)
    {
        operations.push_back(MultirangeOperationUtils::makeMultirangeOperationFromSingle(
            Insert(TextEditor::getMainTextAddress(), type, items,
                   IndexRange<unsigned long>::fromCount(index * 7919 % operationsCount, 1))));
    }
    const DOMCollaboration::DocumentPositionTransformer transformer;
    OperationNodeAddress address = TextEditor::getMainTextAddress();
    address.appendItems(NodeAddressing::AddressInList(operationsCount));
    for (auto _ : state)
    {
        NodeAddressWithTransformationData caret(address);
        for (const OperationUPtr& operation : operations)
        {
            transformer.include(*operation, caret);
        }
        if (boost::get<NodeAddressing::AddressInList>(caret.getAddress().getItem(1)).getIndex() != 2 * operationsCount)
        {
            state.SkipWithError("The caret isn't at the end any more");
        }
    }
    state.SetItemsProcessed(static_cast<long>(state.iterations() * operationsCount));
}

void byCount(benchmark::internal::Benchmark* measured)
{
    measured->ArgNames({"keys", "composed"})->UseManualTime()->Unit(benchmark::kMillisecond);
    for (const long composed : {1, 0})
    {
        for (const long keys : {100, 1000, 8000})
        {
            measured->Args({keys, composed});
        }
    }
}

BENCHMARK(RebaseOnDifferentLines)->Apply(byCount);
BENCHMARK(RebaseOnTheSameLines)->Apply(byCount);
BENCHMARK(CaretPastInsertions)->Unit(benchmark::kMillisecond);

} // namespace
