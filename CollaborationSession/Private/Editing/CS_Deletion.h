#pragma once

/// Which elements go when characters are deleted.

#include "Editing/CS_CharacterIndex.h"

#include "CE_Operation.h"

#include <boost/container/small_vector.hpp>

namespace Zem::CollaborationSession
{

/// Elements [begin, end) of the plane.
struct ElementsStretch
{
    unsigned long _begin;
    unsigned long _end;
};

struct Deletion
{
    /// The elements that go; the stretches ascend, and elements that stay lie between them.
    boost::container::small_vector<ElementsStretch, 2> _stretches;
    /// Whether the line break at the end of what was to be deleted stays, between text and an atomic block.
    bool _keepsLineBreak = false;
};

/// What goes with the characters of [begin, end). Requires: the stretch lies inside the text and isn't empty.
Deletion planDeletion(const CharacterIndex& index, unsigned long begin, unsigned long end);

/// The marking of a deletion that has stretches: one nested range for each maximal stretch of live slots.
CollaborationEngine::OperationUPtr makeMarking(const CharacterIndex& index, const Deletion& deletion);

} // namespace Zem::CollaborationSession
