#pragma once

/// Why less happened than a user meant: a code for programs, and a sentence for people.

#include "Util_Export.h"

#include <string>

namespace Zem::CollaborationSession
{

/// The numbers travel: they never change and are never reused.
enum class RefusalReason : unsigned char
{
    /// An operation fits no document: it names what isn't there, or what it names is of another kind.
    FitsNoDocument = 1,
    /// It has no place beside what others did at the same moment.
    HasNoPlace = 2,
    /// The document doesn't take it where it is to be, as a merged cell that takes no text.
    NotTaken = 3,
    /// What it is aimed at was removed at the same moment. It is there when that comes back.
    TargetRemoved = 4,
    /// A part of an action that is all or nothing couldn't happen.
    NotWhole = 5,
    /// What was to come back isn't known any more.
    NothingToBringBack = 6
};

constexpr RefusalReason getLastEnumerator(RefusalReason)
{
    return RefusalReason::NothingToBringBack;
}

/// What of an action didn't happen, and why.
struct Refusal
{
    RefusalReason _reason = RefusalReason::FitsNoDocument;
    /// For people; programs look at the reason.
    std::string _sentence;

    friend bool operator==(const Refusal&, const Refusal&) = default;
};

} // namespace Zem::CollaborationSession
