#pragma once

/// One thing that a user does: a keystroke, a paste, "make this bold", an undo. It is the unit of sending,
/// acknowledging, undo and refusal.

#include "Editing/CS_LookChange.h"
#include "Editing/CS_Selection.h"

#include "CE_Operation.h"
#include "DOM_RunStyle.h"
#include "DOM_SharedStyle.h"

#include <boost/optional.hpp>

#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// Elements of one text, from the first to the last, both of them inside, as positions in the coordinates of
/// operations. What others insert between the two is in it, and what they insert beside it isn't.
using Stretch = Selection;

/// A look that is meant for a stretch of a text, whatever runs and paragraphs it has by then. The later of two on one
/// field stands.
struct LookSetting
{
    Stretch _stretch;
    LookTarget _target = LookTarget::Runs;
    LookChange _change;
};

/// What a user meant by an action, in the state behind its operations. Where others' actions came first, it says what
/// the operations alone can't.
struct Meaning
{
    /// A part that can't happen keeps all of it from happening.
    bool _isAllOrNothing = false;
    /// It changes only what nobody else has changed since.
    bool _isUndo = false;
    /// What is inserted was typed: tags go on with the look of what they part, as it is by then, and characters have
    /// the look of the one that they were typed behind.
    bool _isTyping = false;
    /// The look that the typed characters had for their author; null for the default one.
    DOM::SharedStyleConstIPtr<DOM::RunStyle> _typedLook;
    /// Where somebody else's text came in between what was typed and what it was typed behind, as two typed at one
    /// place: from the one to the other. What somebody typed behind a letter of his own goes in front of such a text.
    std::vector<Stretch> _typedApart;
    std::vector<LookSetting> _looks;
};

/// The operation is composite if a user's action took several.
struct Action
{
    std::shared_ptr<const CollaborationEngine::Operation> _operation;
    /// Null if it means no more than its operation does.
    std::shared_ptr<const Meaning> _meaning;
};

} // namespace Zem::CollaborationSession
