// The live elements part the slots of a restoring into groups; each is planned for itself, as the cheapest way from the
// state of the text in front of the group to one that what is behind can stand in:
//
//     slots     { [  |  |  a  b  }  {  ]  |  c  }
//                   aid ----     ----        what the restoring has, in this order; and between these, dead slots of
//                                            others, which can aid where something is missing
//
// The way goes through `TextState`, by items that come back or stay dead, and by aids. What is left out costs, most of
// all content, then marks, then an aid, and least of all a tag of the restoring itself.

#include "Sharing/CS_FitIntoText.h"
#include "Sharing/CS_MakeRestoring.h"

#include "DOM_RunStyle.h"

#include "Util_Assert.h"
#include "Util_Cast.h"

#include <algorithm>
#include <array>
#include <limits>
#include <list>

namespace Zem::CollaborationSession
{

using CollaborationEngine::IndexRange;
using CollaborationEngine::ListModificationOperation;
using CollaborationEngine::RestoreTag;
using DOMCollaboration::PlaceKind;
using DOMCollaboration::PlanePlace;
using DOMCollaboration::TextWithTombstonesElement;
using DOMCollaboration::TextWithTombstonesItems;

namespace
{

using Cost = unsigned long;
constexpr Cost impossible = std::numeric_limits<Cost>::max();
constexpr Cost costOfTag = 1;
constexpr Cost costOfAid = 100;
constexpr Cost costOfMark = 10'000;
constexpr Cost costOfContent = 1'000'000;

/// One element, or neighbouring bytes.
struct Item
{
    unsigned long _slot;
    unsigned long _count;
    const TextWithTombstonesElement* _elements;
    PlaceKind _kind;
    bool _isAsked = true;

    Cost getCost() const
    {
        switch (_kind)
        {
        case PlaceKind::ParaTag:
        case PlaceKind::TextRunTag:
            return costOfTag;
        case PlaceKind::ParaMark:
            return costOfMark;
        default:
            return _count * costOfContent;
        }
    }
};

using Items = std::vector<Item>;

/// What dead slots between two items can do, each with its kinds in their order.
enum class Aid : unsigned char
{
    None,
    Mark,
    Paragraph,
    Run,
    ParagraphAndRun
};

constexpr std::array aids{Aid::None, Aid::Mark, Aid::Paragraph, Aid::Run, Aid::ParagraphAndRun};

/// The tags and marks of dead slots between two items, ascending.
class Supply
{
public:
    void add(unsigned long slot, const DeadElement& dead)
    {
        _dead.emplace_back(slot, dead);
    }

    /// The elements of an aid; nothing if there are none such.
    std::optional<Items> get(Aid aid) const
    {
        switch (aid)
        {
        case Aid::None:
            return Items();
        case Aid::Mark:
            return makeSingle(findFirst(PlaceKind::ParaMark));
        case Aid::Paragraph:
            return makeSingle(findLast(PlaceKind::ParaTag, _dead.size()));
        case Aid::Run:
            return makeSingle(findLast(PlaceKind::TextRunTag, _dead.size()));
        case Aid::ParagraphAndRun:
            break;
        }
        const auto run = findLast(PlaceKind::TextRunTag, _dead.size());
        const auto paragraph = run ? findLast(PlaceKind::ParaTag, *run) : std::nullopt;
        return paragraph ? std::make_optional(Items{getItem(*paragraph), getItem(*run)}) : std::nullopt;
    }

    /// The last run's tag of a look.
    std::optional<Item> findRun(const RunStylePtr& look) const
    {
        for (std::size_t index = _dead.size(); index-- > 0;)
        {
            const Item item = getItem(index);
            if (item._kind == PlaceKind::TextRunTag &&
                areLooksEqual(boost::get<SharedConstPtr<DOM::Run>>(*item._elements)->getSharedStyle(), look))
            {
                return item;
            }
        }
        return std::nullopt;
    }

private:
    bool is(std::size_t index, PlaceKind kind) const
    {
        return getKind(_dead[index].second._element) == kind;
    }

    /// The first that was still live, or else the first.
    std::optional<std::size_t> findFirst(PlaceKind kind) const
    {
        std::optional<std::size_t> found;
        for (std::size_t index = 0; index < _dead.size(); ++index)
        {
            if (is(index, kind) && (!found || _dead[index].second._wasLive))
            {
                found = index;
                if (_dead[index].second._wasLive)
                {
                    break;
                }
            }
        }
        return found;
    }

