#include "Sharing/CS_InvalidOperationError.h"

#include "Util_Assert.h"

namespace Zem::CollaborationSession
{

InvalidOperationError::InvalidOperationError(OperationFault fault)
    : BaseRuntimeError(describe(fault))
    , _fault(fault)
{
}

const char* describe(OperationFault fault)
{
    switch (fault)
    {
    case OperationFault::MissingPart:
        return "A part of a composite operation is missing";
    case OperationFault::EmptyComposite:
        return "A composite operation has no parts";
    case OperationFault::EmptyPartOfUnit:
        return "A part of a restoring does nothing";
    case OperationFault::CompositePartOfUnit:
        return "A part of a restoring is composed of others, and restores nothing";
    case OperationFault::UnknownCompositeKind:
        return "There is no such kind of composite operation";
    case OperationFault::UnexpectedChange:
        return "Only a changed restoring tells what it was to be";
    case OperationFault::TooManyOperations:
        return "There are too many operations in one batch";
    case OperationFault::CompositesTooDeep:
        return "Composite operations lie too deep in each other";
    case OperationFault::UnknownNodeType:
        return "There is no such type of node";
    case OperationFault::WrongOperation:
        return "An operation isn't of the kind that its type of node takes";
    case OperationFault::NodeTypeWithoutOperations:
        return "Nodes of this type take no operations";
    case OperationFault::RemovalForGood:
        return "Nothing is removed for good by an operation of its own";
    case OperationFault::ForeignID:
        return "An id isn't one of its author's own";
    case OperationFault::AddressTooDeep:
        return "An address has too many steps";
    case OperationFault::AddressWithoutKey:
        return "A step of an address into a map has no key, or one that no map has";
    case OperationFault::AddressWithUnknownType:
        return "A step of an address leads to a type of node that there isn't";
    case OperationFault::IndexTooHigh:
        return "An index is higher than any list or table has places";
    case OperationFault::TooManyNamedSlots:
        return "The operations of a batch name too many slots";
    case OperationFault::MissingRanges:
        return "An operation on several ranges has none";
    case OperationFault::TooManyRanges:
        return "There are too many ranges in one batch";
    case OperationFault::RangesOnDifferentNodes:
        return "The ranges of an operation are on different nodes";
    case OperationFault::RangesWithOwnIDs:
        return "A range of an operation has an id of its own";
    case OperationFault::RangesNotDescending:
        return "The ranges of an operation don't stand from the highest to the lowest, apart from each other";
    case OperationFault::MoveOfSeveral:
        return "A move is of more than one slot";
    case OperationFault::MoveOutOfList:
        return "A move leads out of its list or table";
    case OperationFault::MissingData:
        return "An operation lacks the data that it needs";
    case OperationFault::WrongData:
        return "The data of an operation are of another kind than its node takes";
    case OperationFault::CountOfOtherData:
        return "A range has another number of slots than elements";
    case OperationFault::MissingElement:
        return "An element of the data is missing";
    case OperationFault::ElementWithChildren:
        return "An element of a text has content that belongs in elements of its own";
    case OperationFault::InvalidByte:
        return "An element of a text is no byte";
    case OperationFault::InvalidEnumerator:
        return "A value is none of those that its enumeration has";
    case OperationFault::NumberNotFinite:
        return "A number isn't finite";
    case OperationFault::BrokenContent:
        return "Inserted content isn't sound";
    case OperationFault::ContentTooDeep:
        return "Inserted content lies too deep";
    case OperationFault::TooManyElements:
        return "There are too many elements in one batch";
    case OperationFault::ValueTooBig:
        return "A value is too big";
    case OperationFault::TooManyBytes:
        return "There are too many bytes in one batch";
    case OperationFault::UnknownProperty:
        return "There is no such property, or its node hasn't got it";
    case OperationFault::MissingKey:
        return "An operation on a map has no key";
    case OperationFault::WrongKey:
        return "A key is of another kind than its map has";
    case OperationFault::KeyTooLong:
        return "A key is too long";
    case OperationFault::CellsNotAscending:
        return "The cells of a row or column don't ascend";
    case OperationFault::ShadowOutsideAddress:
        return "A shadow lies on something that isn't on the way of its operation";
    case OperationFault::TooManyShadows:
        return "An operation has more shadows than there are places on its way";
    case OperationFault::TooManyHolders:
        return "Too many deletions hold one thing down";
    case OperationFault::HoldersOfOtherOperation:
        return "Deletions hold down what isn't restored";
    case OperationFault::UnknownSelectionMode:
        return "There is no such mode of a selection";
    case OperationFault::NoStretchOfText:
        return "A look is meant for something else than a stretch of one text";
    case OperationFault::TooManyRevertedInsertions:
        return "A selection remembers too many insertions that were taken back";
    case OperationFault::RevertedInsertionOutsideAddress:
        return "A selection remembers an insertion that isn't on its way";
    case OperationFault::NoSuchNode:
        return "An address leads to no node of the document";
    case OperationFault::DeadNode:
        return "An address leads to something that was removed";
    case OperationFault::NodeOfOtherType:
        return "An address leads to a node of another type";
    case OperationFault::BehindTheEnd:
        return "A range lies behind the end of its list";
    case OperationFault::DeadSlots:
        return "Something is removed that was removed before";
    case OperationFault::LiveSlots:
        return "Something is restored or left that wasn't removed";
    case OperationFault::FormulaOutsideCell:
        return "A formula, or its value, stands outside of a cell";
    case OperationFault::TakenKey:
        return "A key is inserted that is there already";
    case OperationFault::FreeKey:
        return "A key is removed that isn't there";
    }
    ZEM_FAIL("Invalid enum value");
}

} // namespace Zem::CollaborationSession
