#pragma once

#include "CE_BaseOperationTransformer.h"
#include "CE_ListMultirangeOperation.h"
#include "CE_NodeAddressWithTransformationData.h"

#include <boost/optional.hpp>

#include <memory>
#include <vector>

namespace Zem::CollaborationSession
{

/// An insertion that a text made something else of: the way from the slots as it was planned to those as it happened.
///
///     planned    a b w c d         w was typed into a paragraph that somebody else removed, and the text
///     happened   a b c d { | w }   made a paragraph for it, behind what is dead
///
/// Elements that both have keep their identity: what was done to them, or typed beside them, before the change was
/// known finds them where they stand now. Elements that only the plan has are gone, with all that was done to them.
///
/// What is typed behind an element that both have stays behind that element, so that a word that is typed letter by
/// letter ends as one word.
class ChangedInsertion
{
public:
    using Insertion = CollaborationEngine::ListMultirangeOperationImpl<
        CollaborationEngine::ListModificationOperation<CollaborationEngine::InsertTag>>;

    /// Both were made in one state. Elements are matched by a longest common subsequence of what they hold.
    /// Cost: linear in the two where they agree at their beginnings and ends, and the product of what is left, unless
    /// that exceeds a million: then none of that is matched.
    ChangedInsertion(const Insertion& planned, const Insertion& happened);

    /// An operation that was made behind the planned insertion, as it has to be behind the one that happened; the way
    /// then begins behind `operation`.
    CollaborationEngine::OperationUPtr cross(const CollaborationEngine::Operation& operation,
                                             const CollaborationEngine::BaseOperationTransformer& transformer);

    /// Whether there is no difference any more: the author has removed what the text lies in, and restored it, which
    /// brings back the text as the author had it.
    bool isOver() const
    {
        return _isOver;
    }

    /// A position behind the planned insertion, as it has to be behind the one that happened.
    void follow(CollaborationEngine::NodeAddressWithTransformationData& position) const;

private:
    /// The elements of an insertion, in their order: how many slots of the state before stand in front of each.
    using Gaps = std::vector<unsigned long>;

    static constexpr std::size_t nowhere = ~std::size_t(0);

    boost::optional<unsigned long> mapSlot(unsigned long slot) const;
    unsigned long mapGap(unsigned long gap) const;
    boost::optional<unsigned long> mapOwn(unsigned long slot) const;
    bool isBelow(const CollaborationEngine::OperationNodeAddress& address) const;
    void takeIn(unsigned long plannedGap, unsigned long happenedGap, unsigned long count);

    CollaborationEngine::OperationUPtr crossSingle(std::unique_ptr<CollaborationEngine::AtomicOperation> operation);
    CollaborationEngine::OperationUPtr crossOnNode(CollaborationEngine::ListMultirangeOperation& operation);
    CollaborationEngine::OperationUPtr crossInsertion(Insertion& insertion);
    template<class Nested>
    CollaborationEngine::OperationUPtr
    crossRanges(const CollaborationEngine::ListMultirangeOperationImpl<Nested>& operation) const;

    void followAncestors(const CollaborationEngine::Operation& operation,
                         const CollaborationEngine::BaseOperationTransformer& transformer);
    bool isDead() const;

    /// Some operation on the text. It is shadowed while the text is in something that the author has removed.
    std::shared_ptr<const CollaborationEngine::Operation> _onNode;
    CollaborationEngine::OperationNodeAddress _nodeAddress;
    bool _isOver = false;
    Gaps _planned;
    Gaps _happened;
    /// For each planned element the number of the same one among those that happened, or `nowhere`.
    std::vector<std::size_t> _identities;
};

} // namespace Zem::CollaborationSession
