#pragma once

#include "Sharing/CS_FitIntoText.h"

#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// An element that comes back.
struct ElementAtSlot
{
    unsigned long _slot;
    DOMCollaboration::TextWithTombstonesElement _element;
};

/// Brings `elements` back, which ascend, in the text that `model` is about.
template<class Model>
std::unique_ptr<TextRestoring> makeRestoring(const Model& model, const std::vector<ElementAtSlot>& elements)
{
    using CollaborationEngine::ListModificationOperation;
    using CollaborationEngine::RestoreTag;
    std::vector<ListModificationOperation<RestoreTag>> nestedOperations;
    for (std::size_t end = elements.size(); end > 0;)
    {
        std::size_t begin = end - 1;
        while (begin > 0 && elements[begin - 1]._slot + 1 == elements[begin]._slot)
        {
            --begin;
        }
        DOMCollaboration::TextWithTombstonesElementVector restored;
        restored.reserve(end - begin);
        for (std::size_t index = begin; index < end; ++index)
        {
            restored.push_back(elements[index]._element);
        }
        nestedOperations.emplace_back(
            model.getNodeAddress(), model.getOperandType(),
            makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(std::move(restored)),
            CollaborationEngine::IndexRange<unsigned long>::fromCount(elements[begin]._slot, end - begin));
        end = begin;
    }
    return std::make_unique<TextRestoring>(std::move(nestedOperations));
}

} // namespace Zem::CollaborationSession
