// What the conversion of an address costs by the depth of nested tables, and by the blocks that stand in front of the
// place in each text. Each benchmark checks its answer once, before the clock runs.

#include "DClb_ElementPathUtils.h"

#include "DOMNodeAdapters/DClb_DocumentAdapter.h"

#include "DOM_Blocks.h"
#include "DOM_Document.h"
#include "DOM_Runs.h"

#include "Util_Assert.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace
{

using namespace Zem;
using namespace Zem::DOMCollaboration;
using NodeAddressing::AddressInList;
using NodeAddressing::AddressInTable;
using OperationFixed = OperationNodeAddress::FixedChunk;
using NativeFixed = NativeNodeAddress::FixedChunk;

/// A paragraph of one run of so many bytes takes this many places of the plane.
constexpr unsigned long bytesCount = 40;
constexpr unsigned long paragraphSize = bytesCount + 3;

/// `paragraphsCount` paragraphs, and behind them, `depth` times, a table whose one cell has such a text again.
DOM::TextWithTombstones makeText(unsigned long depth, unsigned long paragraphsCount)
{
    DOM::TextWithTombstones text;
    for (unsigned long index = 0; index < paragraphsCount; ++index)
    {
        auto paragraph = std::make_unique<DOM::Paragraph>();
        paragraph->getRuns().push_back(std::make_unique<DOM::TextRun>(std::string(bytesCount, 'a')));
        text.getBlocks().push_back(std::move(paragraph));
    }
    if (depth > 0)
    {
        auto table = std::make_unique<DOM::Table>(1, 1);
        table->getOrCreateCell(RowIndex(0), ColumnIndex(0)).getTextWithTombstones() =
            makeText(depth - 1, paragraphsCount);
        text.getBlocks().push_back(std::move(table));
    }
    return text;
}

/// The innermost text of such a document, and the last byte of its last paragraph, in both worlds.
struct Case
{
    Case(unsigned long depth, unsigned long paragraphsCount)
    {
        _document.getTextWithTombstones() = makeText(depth, paragraphsCount);
        const OperationFixed text(convertOperationNodeType(OperationDOMNodeType::TextWithTombstones));
        const OperationFixed cells(convertOperationNodeType(OperationDOMNodeType::CellCollection));
        const AddressInTable cell(RowIndex(0), ColumnIndex(0));
        _operationText.appendItems(text);
        _nativeText.appendItems(NativeFixed(NativeDOMNodeType::BlockCollection));
        for (unsigned long level = 0; level < depth; ++level)
        {
            _operationText.appendItems(AddressInList(paragraphsCount * paragraphSize), cells, cell, text);
            _nativeText.appendItems(AddressInList(paragraphsCount), NativeFixed(NativeDOMNodeType::CellCollection),
                                    cell, NativeFixed(NativeDOMNodeType::BlockCollection));
        }
        _operationByte = _operationText;
        _operationByte.appendItems(AddressInList((paragraphsCount - 1) * paragraphSize + 1 + bytesCount));
        _nativeByte = _nativeText;
        _nativeByte.appendItems(AddressInList(paragraphsCount - 1), NativeFixed(NativeDOMNodeType::RunCollection),
                                AddressInList(0), NativeFixed(NativeDOMNodeType::CharCollection),
                                AddressInList(bytesCount - 1));
        ZEM_ASSERT(ElementPathUtils::convertNodeAddress(_adapter, _operationText) == _nativeText);
        ZEM_ASSERT(ElementPathUtils::convertNodeAddress(_adapter, _nativeText) == _operationText);
        ZEM_ASSERT(ElementPathUtils::convertNodeAddress(_adapter, _operationByte) == _nativeByte);
        ZEM_ASSERT(ElementPathUtils::convertNodeAddress(_adapter, _nativeByte) == _operationByte);
    }

    DOM::Document _document;
    TextDocumentAdapter _writable{_document};
    const TextDocumentAdapter& _adapter = _writable;
    OperationNodeAddress _operationText;
    NativeNodeAddress _nativeText;
    OperationNodeAddress _operationByte;
    NativeNodeAddress _nativeByte;
};

template<class Address>
void convert(benchmark::State& state, Address Case::*address)
{
    const Case example(static_cast<unsigned long>(state.range(0)), static_cast<unsigned long>(state.range(1)));
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(ElementPathUtils::convertNodeAddress(example._adapter, example.*address));
    }
}

void textToNative(benchmark::State& state)
{
    convert(state, &Case::_operationText);
}

void textToOperation(benchmark::State& state)
{
    convert(state, &Case::_nativeText);
}

void byteToNative(benchmark::State& state)
{
    convert(state, &Case::_operationByte);
}

void byteToOperation(benchmark::State& state)
{
    convert(state, &Case::_nativeByte);
}

/// What an executor does first: the node of an operation's address.
void textAdapter(benchmark::State& state)
{
    const Case example(static_cast<unsigned long>(state.range(0)), static_cast<unsigned long>(state.range(1)));
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(ElementPathUtils::createDOMNodeAdapter(example._adapter, example._operationText));
    }
}

void byDepthAndParagraphs(benchmark::internal::Benchmark* measured)
{
    measured->ArgNames({"depth", "paragraphs"});
    for (const int depth : {0, 1, 2, 4, 8})
    {
        measured->Args({depth, 1});
        measured->Args({depth, 1000});
    }
}

BENCHMARK(textToNative)->Apply(byDepthAndParagraphs);
BENCHMARK(textToOperation)->Apply(byDepthAndParagraphs);
BENCHMARK(byteToNative)->Apply(byDepthAndParagraphs);
BENCHMARK(byteToOperation)->Apply(byDepthAndParagraphs);
BENCHMARK(textAdapter)->Apply(byDepthAndParagraphs);

} // namespace
