#pragma once

namespace Zem::CollaborationSession
{

/// How much a client may ask of a server at once. What is beyond a limit is refused before anything is done with it,
/// and is an error of its sender alone. The defaults leave room for what people do: a book that is pasted, a
/// replacement of all of 100,000 hits, a day of typing without a connection. They bound what a batch can cost in time
/// and memory.
struct AdmissionLimits
{
    // Of a batch.

    /// Operations, those inside of composites counted, and composites themselves.
    unsigned long _operations = 1ul << 18;
    /// Ranges of operations on several ranges.
    unsigned long _ranges = 1ul << 20;
    /// Elements of lists, and rows, columns and cells of tables, that operations bring or hold; each again where
    /// several operations share them. Dead slots inside of them count as well.
    unsigned long _elements = 1ul << 23;
    /// Bytes of what operations bring or hold: values, texts, styles, keys, addresses. Shared ones count each time.
    unsigned long _bytes = 1ul << 28;
    /// Slots that operations name, a slot counted each time.
    unsigned long _namedSlots = 1ul << 26;

    /// How often the document is made again because an operation failed, or an action couldn't happen as a whole;
    /// what comes behind is refused then.
    unsigned long _failures = 16;
    /// Ranges that are brought past what stands in the way, counted each time; an operation counts as 16 more. What
    /// comes behind is refused.
    unsigned long _passedRanges = 1ul << 30;

    // Of one thing.

    /// How deep composites lie in each other, and in what a restoring was to be.
    unsigned long _compositeDepth = 16;
    /// Chunks of an address.
    unsigned long _addressDepth = 64;
    /// How deep texts lie in inserted content: a paragraph of a cell of a table is 1 deep.
    unsigned long _contentDepth = 16;
    /// Bytes of one value: of a property, a script, a cell, or one element of a list with all that lies in it.
    unsigned long _valueBytes = 1ul << 26;
    /// Bytes of the key of a map.
    unsigned long _keyBytes = 1024;
    /// Rows, and columns, of an inserted table, dead ones included.
    unsigned long _tableLines = 1ul << 20;
    /// How many deletions hold one thing down.
    unsigned long _holders = 1ul << 20;
    /// Slots of a list, dead ones included, however many came in at a time. Also rows and columns of a table.
    unsigned long _slots = 1ul << 32;
    /// Insertions that were taken back under one end of a selection.
    unsigned long _revertedInsertions = 1024;

    // Of a session. These are for its server to keep.

    /// How many entries of the history the batches of a client may be brought past altogether, those not counted that
    /// are due to it because the history has grown since. A client that asks for more is told that it is too far
    /// behind: it joins anew, and brings what is pending past the rest by itself.
    unsigned long _lag = 100000;
    /// Clients that are in a session at a time.
    unsigned long _members = 1000;
};

} // namespace Zem::CollaborationSession
