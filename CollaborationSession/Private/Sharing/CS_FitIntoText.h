#pragma once

/// What to execute where an operation on a text was made on an older state of it. Brought past what others did, it may
/// not fit any more: the text would refuse it, repair it, or do what nobody meant. These look at the text as it stands,
/// and give the operation that does what was meant and is executed as it is. They change nothing.
///
/// Content (bytes, atomic runs and blocks) and structure (tags and marks) are two things. Content always goes, comes
/// back or comes in. Structure goes as far as nothing that lives needs it, comes back as far as it fits, and looks like
/// what it goes on from.

#include "Sharing/CS_TextPlaces.h"

#include "CE_ListMultirangeOperation.h"

#include "Util_CallableRef.h"

#include <boost/optional.hpp>

#include <cstddef>
#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

template<class Tag>
using TextOperation =
    CollaborationEngine::ListMultirangeOperationImpl<CollaborationEngine::ListModificationOperation<Tag>>;
using TextMarking = TextOperation<CollaborationEngine::MarkAsRemovedTag>;
using TextRestoring = TextOperation<CollaborationEngine::RestoreTag>;
using TextInsertion = TextOperation<CollaborationEngine::InsertTag>;

/// The operation that fits. Where it isn't changed, what was asked fits as it is, and nothing was made.
template<class FittingOperation>
struct FittedOperation
{
    bool _isChanged = false;
    /// Null where nothing is changed, or nothing is left to do.
    std::unique_ptr<FittingOperation> _operation;
};

struct FittedMarking : FittedOperation<TextMarking>
{
    /// Slots of the marking that stay, ascending: tags and marks that something that lives needs.
    std::vector<unsigned long> _staying;
    /// Slots that go with those of the marking, ascending: tags of runs that lose all that is in them, and marks in
    /// whose place one of the marking stays.
    std::vector<unsigned long> _extra;
};

/// What goes of `marking`:
///
///   1. All content.
///   2. Of the tags and marks those that nothing needs. Where a line break is left between what lives, or is needed in
///      front of a block or the end, the last mark stays; where a paragraph has to begin, the first tag.
///   3. A byte that stays keeps the tag of its run, if it would stand in no run, or in one of another look.
///   4. A deleted line break is a mark and the tag behind it. A marked paragraph that nothing follows but a block, or
///      the end, stands for the break in front of it: where something in it lives, it isn't its tag and the mark in
///      front that stay, but the last mark alone, and what lives joins the paragraph in front.
///   5. The tag of a run in which somebody parted what goes, if no byte is left behind it, goes, too.
///
/// Requires: all slots of the marking are live, and its nested operations descend.
/// Fails: "isLive".
/// Cost: one walk to the marking and over it, by blocks and runs; of what fits as it is, a walk over its nested
/// operations, and no look at the text inside of them.
FittedMarking fitMarking(const DOM::TextWithTombstones& text, const TextMarking& marking);

struct FittedRestoring : FittedOperation<TextRestoring>
{
    /// Content and marks that stay dead, because nothing is known of what they need; ascending.
    std::vector<CollaborationEngine::IndexRange<unsigned long>> _leftOut;
    /// Tags of the restoring that stay dead, ascending: nothing in them came back, or something else does for them.
    std::vector<unsigned long> _leftDead;
    /// Slots that come back with those of the restoring, ascending.
    std::vector<unsigned long> _broughtBack;
};

/// What is known of a dead slot.
struct DeadElement
{
    DOMCollaboration::TextWithTombstonesElement _element;
    /// Whether it was still there when what is to come back was taken out: then it is what that stood in, and not what
    /// somebody had done with before.
    bool _wasLive = false;
};

/// Gives what is known of a dead slot; nothing if its element isn't.
using FindDead = CallableRef<boost::optional<DeadElement>(unsigned long slot)>;

/// What comes back of `restoring`, and with it:
///
///   1. All content, and all marks: a mark is a line break.
///   2. Tags come back where they fit.
///   3. Where content or a mark needs tags or marks that are dead, but not the restoring's, these come back, too, as
///      few as do. Of several those that were still live then, and of these the next: the last tag in front of what
///      needs it, the first mark behind. Where a paragraph would stay open, that is a mark. Bytes that would join a
///      run of another look need the tag that they stood behind.
///   4. Where nothing is known of what is needed, content and marks are left out.
///   5. Bytes that live keep their look: where a tag that comes back for something in front of them would give them
///      another, the dead tag of their look comes back behind it, or it stays dead itself.
///
/// Requires: all slots of the restoring are dead, and its nested operations descend and have their elements.
/// Fails: "isDead"; "plainPtr" and `std::bad_cast` for missing or foreign data.
/// Cost: one walk to the restoring and over it, by blocks and runs, and its elements. `findDead` is asked for
/// dead slots of others between two live elements: where something is missing once for each of these, and where bytes
/// are to join a run, for those between it and them.
FittedRestoring fitRestoring(const DOM::TextWithTombstones& text, const TextRestoring& restoring, FindDead findDead);

/// What is known of what was typed with one nested insertion.
struct Typing
{
    /// The slot, now, of the element that it was typed behind, live or dead; nothing at the beginning of the text.
    std::optional<unsigned long> _anchor;
    /// How what was typed looked to its author; nothing if that isn't known. (Null is the default look.)
    std::optional<RunStylePtr> _look;
    /// The paragraph that it was typed into, as its author knew it; null if that isn't known.
    const DOM::Paragraph* _paragraph = nullptr;
    /// Whether its tags only part or continue what was there, and so look like that. Otherwise (a paste, a text typed
    /// in a look that was picked) they keep the look that they have.
    bool _tagsGoOn = true;
};

struct FittedInsertion : FittedOperation<TextInsertion>
{
    static constexpr std::size_t nowhere = ~std::size_t(0);

    /// For each element that was planned its number in the fitted insertion, or `nowhere`. The elements of either are
    /// counted in the order of the text, from the lowest nested operation to the highest. Empty where nothing is
    /// changed.
    std::vector<std::size_t> _identities;
};

/// What comes in of `insertion`, and where. `typings` has one for each nested operation, in their order.
///
///   1. A run's tag directly in front of the gap that came in behind the anchor parts the run in front of what is
///      typed: the gap moves in front of it.
///   2. Bytes look like their anchor looks now; if that is dead, as they looked to their author. Where they would
///      join a run of another look, they get a tag of their own.
///   3. Tags that go on look like what they go on from, as it looks now: a run's tag like the anchor's run, a
///      paragraph's tag like the paragraph that is parted.
///   4. What stands behind the gap keeps its look: if it is the rest of a run, there is a tag of that look in front of
///      it.
///   5. Where no paragraph is open, what is typed becomes one, of the look that is known; but between a mark and a
///   block
///      that isn't a paragraph, or the end, it joins the paragraph in front.
///   6. A mark is a line break: none is lost, and there are no more than the text needs. Tags that nothing needs are
///      left out.
///
/// Requires: the nested operations descend and have their elements. Fails: "isEach" without a typing for each;
/// "plainPtr" and `std::bad_cast` for missing or foreign data.
/// Cost: a few walks to the insertion and over it, by blocks and runs, and its elements. Bytes that were typed directly
/// behind a byte that lives are left as they are, for a walk to that byte and no allocation.
FittedInsertion fitInsertion(const DOM::TextWithTombstones& text, const TextInsertion& insertion,
                             const std::vector<Typing>& typings);

} // namespace Zem::CollaborationSession
