#pragma once

/// A small text document with an executor, for the tests of node executors:
///
///     {|ab#}F$      a paragraph of a text run and a drawing, a field block, a section tag
///
/// whose flat text is 0 the paragraph's tag, 1 the text run's, 2 and 3 its bytes, 4 the drawing, 5 the mark, 6 the
/// field block, 7 the section tag.

#include "DClb_DocumentOperationExecutor.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DClb_NodeTypes.h"
#include "DClb_PropertyValues.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"

#include "TS_Assertions.h"
#include "TS_RecordingObserver.h"

#include "CE_SetPropertyOperation.h"
#include "DOM_Document.h"
#include "DOM_FieldBlock.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"
#include "DOM_SectionTag.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Zem::DOMCollaboration
{

using Lines = std::vector<std::string>;

class ExecutorFixture : public testing::Test
{
protected:
    using OperationUPtr = CollaborationEngine::OperationUPtr;

    static constexpr unsigned long paragraphPlace = 0;
    static constexpr unsigned long textRunPlace = 1;
    static constexpr unsigned long drawingPlace = 4;
    static constexpr unsigned long fieldBlockPlace = 6;
    static constexpr unsigned long sectionTagPlace = 7;

    ExecutorFixture()
        : _adapter(std::make_shared<TextDocumentAdapter>(_document))
        , _observer(std::make_shared<TestSupport::RecordingObserver>())
        , _executor(_adapter, std::make_shared<DocumentOperationTransformer>(), _observer)
    {
        auto paragraph = std::make_unique<DOM::Paragraph>();
        auto textRun = std::make_unique<DOM::TextRun>();
        textRun->setText("ab");
        paragraph->getRuns().push_back(std::move(textRun));
        paragraph->getRuns().push_back(std::make_unique<DOM::DrawingRun>());
        DOM::Blocks& blocks = _document.getTextWithTombstones().getBlocks();
        blocks.push_back(std::move(paragraph));
        blocks.push_back(std::make_unique<DOM::FieldBlock>());
        blocks.push_back(std::make_unique<DOM::SectionTag>());
    }

    /// The address of a place of the flat text.
    static CollaborationEngine::OperationNodeAddress makeTextAddress(unsigned long place)
    {
        return {makeFixedChunk(OperationDOMNodeType::TextWithTombstones), NodeAddressing::AddressInList(place)};
    }

    static CollaborationEngine::OperationNodeAddress makeFixedAddress(OperationDOMNodeType nodeType)
    {
        return {makeFixedChunk(nodeType)};
    }

    static CollaborationEngine::OperationNodeAddress::FixedChunk makeFixedChunk(OperationDOMNodeType nodeType)
    {
        return CollaborationEngine::OperationNodeAddress::FixedChunk(convertOperationNodeType(nodeType));
    }

    template<class T>
    static SharedConstPtr<CollaborationEngine::DataValue> makeValue(T value)
    {
        return std::make_shared<CollaborationEngine::SimpleDataValue<T>>(std::move(value));
    }

    template<PropertyId id>
    static CollaborationEngine::SetPropertyOperation
    makeSetProperty(CollaborationEngine::OperationNodeAddress address, OperationDOMNodeType nodeType,
                    PropertyValueType<id> oldValue, PropertyValueType<id> newValue)
    {
        return {std::move(address), convertOperationNodeType(nodeType), convertPropertyId(id),
                makeValue(std::move(oldValue)), makeValue(std::move(newValue))};
    }

    /// Executes, and expects that nothing had to be changed.
    void execute(CollaborationEngine::Operation& operation)
    {
        OperationUPtr changedOp;
        EXPECT_FALSE(_executor.executeAndChangeIfNeeded(operation, changedOp));
        EXPECT_FALSE(changedOp);
    }

    /// Executes, takes back, and executes again; leaves the document as the last execution does. Expects that nothing
    /// is changed in the operation, that the document is what it was after the reverse, and that both executions tell
    /// `executed` and lead to one document.
    void expectLaws(CollaborationEngine::Operation& operation, const Lines& executed, const Lines& reversed)
    {
        const DOM::Document before(_document);
        execute(operation);
        EXPECT_EQ(executed, _observer->takeLines());
        EXPECT_FALSE(before == _document) << "the operation was to change something";

        const DOM::Document after(_document);
        _executor.reverse(operation);
        EXPECT_EQ(reversed, _observer->takeLines());
        EXPECT_TRUE(before == _document) << "the reverse isn't exact";

        execute(operation);
        EXPECT_EQ(executed, _observer->takeLines());
        EXPECT_TRUE(after == _document) << "the second execution differs from the first";
    }

    DOM::Paragraph& getParagraph()
    {
        return cast<DOM::Paragraph>(*_document.getTextWithTombstones().getBlocks()[0]);
    }

    DOM::Run& getTextRun()
    {
        return *getParagraph().getRuns()[0];
    }

    DOM::Frame& getDrawnFrame()
    {
        return cast<DOM::DrawingRun>(*getParagraph().getRuns()[1]).getFrame();
    }

    DOM::FieldBlock& getFieldBlock()
    {
        return cast<DOM::FieldBlock>(*_document.getTextWithTombstones().getBlocks()[1]);
    }

    DOM::SectionTag& getSectionTag()
    {
        return cast<DOM::SectionTag>(*_document.getTextWithTombstones().getBlocks()[2]);
    }

    DOM::Document _document;
    std::shared_ptr<TextDocumentAdapter> _adapter;
    std::shared_ptr<TestSupport::RecordingObserver> _observer;
    DocumentOperationExecutor _executor;
};

/// A `UUID` that is told from others by one byte.
inline UUID makeTestUUID(unsigned char number)
{
    UUID::Bytes bytes{};
    bytes[15] = number;
    return UUID(bytes);
}

} // namespace Zem::DOMCollaboration