    /// The last in front of `end` that was still live, or else the last.
    std::optional<std::size_t> findLast(PlaceKind kind, std::size_t end) const
    {
        std::optional<std::size_t> found;
        for (std::size_t index = end; index-- > 0;)
        {
            if (is(index, kind) && (!found || _dead[index].second._wasLive))
            {
                found = index;
                if (_dead[index].second._wasLive)
                {
                    break;
                }
            }
        }
        return found;
    }

    std::optional<Items> makeSingle(std::optional<std::size_t> index) const
    {
        return index ? std::make_optional(Items{getItem(*index)}) : std::nullopt;
    }

    Item getItem(std::size_t index) const
    {
        const auto& [slot, dead] = _dead[index];
        return Item{slot, 1, &dead._element, getKind(dead._element), false};
    }

    /// Slots and what is known of them.
    std::vector<std::pair<unsigned long, DeadElement>> _dead;
};

/// The cheapest way through the items of a group.
class Way
{
public:
    /// `supplies` are those in front of each item, and behind the last one.
    Way(const Items& items, const std::vector<Supply>& supplies, TextState front)
        : _items(items)
        , _supplies(supplies)
    {
        _columns.reserve(2 * items.size() + 2);
        _columns.emplace_back();
        getCell(front)._cost = 0;
        for (std::size_t index = 0; index < items.size(); ++index)
        {
            addAids(supplies[index]);
            addItem(items[index]);
        }
        addAids(supplies.back());
    }

    /// The cost of the way that what is behind the group can stand at the end of.
    Cost getCost(PlaceKind behind) const
    {
        return _columns.back()[static_cast<std::size_t>(findEnd(behind))]._cost;
    }

    /// The items that come back, with the aids, ascending.
    Items getWay(PlaceKind behind) const
    {
        Items way;
        TextState state = findEnd(behind);
        for (std::size_t column = _columns.size(); --column > 0;)
        {
            const Cell& cell = _columns[column][static_cast<std::size_t>(state)];
            const std::size_t index = (column - 1) / 2;
            if (column % 2 == 1)
            {
                const Items aid = *_supplies[index].get(cell._aid);
                way.insert(way.end(), aid.rbegin(), aid.rend());
            }
            else if (cell._isTaken)
            {
                way.push_back(_items[index]);
            }
            state = cell._from;
        }
        return Items(way.rbegin(), way.rend());
    }

private:
    struct Cell
    {
        Cost _cost = impossible;
        TextState _from = TextState::Closed;
        Aid _aid = Aid::None;
        bool _isTaken = false;
    };

    static constexpr std::array states{TextState::Closed, TextState::Open, TextState::Tag, TextState::Run};

    Cell& getCell(TextState state)
    {
        return _columns.back()[static_cast<std::size_t>(state)];
    }

    void addAids(const Supply& supply)
    {
        startColumn();
        for (const Aid aid : aids)
        {
            const auto items = supply.get(aid);
            if (!items)
            {
                continue;
            }
            for (const TextState from : states)
            {
                std::optional<TextState> to = from;
                for (const Item& item : *items)
                {
                    to = to ? step(*to, item._kind) : to;
                }
                improve(from, to, items->size() * costOfAid, aid, false);
            }
        }
    }

    void addItem(const Item& item)
    {
        startColumn();
        for (const TextState from : states)
        {
            improve(from, step(from, item._kind), 0, Aid::None, true);
        }
        for (const TextState from : states)
        {
            improve(from, from, item.getCost(), Aid::None, false);
        }
    }

    void startColumn()
    {
        _columns.emplace_back();
    }

    void improve(TextState from, std::optional<TextState> to, Cost cost, Aid aid, bool isTaken)
    {
        const Cost costOfFrom = _columns[_columns.size() - 2][static_cast<std::size_t>(from)]._cost;
        if (to && costOfFrom != impossible && costOfFrom + cost < getCell(*to)._cost)
        {
            getCell(*to) = Cell{costOfFrom + cost, from, aid, isTaken};
        }
    }

    TextState findEnd(PlaceKind behind) const
    {
        std::optional<TextState> best;
        Cost cost = impossible;
        for (const TextState state : states)
        {
            const Cost costOfState = _columns.back()[static_cast<std::size_t>(state)]._cost;
            if (step(state, behind) && costOfState < cost)
            {
                best = state;
                cost = costOfState;
            }
        }
        // Nothing at all can always come back.
        ZEM_ASSERT(best);
        return *best;
    }

    const Items& _items;
    const std::vector<Supply>& _supplies;
    /// From the front on: behind the aids in front of an item, and behind the item, in turns.
    std::vector<std::array<Cell, states.size()>> _columns;
};

class RestoringFitter
{
public:
    RestoringFitter(const DOM::TextWithTombstones& text, const TextRestoring& restoring, FindDead findDead)
        : _places(text)
        , _restoring(restoring)
        , _findDead(findDead)
    {
    }

