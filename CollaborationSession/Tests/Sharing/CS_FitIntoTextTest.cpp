// Random operations of two users on one text: those of the second are brought past those of the first, fitted, and
// executed. What a text must read afterwards is known from the two users' own documents.

#include "Sharing/CS_FitCase.h"

#include "CE_InverseOperation.h"
#include "DClb_PropertyValues.h"

#include <map>
#include <numeric>
#include <random>
#include <set>

namespace Zem::CollaborationSession
{

using namespace CollaborationEngine;
using DOMCollaboration::TextWithTombstonesElement;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

constexpr char anyLook = '?';
constexpr unsigned long seedsCount = 1000;
constexpr auto late = TieResolveCondition::SecondWins;

/// The look of each byte, by the byte: each is there once.
std::map<short, char> readLooks(const DOM::TextWithTombstones& text)
{
    std::map<short, char> looks;
    char look = 0;
    for (const TextWithTombstonesElement& element : TestSupport::flatten(text))
    {
        if (const auto* byte = boost::get<short>(&element))
        {
            EXPECT_TRUE(looks.emplace(*byte, look).second);
        }
        look = boost::get<SharedConstPtr<DOM::Run>>(&element) ? printElement(element) : look;
    }
    return looks;
}

std::set<short> getBytes(const std::map<short, char>& looks)
{
    std::set<short> bytes;
    for (const auto& [byte, look] : looks)
    {
        bytes.insert(byte);
    }
    return bytes;
}

/// Where a slot stands behind an insertion.
unsigned long follow(const Operation& operation, unsigned long slot)
{
    unsigned long moved = slot;
    if (const auto* insertion = cast<TextInsertion>(&operation))
    {
        for (const auto& nested : insertion->getNestedOperations())
        {
            moved += nested.getRange().getBegin() <= slot ? nested.getRange().getCount() : 0;
        }
    }
    return moved;
}

class TwoUsers
{
public:
    explicit TwoUsers(unsigned long seed)
        : _random(seed)
        , _case(makeNotation())
    {
        for (unsigned long count = pick(3); count > 0; --count)
        {
            replaceRandomly(_case._edited, 0);
        }
        _base = getText();
    }

    /// One user replaces something, or makes it bold, and another one replaces something else.
    void editConcurrently()
    {
        DocumentUnderTest other(_base);
        const bool isSetting = pick(3) == 0;
        const Operations first = isSetting ? makeBoldRandomly(_case._edited) : replaceRandomly(_case._edited, 3);
        const std::map<short, char> looksOfFirst = readLooks(getText());
        const bool isInsertion = pick(2) == 0;
        const Operations second = isInsertion ? replaceRandomly(other, 3, true) : replaceRandomly(other, 0);
        std::map<short, char> looksOfSecond = readLooks(other.getText());
        SCOPED_TRACE("base " + printWithDead(_base) + ", first " + printWithDead(getText()) + ", second " +
                     printWithDead(other.getText()));
        if (!second.empty())
        {
            // Behind a deletion, an empty paragraph may follow, which has no bytes.
            const std::vector<Typing> typings = findTypings(*second.front(), first);
            if (isSetting)
            {
                lookLikeAnchors(*second.front(), typings, looksOfSecond);
            }
            OperationUPtr included = cloneOperation(*second.front());
            for (const OperationUPtr& happened : first)
            {
                included = _transformer.include(*included, *happened, late);
            }
            executeFitted(std::move(included), typings);
        }
        checkLooks(looksOfFirst, looksOfSecond);
    }

    /// Deletions are taken back in another order than they were made in.
    void undoInAnyOrder()
    {
        const std::set<short> baseBytes = getBytes(readLooks(_base));
        for (unsigned long count = 1 + pick(3); count > 0; --count)
        {
            Operations deletion = replaceRandomly(_case._edited, 0);
            if (deletion.size() == 1)
            {
                remember(*deletion.front());
                _happened.push_back(std::move(deletion.front()));
            }
            else
            {
                // An empty paragraph came in as well.
                _case._edited._editor.takeBack(deletion);
            }
        }
        std::vector<std::size_t> order(_happened.size());
        std::iota(order.begin(), order.end(), 0);
        std::shuffle(order.begin(), order.end(), _random);
        for (const std::size_t index : order)
        {
            undo(index);
        }
        EXPECT_EQ(baseBytes, getBytes(readLooks(getText())));
        EXPECT_EQ(printLive(_base), printLive(getText()));
    }

private:
    unsigned long pick(unsigned long count)
    {
        return _random() % count;
    }

    const DOM::TextWithTombstones& getText()
    {
        return _case._edited.getText();
    }

    std::string makeNotation()
    {
        std::string notation;
        for (unsigned long blocks = 1 + pick(4); blocks > 0; --blocks)
        {
            if (pick(5) == 0)
            {
                notation += '#';
                continue;
            }
            notation += '{';
            for (unsigned long runs = pick(4); runs > 0; --runs)
            {
                notation += pick(6) == 0 ? "~" : std::string(1, "|*_"[pick(3)]) + makeBytes(1 + pick(4));
            }
            notation += '}';
        }
        return notation;
    }

