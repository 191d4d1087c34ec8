#include "Editing/CS_CommandSupport.h"

#include "Editing/CS_InvalidEditError.h"

#include "DOM_NumberingRef.h"
#include "DOM_Paragraph.h"
#include "DOM_Runs.h"

#include "Util_Assert.h"

namespace Zem::CollaborationSession
{

using CollaborationUtils::IndexExcludingTombstones;
using DOMCollaboration::TextWithTombstonesElement;

void requireStretch(const CharacterIndex& index, unsigned long begin, unsigned long end)
{
    ZEM_ASSERT(!index.isStale());
    const auto describe = [&] { return "The stretch [" + std::to_string(begin) + ", " + std::to_string(end) + ")"; };
    if (end < begin)
    {
        throw InvalidEditError(describe() + " ends before it begins");
    }
    if (end > index.getCharactersCount())
    {
        throw InvalidEditError(describe() + " isn't inside the text, which has " +
                               std::to_string(index.getCharactersCount()) + " characters");
    }
}

unsigned long getSlot(const CharacterIndex& index, unsigned long element)
{
    const CollaborationUtils::TombstonesStorage& tombstones = index.getTextInDocument().getText().getTombstones();
    return tombstones.convertIndex(IndexExcludingTombstones(element)).get();
}

ListModificationOperation<CollaborationEngine::InsertTag>
makeNestedInsertion(const CollaborationEngine::OperationNodeAddress& address, unsigned long slot,
                    DOMCollaboration::TextWithTombstonesElementVector elements)
{
    const auto range = IndexRange<unsigned long>::fromCount(slot, elements.size());
    return ListModificationOperation<CollaborationEngine::InsertTag>(
        address, textNodeType, makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(std::move(elements)), range);
}

TextWithTombstonesElement makeRunElement(const DOM::SharedStyleConstIPtr<DOM::RunStyle>& style)
{
    auto run = std::make_shared<DOM::TextRun>();
    run->getSharedStyle() = style;
    return SharedConstPtr<DOM::Run>(std::move(run));
}

TextWithTombstonesElement makeParagraphElement(const DOM::Paragraph* model)
{
    auto paragraph = std::make_shared<DOM::Paragraph>();
    if (model)
    {
        paragraph->getSharedStyle() = model->getSharedStyle();
        paragraph->getSharedParaMarkStyle() = model->getSharedParaMarkStyle();
        if (model->getNumRef())
        {
            paragraph->getNumRef() = std::make_unique<DOM::NumberingRef>(*model->getNumRef());
        }
    }
    return SharedConstPtr<DOM::Block>(std::move(paragraph));
}

} // namespace Zem::CollaborationSession