    FittedRestoring fit()
    {
        Items group;
        unsigned long gap = 0;
        const auto& nestedOperations = _restoring.getNestedOperations();
        for (auto nested = nestedOperations.rbegin(); nested != nestedOperations.rend(); ++nested)
        {
            const unsigned long gapOfNested = requireDead(nested->getRange());
            if (!group.empty() && gapOfNested != gap)
            {
                fitGroup(group, gap);
                group.clear();
            }
            gap = gapOfNested;
            addItems(group, *nested);
        }
        fitGroup(group, gap);
        const auto& fitted = _fitted;
        _fitted._isChanged = !fitted._leftOut.empty() || !fitted._leftDead.empty() || !fitted._broughtBack.empty();
        if (_fitted._isChanged && !_pieces.empty())
        {
            _fitted._operation = makeOperation();
        }
        return std::move(_fitted);
    }

private:
    unsigned long requireDead(const IndexRange<unsigned long>& range) const
    {
        const unsigned long gap = _places.getGap(range.getBegin());
        const unsigned long last = range.getEnd() - 1;
        const bool isDead =
            !_places.getElement(range.getBegin()) && !_places.getElement(last) && _places.getGap(last) == gap;
        ZEM_ASSERT(isDead);
        return gap;
    }

    static void addItems(Items& items, const ListModificationOperation<RestoreTag>& nested)
    {
        const auto& elements = cast<TextWithTombstonesItems>(derefPtr(nested.getData())).getCollection();
        unsigned long slot = nested.getRange().getBegin();
        for (const TextWithTombstonesElement& element : elements)
        {
            const PlaceKind kind = getKind(element);
            const bool continues =
                kind == PlaceKind::Char && &element != elements.data() && items.back()._kind == PlaceKind::Char;
            if (continues)
            {
                ++items.back()._count;
            }
            else
            {
                items.push_back(Item{slot, 1, &element, kind});
            }
            ++slot;
        }
    }

    void fitGroup(const Items& items, unsigned long gap)
    {
        const PlanePlace front = _places.findBefore(gap);
        const PlanePlace behind = _places.find(gap);
        const TextState state = getStateBehind(front._kind);
        std::vector<Supply> supplies(items.size() + 1);
        std::optional<Way> ways(std::in_place, items, supplies, state);
        if (ways->getCost(behind._kind) >= costOfMark)
        {
            findSupplies(supplies, items, gap);
            ways.emplace(items, supplies, state);
        }
        Items way = ways->getWay(behind._kind);
        std::list<DeadElement> ownTags;
        keepOwnLooks(way, ownTags, front, gap);
        Supply supplyBehind;
        keepLookBehind(way, supplyBehind, front, behind, gap);
        addToResult(items, way);
    }

    /// Asks for the dead slots of others in front of each item, and behind the last one.
    void findSupplies(std::vector<Supply>& supplies, const Items& items, unsigned long gap) const
    {
        unsigned long begin = gap == 0 ? 0 : _places.getSlot(gap - 1) + 1;
        for (std::size_t index = 0; index < items.size(); ++index)
        {
            fillSupply(supplies[index], begin, items[index]._slot);
            begin = items[index]._slot + items[index]._count;
        }
        fillSupply(supplies.back(), begin, _places.getSlot(gap));
    }

    void fillSupply(Supply& supply, unsigned long begin, unsigned long end) const
    {
        for (unsigned long slot = begin; slot < end; ++slot)
        {
            const auto dead = _findDead(slot);
            if (dead && isStructure(dead->_element))
            {
                supply.add(slot, *dead);
            }
        }
    }

    static bool isStructure(const TextWithTombstonesElement& element)
    {
        const PlaceKind kind = getKind(element);
        return kind == PlaceKind::ParaTag || kind == PlaceKind::ParaMark || kind == PlaceKind::TextRunTag;
    }

    static const RunStylePtr& getLookOfTag(const TextWithTombstonesElement& element)
    {
        return boost::get<SharedConstPtr<DOM::Run>>(element)->getSharedStyle();
    }

