#include "Editing/CS_EditorCase.h"
#include "Editing/CS_Looks.h"
#include "Editing/CS_Painting.h"

#include <random>

namespace Zem::CollaborationSession
{

namespace
{

using Letters = std::vector<Letter>;
using DOM::RunProps;
using DOM::RunStyle;

bool isLineBreak(const Letter& letter)
{
    return letter._character == '\n';
}

/// How what is typed between `front` letters and the last ones looks, if letter `model` was replaced by it.
RunStyle findTypedStyle(const Letters& letters, unsigned long front, unsigned long behind)
{
    const Letter* left = front > 0 && !isLineBreak(letters[front - 1]) ? &letters[front - 1] : nullptr;
    const Letter* right = behind < letters.size() && !isLineBreak(letters[behind]) ? &letters[behind] : nullptr;
    const Letter* replaced = front < behind && !isLineBreak(letters[front]) ? &letters[front] : nullptr;
    const Letter* model = replaced ? replaced : left ? left : right;
    RunStyle style = model ? model->_style : RunStyle();
    style.setHyperlink(nullptr);
    style.getCommentUUIDs().clear();
    if (left && right)
    {
        const bool isOneLink = areDeeplyEqual(left->_style.getHyperlink(), right->_style.getHyperlink());
        style.setHyperlink(isOneLink ? left->_style.getHyperlink() : nullptr);
        std::set_intersection(left->_style.getCommentUUIDs().begin(), left->_style.getCommentUUIDs().end(),
                              right->_style.getCommentUUIDs().begin(), right->_style.getCommentUUIDs().end(),
                              std::back_inserter(style.getCommentUUIDs()));
    }
    return style;
}

/// Random typing and setting of looks on a text of paragraphs, beside a plain list of letters that each have a look.
class RandomLooks
{
public:
    explicit RandomLooks(unsigned long seed)
        : _random(seed)
        , _edited(TestSupport::makeText("{|some words}{}{|to begin with}"))
        , _letters(readLetters(_edited.getText()))
    {
    }

    void run(unsigned long editsCount)
    {
        const DOM::Document before = _edited._document;
        Operations operations;
        for (unsigned long edit = 0; edit < editsCount && !testing::Test::HasFailure(); ++edit)
        {
            Operations done = pick(2) == 0 ? type() : setLook();
            std::move(done.begin(), done.end(), std::back_inserter(operations));
            ASSERT_TRUE(_letters == readLetters(_edited.getText())) << print();
            _edited._editor.getIndex().checkInvariants();
        }
        const DOM::Document afterwards = _edited._document;
        _edited._editor.takeBack(operations);
        EXPECT_TRUE(before == _edited._document);
        for (auto& operation : operations)
        {
            _edited.execute(std::move(operation));
        }
        EXPECT_TRUE(afterwards == _edited._document);
    }

private:
    unsigned long pick(unsigned long count)
    {
        return std::uniform_int_distribution<unsigned long>(0, count - 1)(_random);
    }

    std::pair<unsigned long, unsigned long> pickStretch(unsigned long longest)
    {
        const unsigned long begin = pick(_letters.size() + 1);
        return {begin, std::min<unsigned long>(_letters.size(), begin + pick(longest))};
    }

    Operations type()
    {
        auto [begin, end] = pickStretch(pick(2) == 0 ? 1 : 5);
        const RunStyle style = findTypedStyle(_letters, begin, end);
        std::string typed;
        for (unsigned long count = pick(5); count > 0; --count)
        {
            typed += "ab\n"[pick(3)];
        }
        _letters.erase(_letters.begin() + static_cast<long>(begin), _letters.begin() + static_cast<long>(end));
        Letters inserted;
        for (const char character : typed)
        {
            inserted.push_back(Letter{character, character == '\n' ? RunStyle() : style});
        }
        _letters.insert(_letters.begin() + static_cast<long>(begin), inserted.begin(), inserted.end());
        return _edited._editor.replace(begin, end, typed);
    }

    LookChange pickChange()
    {
        const UUID comment = makeComment("pqr"[pick(3)]);
        switch (pick(8))
        {
        case 0:
            return makeBold();
        case 1:
            return LookChange::clearField(&RunProps::_weight);
        case 2:
            return LookChange::setField(&RunProps::_fontSize, static_cast<float>(10 + pick(2)));
        case 3:
            return makeItalic();
        case 4:
            return LookChange::setLink(makeLink(pick(2) == 0 ? "x" : "y"));
        case 5:
            return LookChange::setLink(nullptr);
        case 6:
            return LookChange::addComment(comment);
        default:
            return LookChange::removeComment(comment);
        }
    }

