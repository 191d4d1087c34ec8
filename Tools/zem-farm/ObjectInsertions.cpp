// Tables, shapes, fields, section tags, breaks, drawings: what stands in one slot of a text.

#include "Generators.h"
#include "StartDocument.h"
#include "Texts.h"
#include "Values.h"

#include "CE_ListMultirangeOperation.h"
#include "DClb_TextElement.h"

namespace ZemFarm
{

using namespace Zem::CollaborationEngine;
using Zem::DOMCollaboration::TextWithTombstonesElement;
using Zem::DOMCollaboration::TextWithTombstonesElementVector;
using Zem::DOMCollaboration::TextWithTombstonesItems;
namespace DOM = Zem::DOM;

namespace
{

constexpr unsigned long textType =
    static_cast<unsigned long>(Zem::DOMCollaboration::OperationDOMNodeType::TextWithTombstones);

void insert(Participant& author, const TextPlace& place, unsigned long gap, TextWithTombstonesElement element)
{
    std::vector<ListModificationOperation<InsertTag>> nested;
    nested.emplace_back(place._address, textType,
                        Zem::makeSharedConst<TextWithTombstonesItems>(TextWithTombstonesElementVector{element}),
                        IndexRange<unsigned long>::fromCount(gap, 1));
    ListMultirangeOperationImpl<ListModificationOperation<InsertTag>> insertion(std::move(nested));
    author.execute(insertion);
}

/// A gap in front of one of the elements for which `isRight` holds, or the end, where that is right.
template<class IsRight>
boost::optional<unsigned long> pickGap(const FlatText& text, Random& random, bool isEndRight, IsRight isRight)
{
    std::vector<unsigned long> gaps;
    for (const Element& element : text._elements)
    {
        if (isRight(element._kind))
        {
            gaps.push_back(element._slot);
        }
    }
    if (isEndRight)
    {
        gaps.push_back(text._slotsCount);
    }
    return gaps.empty() ? boost::none : boost::optional<unsigned long>(random.pickFrom(gaps));
}

/// Between two blocks; now and then anywhere, where the document closes and opens a paragraph around the block.
boost::optional<unsigned long> pickGapForBlock(const FlatText& text, Random& random)
{
    const bool isAnywhere = random.isOnceIn(5);
    return pickGap(text, random, true,
                   [&](ElementKind kind)
                   {
                       return isAnywhere ? kind != ElementKind::ContinuationByte
                                         : kind == ElementKind::ParagraphTag || kind == ElementKind::Block;
                   });
}

void insertBlock(Participant& author, Random& random)
{
    const Places places = findPlaces(author.getKind(), author.getDocument(), random);
    const TextPlace* place = pickText(places, random);
    if (!place)
    {
        return;
    }
    if (const auto gap = pickGapForBlock(FlatText(*place->_text), random))
    {
        insert(author, *place, *gap,
               Zem::SharedConstPtr<DOM::Block>(makeAtomicBlock(author.getSetup(),
                                                               author.getDocument().getSharedObjectFactory(), random,
                                                               getDepth(place->_address))));
    }
}

/// A formula or a value, which a cell takes as long as it is empty.
void insertCellValue(Participant& author, Random& random)
{
    Places places = findPlaces(author.getKind(), author.getDocument(), random);
    std::erase_if(places._texts,
                  [](const TextPlace& place)
                  {
                      const auto* inTable =
                          place._address.getSize() > 1
                              ? place._address.getItemFromEndAs<Zem::NodeAddressing::AddressInTable>(1)
                              : nullptr;
                      return !inTable || !place._text->getBlocks().empty();
                  });
    if (!places._texts.empty())
    {
        const TextPlace& place = random.pickFrom(places._texts);
        insert(author, place, random.pick(FlatText(*place._text)._slotsCount + 1),
               Zem::SharedConstPtr<DOM::Block>(std::make_unique<DOM::FieldBlock>(makeCellInfo(random))));
    }
}

void insertAtomicRun(Participant& author, Random& random)
{
    const Places places = findPlaces(author.getKind(), author.getDocument(), random);
    const TextPlace* place = pickText(places, random);
    if (!place)
    {
        return;
    }
    const auto gap = pickGap(FlatText(*place->_text), random, false,
                             [](ElementKind kind) {
                                 return kind != ElementKind::ParagraphTag && kind != ElementKind::Block &&
                                        kind != ElementKind::ContinuationByte;
                             });
    if (gap)
    {
        insert(author, *place, *gap,
               Zem::SharedConstPtr<DOM::Run>(makeAtomicRun(author.getDocument().getSharedObjectFactory(), random)));
    }
}

} // namespace

Generators makeObjectInsertions()
{
    return {{"insert-block", 4, isForAll, insertBlock},
            {"insert-cell-value", 2, isForAll, insertCellValue},
            {"insert-atomic-run", 4, isForAll, insertAtomicRun}};
}

} // namespace ZemFarm
