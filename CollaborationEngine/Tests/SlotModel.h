#pragma once

/// One list as the engine's operations see it: slots with an identity and the number of deletions that hold them down.
/// It carries operations out by the letter, and says so when one isn't legal.

#include "OperationNotation.h"

#include "CE_HierarchicalOperationTransformer.h"
#include "CE_ListMultirangeOperation.h"
#include "CE_ListMultirangeTransformers.h"
#include "CE_ListTransformers.h"
#include "CE_MultirangeOperationUtils.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace Zem::CollaborationEngine::Testing
{

using Insert = ListModificationOperation<InsertTag>;
using Remove = ListModificationOperation<RemoveTag>;
using MarkAsRemoved = ListModificationOperation<MarkAsRemovedTag>;
using Restore = ListModificationOperation<RestoreTag>;
using Leave = ListLeaveTombstonesOperation;
using Items = SimpleItemsCollection<std::vector<char>>;
using Range = IndexRange<unsigned long>;

constexpr unsigned long listType = 1;
constexpr unsigned long textType = 2;

enum class Family
{
    SingleRange,
    Multirange
};

struct Slot
{
    friend bool operator==(const Slot&, const Slot&) = default;

    char _identity = 0;
    unsigned long _holdersCount = 0;
};

/// An operation that can't be carried out in this state.
class IllegalOperation : public std::logic_error
{
public:
    using std::logic_error::logic_error;
};

class SlotModel
{
public:
    SlotModel() = default;

    explicit SlotModel(std::vector<Slot> slots)
        : _slots(std::move(slots))
    {
    }

    const std::vector<Slot>& getSlots() const
    {
        return _slots;
    }

    unsigned long getHighestHoldersCount() const;

    /// Carries out an operation of any kind, and fills in what a marking takes out.
    void apply(Operation& operation);

    /// The slots as one line: dead ones in brackets, with the number of their holders.
    std::string toString() const;

    friend bool operator==(const SlotModel&, const SlotModel&) = default;

private:
    void applySingle(Insert& operation);
    void applySingle(Remove& operation);
    void applySingle(MarkAsRemoved& operation);
    void applySingle(Restore& operation);
    void applySingle(Leave& operation);
    void applySingle(ListMoveOperation& operation);
    void release(const Operation& original, const Shadows& shadows);

    template<class T>
    void applySingle(ListMultirangeOperationImpl<T>& operation);

    std::vector<Slot> _slots;
};

SharedConstPtr<ItemsCollection> makeItems(const std::string& items);
OperationNodeAddress makeListAddress(Family family);

/// One stretch of a list operation: a range, or a gap and what is inserted there.
struct Stretch
{
    unsigned long _begin;
    unsigned long _count;
    std::string _items;
    unsigned long _holdersCount = 0;
};

/// The operation on all the stretches, which ascend. A single-range family takes one.
template<class T>
OperationUPtr makeListOperation(Family family, const std::vector<Stretch>& stretches);

OperationUPtr makeMove(unsigned long slot, unsigned long target);

/// A restoring that other deletions hold down; all stretches have one number of holders.
OperationUPtr makeReleasing(Family family, const std::vector<Stretch>& stretches);

/// A transformer with both families.
std::shared_ptr<HierarchicalOperationTransformer> makeListTransformer();

} // namespace Zem::CollaborationEngine::Testing
