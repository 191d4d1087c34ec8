#pragma once

/// Why a server takes an operation or a selection of a client for broken.

#include "Util_BaseRuntimeError.h"
#include "Util_Export.h"

namespace Zem::CollaborationSession
{

/// The faults of what a client sent. The first ones can be seen from the operation alone, the last ones only beside the
/// document that it is for.
enum class OperationFault : unsigned char
{
    // What is composed of others.
    MissingPart,
    EmptyComposite,
    EmptyPartOfUnit,
    CompositePartOfUnit,
    UnknownCompositeKind,
    UnexpectedChange,
    TooManyOperations,
    CompositesTooDeep,

    // What an operation is aimed at.
    UnknownNodeType,
    WrongOperation,
    NodeTypeWithoutOperations,
    RemovalForGood,
    ForeignID,
    AddressTooDeep,
    AddressWithoutKey,
    AddressWithUnknownType,
    IndexTooHigh,
    TooManyNamedSlots,

    // Ranges.
    MissingRanges,
    TooManyRanges,
    RangesOnDifferentNodes,
    RangesWithOwnIDs,
    RangesNotDescending,
    MoveOfSeveral,
    MoveOutOfList,

    // What an operation carries.
    MissingData,
    WrongData,
    CountOfOtherData,
    MissingElement,
    ElementWithChildren,
    InvalidByte,
    InvalidEnumerator,
    NumberNotFinite,
    BrokenContent,
    ContentTooDeep,
    TooManyElements,
    ValueTooBig,
    TooManyBytes,
    UnknownProperty,
    MissingKey,
    WrongKey,
    KeyTooLong,
    CellsNotAscending,

    // What keeps an operation from having an effect.
    ShadowOutsideAddress,
    TooManyShadows,
    TooManyHolders,
    HoldersOfOtherOperation,

    // Selections, and looks.
    UnknownSelectionMode,
    NoStretchOfText,
    TooManyRevertedInsertions,
    RevertedInsertionOutsideAddress,

    // What fits no document, or not this one.
    NoSuchNode,
    DeadNode,
    NodeOfOtherType,
    BehindTheEnd,
    DeadSlots,
    LiveSlots,
    FormulaOutsideCell,
    TakenKey,
    FreeKey
};

constexpr OperationFault getLastEnumerator(OperationFault)
{
    return OperationFault::FreeKey;
}

/// A sentence for people.
ZEM_EXPORT const char* describe(OperationFault fault);

/// An operation, or a selection, that no client of the session can have made.
class ZEM_EXPORT InvalidOperationError : public BaseRuntimeError
{
public:
    explicit InvalidOperationError(OperationFault fault);

    OperationFault getFault() const
    {
        return _fault;
    }

private:
    OperationFault _fault;
};

} // namespace Zem::CollaborationSession
