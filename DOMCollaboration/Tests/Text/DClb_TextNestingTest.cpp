#include "Text/DClb_TextNesting.h"

#include "DClb_DocumentOperationExecutor.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DClb_NodeTypes.h"
#include "DOMNodeAdapters/DClb_DocumentAdapter.h"

#include "DOM_Blocks.h"
#include "DOM_Document.h"
#include "DOM_DocumentJson.h"
#include "DOM_TextNesting.h"
#include "Notifications/DClb_ExecutorNotificationObserver.h"

#include <gtest/gtest.h>

namespace Zem::DOMCollaboration
{

namespace
{

using namespace CollaborationEngine;

template<class Tag>
using Multirange = ListMultirangeOperationImpl<ListModificationOperation<Tag>>;

constexpr unsigned long textType = static_cast<unsigned long>(OperationDOMNodeType::TextWithTombstones);

/// Shapes in each other, each with a text.
std::unique_ptr<DOM::Shape> makeShapes(unsigned long count)
{
    auto shape = std::make_unique<DOM::Shape>();
    if (count > 1)
    {
        shape->getTextWithTombstones().getBlocks().push_back(makeShapes(count - 1));
    }
    return shape;
}

/// The text inside so many shapes, each of which is the first block of the one around it.
OperationNodeAddress makeAddress(unsigned long depth)
{
    OperationNodeAddress address{OperationNodeAddress::FixedChunk(textType)};
    for (unsigned long count = 0; count < depth; ++count)
    {
        address.appendItems(NodeAddressing::AddressInList(0), OperationNodeAddress::FixedChunk(textType));
    }
    return address;
}

/// A document with shapes in each other.
class TextNesting : public testing::Test
{
protected:
    void fill(unsigned long shapesCount)
    {
        _document.getTextWithTombstones().getBlocks().push_back(makeShapes(shapesCount));
    }

    /// An operation on the first slot of a text, that carries shapes in each other.
    template<class Tag>
    static Multirange<Tag> makeOperation(unsigned long depth, unsigned long shapesCount)
    {
        const SharedConstPtr<DOM::Block> block{std::shared_ptr<DOM::Block>(makeShapes(shapesCount))};
        std::vector<ListModificationOperation<Tag>> nested;
        nested.emplace_back(makeAddress(depth), textType,
                            makeSharedConst<TextWithTombstonesItems>(TextWithTombstonesElementVector{block}),
                            IndexRange<unsigned long>(0, 1));
        return Multirange<Tag>(std::move(nested));
    }

    /// Whether an operation is refused; one that isn't must happen as it stands.
    bool isRefused(Operation& operation)
    {
        const DOM::Document before = _document;
        OperationUPtr changedOp;
        if (!_executor.executeAndChangeIfNeeded(operation, changedOp))
        {
            return false;
        }
        EXPECT_TRUE(cast<EmptyOperation>(changedOp.get()));
        EXPECT_TRUE(before == _document);
        return true;
    }

    DOM::Document _document;
    std::shared_ptr<ExecutorNotificationObserver> _observer = makeEmptyExecutorNotificationObserver();
    std::shared_ptr<TextDocumentAdapter> _adapter = std::make_shared<TextDocumentAdapter>(_document);
    DocumentOperationExecutor _executor{_adapter, std::make_shared<DocumentOperationTransformer>(), _observer};
};

constexpr unsigned long limit = DOM::maximalTextNesting;

} // namespace

TEST_F(TextNesting, AnInsertionThatWouldLieTooDeepIsRefused)
{
    fill(30);
    auto tooDeep = makeOperation<InsertTag>(30, limit - 30);
    EXPECT_TRUE(isRefused(tooDeep));
    auto asDeepAsAllowed = makeOperation<InsertTag>(30, limit - 31);
    EXPECT_FALSE(isRefused(asDeepAsAllowed));
    EXPECT_TRUE(DOM::fromJson(DOM::toJson(_document)) == _document);
    auto oneMore = makeOperation<InsertTag>(limit - 1, 1);
    EXPECT_TRUE(isRefused(oneMore));
}

TEST_F(TextNesting, TwoInsertionsCannotMakeADocumentThatIsNeverWritten)
{
    auto half = makeOperation<InsertTag>(0, 30);
    EXPECT_FALSE(isRefused(half));
    auto otherHalf = makeOperation<InsertTag>(30, 30);
    EXPECT_TRUE(isRefused(otherHalf));
    auto tooDeepAlone = makeOperation<InsertTag>(0, 120);
    EXPECT_TRUE(isRefused(tooDeepAlone));
    EXPECT_NO_THROW(DOM::toJson(_document));
}

TEST_F(TextNesting, ATextIsTypedIntoHoweverDeepItLies)
{
    fill(limit + 20);
    std::vector<ListModificationOperation<InsertTag>> nested;
    const SharedConstPtr<DOM::Block> paragraph{std::shared_ptr<DOM::Block>(std::make_shared<DOM::Paragraph>())};
    nested.emplace_back(
        makeAddress(limit + 20), textType,
        makeSharedConst<TextWithTombstonesItems>(TextWithTombstonesElementVector{paragraph, ParagraphMark()}),
        IndexRange<unsigned long>(0, 2));
    Multirange<InsertTag> insertion(std::move(nested));
    EXPECT_FALSE(isRefused(insertion));
}

TEST_F(TextNesting, ARemovalOfWhatLiesTooDeepIsTakenBackButNotRestored)
{
    fill(limit + 20);
    const DOM::Document before = _document;
    auto removal = makeOperation<MarkAsRemovedTag>(limit, 20);
    EXPECT_FALSE(isRefused(removal));
    auto restoring = makeOperation<RestoreTag>(limit, 20);
    EXPECT_TRUE(isRefused(restoring));
    _executor.reverse(removal);
    EXPECT_TRUE(before == _document);
}

} // namespace Zem::DOMCollaboration