    Operations setLook()
    {
        const auto [begin, end] = pickStretch(8);
        const LookChange change = pickChange();
        const Letters before = _letters;
        Operations operations = _edited._editor.setRunLook(begin, end, change);
        EXPECT_TRUE(_edited._editor.setRunLook(begin, end, change).empty());
        for (unsigned long letter = begin; letter < end; ++letter)
        {
            if (!isLineBreak(_letters[letter]))
            {
                setLook(_letters[letter]._style, change);
            }
        }
        if (pick(3) == 0)
        {
            EXPECT_TRUE(_letters == readLetters(_edited.getText())) << print();
            takeBackByPieces(operations, begin, end, change);
            EXPECT_TRUE(before == readLetters(_edited.getText())) << print();
            _letters = before;
        }
        return operations;
    }

    /// Paints once more what was taken back, and then sets the pieces back.
    void takeBackByPieces(Operations& operations, unsigned long begin, unsigned long end, const LookChange& change)
    {
        const auto& address = TextEditor::getMainTextAddress();
        const DOM::TextWithTombstones& text = _edited.getText();
        const CharacterIndex& index = _edited._editor.getIndex();
        _edited._editor.takeBack(operations);
        operations.clear();
        const PlaneStretch stretch = findStretch(text, index.convertToElement(begin), index.convertToElement(end));
        Painting painting = paintRuns(text, address, stretch, change);
        execute(std::move(painting._operations), operations);
        for (const LookPiece& piece : painting._pieces)
        {
            Painting reversal = paintStretch(text, address, piece._firstSlot, piece._lastSlot, LookTarget::Runs,
                                             change.makeReversal(piece._oldValue));
            EXPECT_FALSE(reversal._operations.empty());
            execute(std::move(reversal._operations), operations);
        }
    }

    void execute(Operations from, Operations& to)
    {
        for (auto& operation : from)
        {
            CollaborationEngine::OperationUPtr changedOp;
            EXPECT_FALSE(_edited._executor.executeAndChangeIfNeeded(*operation, changedOp));
            to.push_back(std::move(operation));
        }
    }

    /// The same in the model, without the help of `LookChange::apply`.
    static void setLook(RunStyle& style, const LookChange& change)
    {
        auto& comments = style.getCommentUUIDs();
        const auto& value = *change.getValue();
        switch (change.getPropertyId())
        {
        case DOMCollaboration::PropertyId::HyperlinkId:
            style.setHyperlink(CollaborationEngine::getSimpleDataValue<DOM::HyperlinkConstPtr>(value));
            return;
        case DOMCollaboration::PropertyId::CommentUUIDsId:
            std::erase(comments, CollaborationEngine::getSimpleDataValue<std::vector<UUID>>(value).front());
            if (change.getKind() == LookChangeKind::AddComment)
            {
                comments.push_back(CollaborationEngine::getSimpleDataValue<std::vector<UUID>>(value).front());
                std::sort(comments.begin(), comments.end());
            }
            return;
        default:
            setRunProps(style, CollaborationEngine::getSimpleDataValue<DOM::RunPropsConstPtr>(value).get(),
                        change.getFieldNames().front());
        }
    }

    static void setRunProps(RunStyle& style, const RunProps* source, std::string_view field)
    {
        RunProps props = style.getRunProps() ? *style.getRunProps() : RunProps();
        const RunProps values = source ? *source : RunProps();
        if (field == "_weight")
        {
            props._weight = values._weight;
        }
        else if (field == "_slant")
        {
            props._slant = values._slant;
        }
        else
        {
            props._fontSize = values._fontSize;
        }
        const bool isEmpty = areDeeplyEqual(props, RunProps());
        style.setRunProps(isEmpty ? nullptr : std::make_shared<const RunProps>(props));
    }

    std::string print()
    {
        return printLooks(_edited.getText());
    }

    std::mt19937_64 _random;
    DocumentUnderTest _edited;
    Letters _letters;
};

TEST(RandomLooks, AreThoseOfAListOfLetters)
{
    for (unsigned long seed = 0; seed < 150 && !testing::Test::HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomLooks(seed).run(60);
    }
}

} // namespace

} // namespace Zem::CollaborationSession
