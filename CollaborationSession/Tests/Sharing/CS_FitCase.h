#pragma once

/// Texts with looks, on which operations that were fitted are executed.

#include "Editing/CS_EditorCase.h"

#include "Sharing/CS_FitIntoText.h"

#include "DOM_ParaProps.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RunProps.h"
#include "DOM_RunStyle.h"
#include "DOM_Runs.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace Zem::CollaborationSession
{

inline RunStylePtr makeBoldStyle()
{
    DOM::RunProps props;
    props._weight = DOM::FontWeight::Bold;
    DOM::RunStyle style;
    style.setRunProps(std::make_shared<const DOM::RunProps>(props));
    return RunStylePtr(new DOM::SharedStyle<DOM::RunStyle>(std::move(style)));
}

inline RunStylePtr makeItalicStyle()
{
    DOM::RunProps props;
    props._slant = DOM::FontSlant::Italic;
    DOM::RunStyle style;
    style.setRunProps(std::make_shared<const DOM::RunProps>(props));
    return RunStylePtr(new DOM::SharedStyle<DOM::RunStyle>(std::move(style)));
}

/// The style of a paragraph that is marked with `=`.
inline DOM::SharedStyleConstIPtr<DOM::ParagraphStyle> makeCentredStyle()
{
    DOM::ParaProps props;
    props._alignment = DOM::ParagraphAlignment::Center;
    DOM::ParagraphStyle style;
    style.setParaProps(std::make_shared<const DOM::ParaProps>(props));
    return DOM::SharedStyleConstIPtr<DOM::ParagraphStyle>(new DOM::SharedStyle<DOM::ParagraphStyle>(std::move(style)));
}

/// A text in the notation of TS_TextNotation.h, in which `*` is the tag of a bold run, `_` that of an italic one, `=`
/// the tag of a centred paragraph, `<...>` are slots that an operation is about, `@` stands behind the anchor of
/// something that is typed, and `^` at its gap.
struct LookedText
{
    explicit LookedText(std::string_view notation)
    {
        bool isLive = true;
        bool isTaken = false;
        for (const char symbol : notation)
        {
            if (symbol == '[' || symbol == ']')
            {
                isLive = symbol == ']';
            }
            else if (symbol == '<' || symbol == '>')
            {
                isTaken = symbol == '<';
            }
            else if (symbol == '@')
            {
                _anchor = _slots.size() - 1;
            }
            else if (symbol == '^')
            {
                _gap = _slots.size();
            }
            else
            {
                if (isTaken)
                {
                    _taken.push_back(_slots.size());
                }
                _slots.push_back(TestSupport::ModelSlot{makeElement(symbol), isLive});
            }
        }
    }

    static DOMCollaboration::TextWithTombstonesElement makeElement(char symbol)
    {
        switch (symbol)
        {
        case '*':
            return makeRunElement(makeBoldStyle());
        case '_':
            return makeRunElement(makeItalicStyle());
        case '=':
        {
            auto paragraph = std::make_shared<DOM::Paragraph>();
            paragraph->getSharedStyle() = makeCentredStyle();
            return SharedConstPtr<DOM::Block>(std::move(paragraph));
        }
        default:
            return TestSupport::makeElements(std::string_view(&symbol, 1)).front();
        }
    }

    static DOMCollaboration::TextWithTombstonesElementVector makeElements(std::string_view symbols)
    {
        DOMCollaboration::TextWithTombstonesElementVector elements;
        std::transform(symbols.begin(), symbols.end(), std::back_inserter(elements), makeElement);
        return elements;
    }

    static DOMCollaboration::TextWithTombstonesElement makeRunElement(const RunStylePtr& look)
    {
        auto run = std::make_shared<DOM::TextRun>();
        run->getSharedStyle() = look;
        return SharedConstPtr<DOM::Run>(std::move(run));
    }

    TestSupport::ModelText _slots;
    /// The slots inside of `<...>`, ascending.
    std::vector<unsigned long> _taken;
    std::optional<unsigned long> _anchor;
    unsigned long _gap = 0;
};

inline char printElement(const DOMCollaboration::TextWithTombstonesElement& element)
{
    if (const auto* run = boost::get<SharedConstPtr<DOM::Run>>(&element))
    {
        const RunStylePtr& look = (*run)->getSharedStyle();
        const bool isText = (*run)->getKind() == DOM::RunKind::TextRun;
        return isText && areLooksEqual(look, makeBoldStyle())     ? '*'
               : isText && areLooksEqual(look, makeItalicStyle()) ? '_'
                                                                  : TestSupport::printElement(element);
    }
    if (const auto* block = boost::get<SharedConstPtr<DOM::Block>>(&element))
    {
        const auto* paragraph = cast<DOM::Paragraph>(&**block);
        if (paragraph && areDeeplyEqual(paragraph->getSharedStyle(), makeCentredStyle()))
        {
            return '=';
        }
    }
    return TestSupport::printElement(element);
}

/// The live elements, without dead slots.
inline std::string printLive(const DOM::TextWithTombstones& text)
{
    std::string line;
    for (const auto& element : TestSupport::flatten(text))
    {
        line += printElement(element);
    }
    return line;
}

/// The text with a dot for each dead slot.
inline std::string printWithDead(const DOM::TextWithTombstones& text)
{
    std::string line;
    const std::string live = printLive(text);
    unsigned long liveCount = 0;
    for (unsigned long slot = 0; liveCount < live.size() || line.size() < slot ||
                                 !text.getTombstones().convertIndex(CollaborationUtils::IndexIncludingTombstones(slot));
         ++slot)
    {
        const bool isLive =
            text.getTombstones().convertIndex(CollaborationUtils::IndexIncludingTombstones(slot)).has_value();
        line += isLive ? live[liveCount++] : '.';
    }
    return line;
}

/// A document on which fitted operations are executed. Each must be executed as it is, and be taken back exactly.
class FitCase
{
public:
    explicit FitCase(std::string_view notation)
        : _looked(notation)
        , _edited(TestSupport::makeText(_looked._slots))
    {
    }

    /// Executes the fitted marking of the slots inside of `<...>`.
    FitCase& mark()
    {
        const auto marking = makeMarking(_looked._taken);
        _marking = fitMarking(_edited.getText(), *marking);
        executeFitted(_marking, *marking);
        return *this;
    }

    /// Executes the fitted restoring of the slots inside of `<...>`. Of those of `unknownSlots` nothing is known; those
    /// of `slotsLiveThen` were live when they were taken out.
    FitCase& restore(const std::vector<unsigned long>& unknownSlots = {},
                     const std::vector<unsigned long>& slotsLiveThen = {})
    {
        const auto restoring = makeRestoring(_looked);
        const auto contains = [](const std::vector<unsigned long>& slots, unsigned long slot)
        { return std::count(slots.begin(), slots.end(), slot) > 0; };
        const auto findDead = [&](unsigned long slot) -> boost::optional<DeadElement>
        {
            EXPECT_FALSE(_looked._slots[slot]._isLive);
            if (contains(unknownSlots, slot))
            {
                return boost::none;
            }
            return DeadElement{_looked._slots[slot]._element, contains(slotsLiveThen, slot)};
        };
        _restoring = fitRestoring(_edited.getText(), *restoring, findDead);
        executeFitted(_restoring, *restoring);
        return *this;
    }

    /// Executes the fitted insertion of `elements` at `^`, which were typed behind the slot in front of `@`.
    FitCase& insert(std::string_view elements, Typing typing = {})
    {
        typing._anchor = _looked._anchor;
        const auto insertion = makeInsertion(_looked._gap, LookedText::makeElements(elements));
        _insertion = fitInsertion(_edited.getText(), *insertion, {typing});
        executeFitted(_insertion, *insertion);
        return *this;
    }

    template<class Fitted, class Asked>
    void executeFitted(const Fitted& fitted, const Asked& asked)
    {
        if (!fitted._isChanged)
        {
            EXPECT_EQ(nullptr, fitted._operation);
            execute(CollaborationEngine::cloneOperation(asked));
        }
        else if (fitted._operation)
        {
            execute(CollaborationEngine::cloneOperation(*fitted._operation));
        }
    }

    /// Expects the live text.
    FitCase& is(std::string_view notation)
    {
        EXPECT_EQ(notation, printLive(_edited.getText()));
        return *this;
    }

    /// Expects the text with a dot for each dead slot.
    FitCase& isWithDead(std::string_view notation)
    {
        EXPECT_EQ(notation, printWithDead(_edited.getText()));
        return *this;
    }

    FitCase& isAsAsked()
    {
        EXPECT_FALSE(_marking._isChanged || _restoring._isChanged || _insertion._isChanged);
        return *this;
    }

    FitCase& bringsBack(const std::vector<unsigned long>& slots)
    {
        EXPECT_EQ(slots, _restoring._broughtBack);
        return *this;
    }

    FitCase& leavesDead(const std::vector<unsigned long>& slots)
    {
        EXPECT_EQ(slots, _restoring._leftDead);
        return *this;
    }

    /// Expects what is left out, as "2-4 7-8".
    FitCase& leavesOut(std::string_view ranges)
    {
        std::string printed;
        for (const auto& range : _restoring._leftOut)
        {
            printed +=
                (printed.empty() ? "" : " ") + std::to_string(range.getBegin()) + "-" + std::to_string(range.getEnd());
        }
        EXPECT_EQ(ranges, printed);
        return *this;
    }

    /// Expects where the planned elements are in the fitted insertion, -1 for those that aren't.
    FitCase& has(const std::vector<long>& identities)
    {
        std::vector<long> actual;
        for (const std::size_t identity : _insertion._identities)
        {
            actual.push_back(identity == FittedInsertion::nowhere ? -1 : static_cast<long>(identity));
        }
        EXPECT_EQ(identities, actual);
        return *this;
    }

    FitCase& keeps(const std::vector<unsigned long>& slots)
    {
        EXPECT_EQ(slots, _marking._staying);
        return *this;
    }

    FitCase& takesAlso(const std::vector<unsigned long>& slots)
    {
        EXPECT_EQ(slots, _marking._extra);
        return *this;
    }

    /// Executes an operation, which must be taken as it is, and be taken back exactly.
    void execute(CollaborationEngine::OperationUPtr operation)
    {
        const DOM::TextWithTombstones before = _edited.getText();
        CollaborationEngine::OperationUPtr changedOp;
        ASSERT_FALSE(_edited._executor.executeAndChangeIfNeeded(*operation, changedOp))
            << printWithDead(before) << ": " << TestSupport::print(*operation) << " was changed to "
            << TestSupport::print(*changedOp);
        const auto faults = DOM::checkInvariants(_edited.getText());
        EXPECT_TRUE(faults.empty()) << faults.front();
        const DOM::TextWithTombstones afterwards = _edited.getText();
        _edited._executor.reverse(*operation);
        EXPECT_TRUE(before == _edited.getText()) << printWithDead(_edited.getText());
        EXPECT_FALSE(_edited._executor.executeAndChangeIfNeeded(*operation, changedOp));
        EXPECT_TRUE(afterwards == _edited.getText()) << printWithDead(_edited.getText());
        _happened.push_back(std::move(operation));
    }

    /// A marking of slots, which ascend.
    static std::unique_ptr<TextMarking> makeMarking(const std::vector<unsigned long>& slots)
    {
        using namespace CollaborationEngine;
        std::vector<ListModificationOperation<MarkAsRemovedTag>> nestedOperations;
        for (std::size_t end = slots.size(); end > 0;)
        {
            std::size_t begin = end - 1;
            while (begin > 0 && slots[begin - 1] + 1 == slots[begin])
            {
                --begin;
            }
            nestedOperations.emplace_back(TestSupport::getTextAddress(), textType,
                                          IndexRange<unsigned long>(slots[begin], slots[end - 1] + 1));
            end = begin;
        }
        return std::make_unique<TextMarking>(std::move(nestedOperations));
    }

    static std::unique_ptr<TextRestoring> makeRestoring(const LookedText& looked)
    {
        using namespace CollaborationEngine;
        std::vector<ListModificationOperation<RestoreTag>> nestedOperations;
        const auto marking = makeMarking(looked._taken);
        for (const auto& nested : marking->getNestedOperations())
        {
            DOMCollaboration::TextWithTombstonesElementVector elements;
            for (unsigned long slot = nested.getRange().getBegin(); slot < nested.getRange().getEnd(); ++slot)
            {
                elements.push_back(looked._slots[slot]._element);
            }
            nestedOperations.emplace_back(
                TestSupport::getTextAddress(), textType,
                makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(std::move(elements)), nested.getRange());
        }
        return std::make_unique<TextRestoring>(std::move(nestedOperations));
    }

    static std::unique_ptr<TextInsertion> makeInsertion(unsigned long slot,
                                                        DOMCollaboration::TextWithTombstonesElementVector elements)
    {
        using namespace CollaborationEngine;
        std::vector<ListModificationOperation<InsertTag>> nestedOperations;
        const auto range = IndexRange<unsigned long>::fromCount(slot, elements.size());
        nestedOperations.emplace_back(TestSupport::getTextAddress(), textType,
                                      makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(std::move(elements)),
                                      range);
        return std::make_unique<TextInsertion>(std::move(nestedOperations));
    }

    static constexpr unsigned long textType =
        DOMCollaboration::convertOperationNodeType(DOMCollaboration::OperationDOMNodeType::TextWithTombstones);

    LookedText _looked;
    DocumentUnderTest _edited;
    FittedMarking _marking;
    FittedRestoring _restoring;
    FittedInsertion _insertion;
    std::vector<CollaborationEngine::OperationUPtr> _happened;
};

} // namespace Zem::CollaborationSession
