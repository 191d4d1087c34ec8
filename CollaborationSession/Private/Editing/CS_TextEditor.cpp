#include "Editing/CS_TextEditor.h"

#include "Editing/CS_InvalidEditError.h"

#include "DClb_NodeTypes.h"
#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

namespace Zem::CollaborationSession
{

using CollaborationEngine::OperationNodeAddress;
using CollaborationUtils::IndexExcludingTombstones;
using CollaborationUtils::IndexRange;
using DOM::NativeNodeAddress;

namespace
{

/// What isn't about text may move a text that is nested in what it is about.
struct Invalidate
{
    void operator()() const
    {
        _index->invalidate();
    }

    CharacterIndex* _index;
};

} // namespace

/// Passes on to the index what is about texts, and lets everything else make it stale, but for properties of things in
/// texts, which move nothing.
class TextEditor::IndexFeed final : public DOMCollaboration::SingleActionExecutorNotificationObserver<Invalidate>
{
public:
    explicit IndexFeed(TextInDocument text)
        : SingleActionExecutorNotificationObserver(Invalidate{&_index})
        , _index(std::move(text))
    {
    }

    CharacterIndex& getIndex()
    {
        return _index;
    }

    void onCharsRemoved(const NativeNodeAddress& address, IndexExcludingTombstones begin,
                        const std::string& removed) override
    {
        _index.onCharsRemoved(address, begin, removed);
    }

    void onCharsInserted(const NativeNodeAddress& address, const IndexRange<unsigned long>& range) override
    {
        _index.onCharsInserted(address, range);
    }

    void onRunsRemoved(const NativeNodeAddress& address, IndexExcludingTombstones begin,
                       const ReadonlyVector<DOM::Runs>& removed) override
    {
        _index.onRunsRemoved(address, begin, removed);
    }

    void onRunsInserted(const NativeNodeAddress& address, const IndexRange<unsigned long>& range) override
    {
        _index.onRunsInserted(address, range);
    }

    void onBlocksRemoved(const NativeNodeAddress& address, IndexExcludingTombstones begin,
                         const ReadonlyVector<DOM::Blocks>& removed) override
    {
        _index.onBlocksRemoved(address, begin, removed);
    }

    void onBlocksInserted(const NativeNodeAddress& address, const IndexRange<unsigned long>& range) override
    {
        _index.onBlocksInserted(address, range);
    }

    void onBlockMoved(const NativeNodeAddress& address, IndexExcludingTombstones from,
                      IndexExcludingTombstones to) override
    {
        _index.onBlockMoved(address, from, to);
    }

    void onRunPropsChanged(const NativeNodeAddress&, unsigned long) override
    {
    }

    void onParaPropsChanged(const NativeNodeAddress&, unsigned long) override
    {
    }

    void onFieldBlockPropsChanged(const NativeNodeAddress&, unsigned long) override
    {
    }

    void onSectionPropsChanged(const NativeNodeAddress&, unsigned long) override
    {
    }

private:
    CharacterIndex _index;
};

const OperationNodeAddress& TextEditor::getMainTextAddress()
{
    static const OperationNodeAddress address{OperationNodeAddress::FixedChunk(
        DOMCollaboration::convertOperationNodeType(DOMCollaboration::OperationDOMNodeType::TextWithTombstones))};
    return address;
}

TextEditor::TextEditor(std::shared_ptr<DOMCollaboration::DocumentAdapterWithNodeAdapter> document,
                       CollaborationEngine::OperationExecutor& executor, ObserverFanOut& notifications,
                       OperationNodeAddress address)
    : _document(std::move(document))
    , _executor(executor)
    , _feed(std::make_shared<IndexFeed>(TextInDocument(_document, std::move(address))))
{
    notifications.add(_feed);
}

TextEditor::~TextEditor() = default;

const CharacterIndex& TextEditor::getIndex()
{
    CharacterIndex& index = _feed->getIndex();
    index.refresh();
    return index;
}

void TextEditor::setAddress(OperationNodeAddress address)
{
    _feed->getIndex() = CharacterIndex(TextInDocument(_document, std::move(address)));
}

void TextEditor::reload()
{
    setAddress(OperationNodeAddress(_feed->getIndex().getTextInDocument().getAddress()));
}

Operations TextEditor::replace(unsigned long begin, unsigned long end, std::string_view replacement)
{
    return execute(TextCommands::replaceCharacters(getIndex(), begin, end, replacement));
}

Operations TextEditor::setRunProperty(unsigned long begin, unsigned long end, DOMCollaboration::PropertyId propertyId,
                                      const SharedConstPtr<CollaborationEngine::DataValue>& value)
{
    return execute(TextCommands::setRunProperty(getIndex(), begin, end, propertyId, value));
}

Operations TextEditor::setParagraphProperty(unsigned long begin, unsigned long end,
                                            DOMCollaboration::PropertyId propertyId,
                                            const SharedConstPtr<CollaborationEngine::DataValue>& value)
{
    return execute(TextCommands::setParagraphProperty(getIndex(), begin, end, propertyId, value));
}

void TextEditor::takeBack(Operations& operations)
{
    for (auto operation = operations.rbegin(); operation != operations.rend(); ++operation)
    {
        _executor.reverse(**operation);
    }
}

Operations TextEditor::execute(Operations operations)
{
    for (std::size_t index = 0; index < operations.size(); ++index)
    {
        CollaborationEngine::OperationUPtr changedOp;
        if (_executor.executeAndChangeIfNeeded(*operations[index], changedOp))
        {
            operations.resize(index);
            operations.push_back(std::move(changedOp));
            takeBack(operations);
            throw InvalidEditError("The text doesn't take the edit");
        }
    }
    return operations;
}

} // namespace Zem::CollaborationSession
