#include "Editing/CS_TextEditor.h"

#include "Editing/CS_CommandSupport.h"
#include "Editing/CS_Stretch.h"

#include "CE_ListMultirangeOperation.h"
#include "DClb_NodeTypes.h"
#include "DClb_TextElement.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"
#include "Notifications/DClb_SingleActionExecutorNotificationObserver.h"

#include "Util_Cast.h"

#include <algorithm>

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
class TextEditor::IndexFeed final : public DOMCollaboration::SingleActionExecutorNotificationObserver<Invalidate>,
                                    public ReplacementObserver
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

    /// The text is counted again when somebody asks for it.
    void onDocumentReplaced() override
    {
        _index.reset();
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
    : _localDocument(std::make_unique<LocalDocument>(std::move(document), executor, notifications))
    , _document(*_localDocument)
    , _feed(std::make_shared<IndexFeed>(TextInDocument(_document.getAdapter(), std::move(address))))
{
    notifications.add(_feed);
}

TextEditor::TextEditor(EditedDocument& document, OperationNodeAddress address)
    : _document(document)
    , _feed(std::make_shared<IndexFeed>(TextInDocument(_document.getAdapter(), std::move(address))))
{
    _document.getNotifications().add(_feed);
    _document.addReplacementObserver(_feed);
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
    _feed->getIndex() = CharacterIndex(TextInDocument(_document.getAdapter(), std::move(address)));
}

void TextEditor::reload()
{
    setAddress(OperationNodeAddress(_feed->getIndex().getTextInDocument().getAddress()));
}

namespace
{

using TypedInsertion = CollaborationEngine::ListMultirangeOperationImpl<
    CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>>;

/// The look of the run in front of a slot whose element stays.
DOM::SharedStyleConstIPtr<DOM::RunStyle> findLookInFront(const CharacterIndex& index, unsigned long slot)
{
    const auto& tombstones = index.getTextInDocument().getText().getTombstones();
    const auto element =
        slot == 0 ? std::nullopt : tombstones.convertIndex(CollaborationUtils::IndexIncludingTombstones(slot - 1));
    if (!element)
    {
        return nullptr;
    }
    const DOMCollaboration::PlanePlace place = index.findPlace(element->get());
    const bool isInRun = place._kind == DOMCollaboration::PlaceKind::Char ||
                         place._kind == DOMCollaboration::PlaceKind::TextRunTag ||
                         place._kind == DOMCollaboration::PlaceKind::AtomicRun;
    return isInRun ? index.getParagraph(place._blockIndex).getRuns()[place._runIndex]->getSharedStyle() : nullptr;
}

/// How what is typed looks: like the tag that it brings, or else like the run that it goes on in.
DOM::SharedStyleConstIPtr<DOM::RunStyle> findTypedLook(const CharacterIndex& index,
                                                       const CollaborationEngine::Operation& operation)
{
    const auto* insertion = cast<TypedInsertion>(&operation);
    if (!insertion)
    {
        return nullptr;
    }
    const auto& nested = insertion->getNestedOperations().front();
    for (const auto& element : cast<DOMCollaboration::TextWithTombstonesItems>(*nested.getData()).getCollection())
    {
        if (const auto* run = boost::get<SharedConstPtr<DOM::Run>>(&element))
        {
            return (*run)->getSharedStyle();
        }
    }
    return findLookInFront(index, nested.getRange().getBegin());
}

} // namespace

Operations TextEditor::replace(unsigned long begin, unsigned long end, std::string_view replacement)
{
    const CharacterIndex& index = getIndex();
    Operations operations = TextCommands::replaceCharacters(index, begin, end, replacement);
    Meaning meaning;
    meaning._isTyping = !operations.empty() && !replacement.empty();
    if (meaning._isTyping)
    {
        meaning._typedLook = findTypedLook(index, *operations.back());
    }
    return perform(std::move(operations), std::move(meaning));
}

Operations TextEditor::setRunLook(unsigned long begin, unsigned long end, const LookChange& change)
{
    return performLook(TextCommands::setRunLook(getIndex(), begin, end, change), {begin, end}, LookTarget::Runs,
                       change);
}

Operations TextEditor::setParagraphLook(unsigned long begin, unsigned long end, const LookChange& change)
{
    return performLook(TextCommands::setParagraphLook(getIndex(), begin, end, change), {begin, end},
                       LookTarget::Paragraphs, change);
}

Operations TextEditor::setRunProperty(unsigned long begin, unsigned long end, DOMCollaboration::PropertyId propertyId,
                                      const SharedConstPtr<CollaborationEngine::DataValue>& value)
{
    Operations operations = TextCommands::setRunProperty(getIndex(), begin, end, propertyId, value);
    return performLook(std::move(operations), {begin, end}, LookTarget::Runs,
                       LookChange::setProperty(propertyId, value));
}

Operations TextEditor::setParagraphProperty(unsigned long begin, unsigned long end,
                                            DOMCollaboration::PropertyId propertyId,
                                            const SharedConstPtr<CollaborationEngine::DataValue>& value)
{
    Operations operations = TextCommands::setParagraphProperty(getIndex(), begin, end, propertyId, value);
    return performLook(std::move(operations), {begin, end}, LookTarget::Paragraphs,
                       LookChange::setProperty(propertyId, value));
}

Operations TextEditor::setLink(unsigned long begin, unsigned long end, DOM::HyperlinkConstPtr link)
{
    return setRunLook(begin, end, LookChange::setLink(std::move(link)));
}

Operations TextEditor::addComment(unsigned long begin, unsigned long end, const UUID& uuid)
{
    return setRunLook(begin, end, LookChange::addComment(uuid));
}

Operations TextEditor::removeComment(unsigned long begin, unsigned long end, const UUID& uuid)
{
    return setRunLook(begin, end, LookChange::removeComment(uuid));
}

void TextEditor::takeBack(Operations& operations)
{
    _document.takeBack(operations);
}

Operations TextEditor::perform(Operations operations, Meaning meaning)
{
    if (!operations.empty())
    {
        _document.perform(operations, std::make_shared<const Meaning>(std::move(meaning)));
    }
    return operations;
}

namespace
{

/// The last element of the character in front of an offset.
unsigned long findLastElement(const CharacterIndex& index, unsigned long offset)
{
    unsigned long element = index.convertToElement(offset);
    for (;;)
    {
        const DOMCollaboration::PlaceKind kind = index.findPlace(--element)._kind;
        if (kind != DOMCollaboration::PlaceKind::TextRunTag && kind != DOMCollaboration::PlaceKind::ParaTag)
        {
            return element;
        }
    }
}

/// The stretch of a range of characters; of the element at which it lies if it is empty.
Stretch makeStretchOfCharacters(const CharacterIndex& index, const CharacterRange& range)
{
    const unsigned long first = index.convertToElement(range._begin);
    const unsigned long last = range._begin < range._end ? findLastElement(index, range._end) : first;
    return makeStretch(index.getTextInDocument().getAddress(), getSlot(index, first), getSlot(index, last));
}

/// The paragraphs of the range, from the tag of the first to the mark of the last: what others split off from them at
/// the same moment is meant, too.
Stretch makeStretchOfParagraphs(const CharacterIndex& index, const CharacterRange& range)
{
    const unsigned long first = index.convertToElement(range._begin);
    const unsigned long last = range._begin < range._end ? findLastElement(index, range._end) : first;
    const unsigned long tag = index.getBlock(index.findPlace(first)._blockIndex)._element;
    const unsigned long behindMark = index.getBlock(index.findPlace(last)._blockIndex + 1)._element;
    return makeStretch(index.getTextInDocument().getAddress(), getSlot(index, tag), getSlot(index, behindMark - 1));
}

} // namespace

Operations TextEditor::performLook(Operations operations, const CharacterRange& range, LookTarget target,
                                   const LookChange& change)
{
    if (operations.empty())
    {
        return operations;
    }
    const bool isOfRuns = target == LookTarget::Runs;
    LookSetting look{isOfRuns ? makeStretchOfCharacters(getIndex(), range) : makeStretchOfParagraphs(getIndex(), range),
                     target, change};
    for (const auto& operation : operations)
    {
        moveStretch(look._stretch, *operation);
    }
    Meaning meaning;
    meaning._looks.push_back(std::move(look));
    return perform(std::move(operations), std::move(meaning));
}

void TextEditor::select(unsigned long begin, unsigned long end)
{
    const CharacterIndex& index = getIndex();
    requireStretch(index, begin, end);
    const OperationNodeAddress& text = index.getTextInDocument().getAddress();
    // What is typed in front of the first character isn't selected, nor what is typed behind the last: the end is kept
    // behind that.
    const bool isCaret = begin == end;
    const unsigned long first = isCaret && begin > 0 ? getSlot(index, findLastElement(index, begin)) + 1
                                                     : getSlot(index, index.convertToElement(begin));
    const unsigned long behindLast = isCaret ? first : getSlot(index, findLastElement(index, end)) + 1;
    Selection selection = makeStretch(text, first, behindLast);
    selection.getSelectionBegin().setStickToPrevious(isCaret && begin > 0);
    selection.getSelectionEnd().setStickToPrevious(end > 0);
    _document.setSelection(std::move(selection));
}

std::optional<CharacterRange> TextEditor::findSelection()
{
    return findSelection(_document.getID());
}

std::optional<CharacterRange> TextEditor::findSelection(ClientID owner)
{
    return convert(_document.findSelection(owner));
}

std::map<ClientID, CharacterRange> TextEditor::getOtherSelections()
{
    std::map<ClientID, CharacterRange> ranges;
    for (const auto& [owner, selection] : _document.getSelections())
    {
        if (const auto range = convert(&selection))
        {
            ranges.emplace(owner, *range);
        }
    }
    return ranges;
}

std::optional<CharacterRange> TextEditor::convert(const Selection* selection)
{
    const CharacterIndex& index = getIndex();
    const TextInDocument& text = index.getTextInDocument();
    const auto stretch = selection ? findStretchInText(*selection) : std::nullopt;
    if (!stretch || !(stretch->_text == text.getAddress()))
    {
        return std::nullopt;
    }
    const auto getOffset = [&](unsigned long slot)
    {
        const auto element =
            text.getText().getTombstones().getIndexToInsertTo(CollaborationUtils::IndexIncludingTombstones(slot));
        return index.convertToOffset(std::min(element.get(), index.getElementsCount()));
    };
    return CharacterRange{getOffset(stretch->_firstSlot), getOffset(stretch->_lastSlot)};
}

} // namespace Zem::CollaborationSession