    /// Bytes that would join a run of another look get the tag back that they stood behind.
    void keepOwnLooks(Items& way, std::list<DeadElement>& ownTags, const PlanePlace& front, unsigned long gap) const
    {
        RunStylePtr look = front._kind == PlaceKind::Char ? _places.getLook(front) : RunStylePtr();
        for (std::size_t index = 0; index < way.size(); ++index)
        {
            const Item item = way[index];
            const PlaceKind kindInFront = index == 0 ? front._kind : way[index - 1]._kind;
            if (item._kind == PlaceKind::TextRunTag)
            {
                look = getLookOfTag(*item._elements);
            }
            else if (item._kind == PlaceKind::Char && kindInFront == PlaceKind::Char)
            {
                const unsigned long begin =
                    index > 0 ? way[index - 1]._slot + way[index - 1]._count : _places.getSlot(gap - 1) + 1;
                const auto slot = findOwnTag(ownTags, begin, item._slot);
                if (slot && !areLooksEqual(getLookOfTag(ownTags.back()._element), look))
                {
                    look = getLookOfTag(ownTags.back()._element);
                    way.insert(way.begin() + static_cast<std::ptrdiff_t>(index),
                               Item{*slot, 1, &ownTags.back()._element, PlaceKind::TextRunTag, false});
                    ++index;
                }
            }
        }
    }

    /// The slot, in [begin, end), of the tag of the run that bytes at `end` stood in; it goes to the end of `tags`.
    std::optional<unsigned long> findOwnTag(std::list<DeadElement>& tags, unsigned long begin, unsigned long end) const
    {
        for (unsigned long slot = end; slot-- > begin;)
        {
            const auto dead = _findDead(slot);
            if (!dead || !dead->_wasLive || !isStructure(dead->_element))
            {
                continue;
            }
            if (getKind(dead->_element) != PlaceKind::TextRunTag)
            {
                return std::nullopt;
            }
            tags.push_back(*dead);
            return slot;
        }
        return std::nullopt;
    }

    /// A byte behind the group that would follow other bytes into a run of another look gets a tag, or these have none.
    void keepLookBehind(Items& way, Supply& supply, const PlanePlace& front, const PlanePlace& behind,
                        unsigned long gap) const
    {
        if (behind._kind != PlaceKind::Char)
        {
            return;
        }
        const RunStylePtr& look = _places.getLook(behind);
        bool isSupplied = false;
        while (!way.empty() && way.back()._kind == PlaceKind::Char)
        {
            std::size_t tag = way.size() - 1;
            while (tag > 0 && way[tag]._kind != PlaceKind::TextRunTag)
            {
                --tag;
            }
            const Item& item = way[tag];
            if (item._kind != PlaceKind::TextRunTag || areLooksEqual(getLookOfTag(*item._elements), look))
            {
                return;
            }
            if (!isSupplied)
            {
                fillSupply(supply, way.back()._slot + way.back()._count, _places.getSlot(gap));
                isSupplied = true;
            }
            if (const auto run = supply.findRun(look))
            {
                way.push_back(*run);
                return;
            }
            const PlaceKind kindInFront = tag == 0 ? front._kind : way[tag - 1]._kind;
            if (kindInFront != PlaceKind::Char)
            {
                return;
            }
            way.erase(way.begin() + static_cast<std::ptrdiff_t>(tag));
        }
    }

    void addToResult(const Items& items, const Items& way)
    {
        auto item = items.begin();
        for (const Item& taken : way)
        {
            for (; item != items.end() && item->_slot < taken._slot; ++item)
            {
                leaveOut(*item);
            }
            item += item != items.end() && item->_slot == taken._slot;
            if (!taken._isAsked)
            {
                _fitted._broughtBack.push_back(taken._slot);
            }
            for (unsigned long index = 0; index < taken._count; ++index)
            {
                _pieces.push_back(ElementAtSlot{taken._slot + index, taken._elements[index]});
            }
        }
        std::for_each(item, items.end(), [&](const Item& left) { leaveOut(left); });
    }

    void leaveOut(const Item& item)
    {
        if (item.getCost() == costOfTag)
        {
            _fitted._leftDead.push_back(item._slot);
            return;
        }
        auto& leftOut = _fitted._leftOut;
        const unsigned long end = item._slot + item._count;
        if (!leftOut.empty() && leftOut.back().getEnd() == item._slot)
        {
            leftOut.back() = IndexRange<unsigned long>(leftOut.back().getBegin(), end);
            return;
        }
        leftOut.emplace_back(item._slot, end);
    }

    std::unique_ptr<TextRestoring> makeOperation() const
    {
        auto operation = makeRestoring(_restoring, _pieces);
        operation->inheritIDIfPossibleImpl(_restoring);
        return operation;
    }

    TextPlaces _places;
    const TextRestoring& _restoring;
    FindDead _findDead;
    /// What comes back, ascending.
    std::vector<ElementAtSlot> _pieces;
    FittedRestoring _fitted;
};

} // namespace

FittedRestoring fitRestoring(const DOM::TextWithTombstones& text, const TextRestoring& restoring, FindDead findDead)
{
    return RestoringFitter(text, restoring, findDead).fit();
}

} // namespace Zem::CollaborationSession