    /// Letters that weren't used yet.
    std::string makeBytes(unsigned long count)
    {
        static const std::string letters =
            "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!%&()+,-./:;?";
        const std::string bytes = letters.substr(_lettersCount, count);
        _lettersCount += count;
        return bytes;
    }

    /// A user's own operation: up to `bytesCount` bytes, or a line break among them, for what is deleted.
    Operations replaceRandomly(DocumentUnderTest& edited, unsigned long bytesCount, bool isInsertion = false)
    {
        const unsigned long size = edited._editor.getIndex().getCharactersCount();
        const unsigned long begin = pick(size + 1);
        const bool isDeletion = !isInsertion && (bytesCount == 0 || pick(2) == 0);
        const unsigned long end = isDeletion ? begin + pick(size - begin + 1) : begin;
        std::string replacement = isDeletion ? "" : makeBytes(pick(bytesCount + 1));
        if (!isDeletion && pick(3) == 0)
        {
            replacement.insert(pick(replacement.size() + 1), "\n");
        }
        return edited._editor.replace(begin, end, replacement);
    }

    Operations makeBoldRandomly(DocumentUnderTest& edited)
    {
        using DOMCollaboration::PropertyId;
        using Value = DOMCollaboration::MapPropertyIdToSimpleDataValue<PropertyId::RunPropertyId>;
        const unsigned long size = edited._editor.getIndex().getCharactersCount();
        const unsigned long begin = pick(size + 1);
        const unsigned long end = begin + pick(size - begin + 1);
        return edited._editor.setRunProperty(begin, end, PropertyId::RunPropertyId,
                                             makeSharedConst<Value>(makeBoldStyle()->get().getRunProps()));
    }

    /// What was typed behind something in a run looks like that looks now; elsewhere it depends on what is behind.
    void lookLikeAnchors(const Operation& operation, const std::vector<Typing>& typings, std::map<short, char>& looks)
    {
        const auto* insertion = cast<TextInsertion>(&operation);
        TextPlaces places(getText());
        for (std::size_t index = 0; insertion && index < typings.size(); ++index)
        {
            const auto anchor =
                typings[index]._anchor ? places.getElement(*typings[index]._anchor) : std::optional<unsigned long>();
            const auto place = anchor ? places.find(*anchor) : DOMCollaboration::PlanePlace();
            const bool isInRun = place._kind == DOMCollaboration::PlaceKind::Char ||
                                 place._kind == DOMCollaboration::PlaceKind::TextRunTag ||
                                 place._kind == DOMCollaboration::PlaceKind::AtomicRun;
            const char look = isInRun ? printElement(LookedText::makeRunElement(places.getLook(place))) : anyLook;
            const auto& nested = insertion->getNestedOperations()[index];
            for (const auto& element : cast<TextWithTombstonesItems>(*nested.getData()).getCollection())
            {
                if (const auto* byte = boost::get<short>(&element))
                {
                    looks[*byte] = look;
                }
            }
        }
    }

    /// What is known of an insertion that was made in the base, behind what the first user did.
    std::vector<Typing> findTypings(const Operation& operation, const Operations& first)
    {
        std::vector<Typing> typings;
        const auto* insertion = cast<TextInsertion>(&operation);
        if (!insertion)
        {
            return typings;
        }
        TextPlaces places(_base);
        for (const auto& nested : insertion->getNestedOperations())
        {
            Typing typing;
            const unsigned long gap = places.getGap(nested.getRange().getBegin());
            if (gap > 0)
            {
                const auto place = places.findBefore(gap);
                const bool isInRun = place._kind == DOMCollaboration::PlaceKind::Char ||
                                     place._kind == DOMCollaboration::PlaceKind::TextRunTag;
                typing._look = isInRun ? std::make_optional(places.getLook(place)) : std::nullopt;
                typing._anchor = places.getSlot(gap - 1);
                for (const OperationUPtr& happened : first)
                {
                    typing._anchor = follow(*happened, *typing._anchor);
                }
            }
            typings.push_back(typing);
        }
        return typings;
    }

    void executeFitted(OperationUPtr operation, const std::vector<Typing>& typings)
    {
        if (const auto* composite = cast<CompositeOperation>(operation.get()))
        {
            for (const OperationUPtr& part : composite->getParts())
            {
                executeFitted(cloneOperation(*part), typings);
            }
            return;
        }
        if (const auto* marking = cast<TextMarking>(operation.get()))
        {
            _case.executeFitted(fitMarking(getText(), *marking), *marking);
        }
        else if (const auto* insertion = cast<TextInsertion>(operation.get()))
        {
            _case.executeFitted(fitInsertion(getText(), *insertion, typings), *insertion);
        }
        else if (const auto* restoring = cast<TextRestoring>(operation.get()))
        {
            executeRestoring(*restoring);
        }
        else
        {
            _case.execute(std::move(operation));
        }
    }

    /// Those of its slots that came back with another restoring live already.
    void executeRestoring(const TextRestoring& restoring)
    {
        std::vector<unsigned long> slots;
        TextPlaces places(getText());
        const auto& nestedOperations = restoring.getNestedOperations();
        for (auto nested = nestedOperations.rbegin(); nested != nestedOperations.rend(); ++nested)
        {
            for (unsigned long slot = nested->getRange().getBegin(); slot < nested->getRange().getEnd(); ++slot)
            {
                if (!places.getElement(slot))
                {
                    slots.push_back(slot);
                }
            }
        }
        if (slots.empty())
        {
            return;
        }
        LookedText looked("");
        for (unsigned long slot = 0; slot <= slots.back(); ++slot)
        {
            const auto known = _dead.find(slot);
            looked._slots.push_back(TestSupport::ModelSlot{
                known == _dead.end() ? TextWithTombstonesElement() : known->second.first, false});
        }
        looked._taken = slots;
        const auto asked = FitCase::makeRestoring(looked);
        const auto findDead = [&](unsigned long slot)
        {
            const auto known = _dead.find(slot);
            return known == _dead.end()
                       ? boost::none
                       : boost::make_optional(DeadElement{known->second.first, known->second.second > _undone});
        };
        const FittedRestoring fitted = fitRestoring(getText(), *asked, findDead);
        EXPECT_TRUE(fitted._leftOut.empty());
        _case.executeFitted(fitted, *asked);
    }

    /// What an operation took out.
    void remember(const Operation& operation)
    {
        for (const auto& nested : cast<TextMarking>(operation).getNestedOperations())
        {
            unsigned long slot = nested.getRange().getBegin();
            for (const auto& element : cast<TextWithTombstonesItems>(*nested.getData()).getCollection())
            {
                _dead[slot++] = {element, _happened.size()};
            }
        }
    }

    void undo(std::size_t index)
    {
        const std::map<short, char> before = readLooks(getText());
        std::set<short> expected = getBytes(before);
        for (const auto& nested : cast<TextMarking>(*_happened[index]).getNestedOperations())
        {
            for (const auto& element : cast<TextWithTombstonesItems>(*nested.getData()).getCollection())
            {
                if (const auto* byte = boost::get<short>(&element))
                {
                    expected.insert(*byte);
                }
            }
        }
        const std::string textBefore = printWithDead(getText());
        _undone = index;
        executeFitted(makeUndo(*_happened[index], _transformer), {});
        const std::map<short, char> after = readLooks(getText());
        EXPECT_EQ(expected, getBytes(after)) << textBefore << " became " << printWithDead(getText());
        for (const auto& [byte, look] : before)
        {
            EXPECT_EQ(look, after.at(byte)) << textBefore << " became " << printWithDead(getText());
        }
    }

    /// Each byte is there that neither user deleted, and looks as it did to who saw it.
    void checkLooks(const std::map<short, char>& first, const std::map<short, char>& second)
    {
        const std::map<short, char> base = readLooks(_base);
        std::map<short, char> expected;
        for (const auto& [byte, look] : first)
        {
            if (base.count(byte) == 0 || second.count(byte) > 0)
            {
                expected.emplace(byte, look);
            }
        }
        for (const auto& [byte, look] : second)
        {
            if (base.count(byte) == 0)
            {
                expected.emplace(byte, look);
            }
        }
        const std::map<short, char> actual = readLooks(getText());
        for (auto& [byte, look] : expected)
        {
            look = look == anyLook && actual.count(byte) > 0 ? actual.at(byte) : look;
        }
        EXPECT_EQ(expected, actual) << "became " << printWithDead(getText());
    }

    std::mt19937_64 _random;
    unsigned long _lettersCount = 0;
    FitCase _case;
    DOM::TextWithTombstones _base;
    DOMCollaboration::DocumentOperationTransformer _transformer;
    Operations _happened;
    /// Which of these is undone.
    std::size_t _undone = 0;
    /// The elements of dead slots, and which deletion took them out.
    std::map<unsigned long, std::pair<TextWithTombstonesElement, std::size_t>> _dead;
};

} // namespace

TEST(FitIntoText, WhatTwoUsersEditAtTheSameMomentIsExecutedAsFitted)
{
    for (unsigned long seed = 0; seed < seedsCount && !::testing::Test::HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TwoUsers(seed).editConcurrently();
    }
}

TEST(FitIntoText, DeletionsThatAreUndoneInAnyOrderLeaveTheTextAsItWas)
{
    for (unsigned long seed = 0; seed < seedsCount && !::testing::Test::HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        TwoUsers(seed).undoInAnyOrder();
    }
}

} // namespace Zem::CollaborationSession
