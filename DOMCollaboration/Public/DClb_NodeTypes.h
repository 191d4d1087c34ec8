#pragma once

/// The types of node in the world of operations, and their counterparts in the world of the document itself.

#include "DOM_NativeNodeAddress.h"

#include <array>
#include <cstddef>
#include <optional>

namespace Zem::DOMCollaboration
{

/// The types of node that operations know. The numbers travel with operations and never change.
enum class OperationDOMNodeType : unsigned long
{
    TextDocument = 0,
    WorkbookDocument = 1,
    PresentationDocument = 2,
    Tombstone = 3,
    WorksheetCollection = 4,
    SectionTag = 5,
    Table = 6,
    Frame = 7,
    FrameCollection = 8,
    ConditionalFormat = 9,
    ConditionalFormatCollection = 10,
    FieldBlock = 11,
    CellCollection = 12,
    Cell = 13,
    Shape = 14,
    ParagraphTag = 15,
    CollectionEndMark = 16,
    Run = 17,
    Char = 18,
    HeaderFooterPairCollection = 19,
    HeaderFooterPair = 20,
    Header = 21,
    Footer = 22,
    Temporary = 23,
    DocumentProps = 24,
    ScriptCollection = 25,
    CommentCollection = 26,
    Comment = 27,
    NoteCollection = 28,
    Note = 29,
    TextStyleCollection = 30,
    TextStyle = 31,
    TableStyleCollection = 32,
    TableStyle = 33,
    TextWithTombstones = 34
};

inline constexpr unsigned long operationNodeTypesCount = 35;
inline constexpr unsigned long nativeNodeTypesCount = 37;

/// The number that the engine works with.
constexpr unsigned long convertOperationNodeType(OperationDOMNodeType nodeType)
{
    return static_cast<unsigned long>(nodeType);
}

struct CorrespondingNodeTypes
{
    DOM::NativeDOMNodeType _native;
    std::optional<OperationDOMNodeType> _operation;
};

/// Which types of the two worlds are one: a row for each native type, in the order of their numbers. Text is flat in
/// the world of operations, so the collections inside a paragraph and a run have no counterpart there.
inline constexpr std::array<CorrespondingNodeTypes, nativeNodeTypesCount> correspondingNodeTypes = []
{
    using Native = DOM::NativeDOMNodeType;
    using Operation = OperationDOMNodeType;
    return std::array<CorrespondingNodeTypes, nativeNodeTypesCount>{{
        {Native::TextDocument, Operation::TextDocument},
        {Native::WorkbookDocument, Operation::WorkbookDocument},
        {Native::PresentationDocument, Operation::PresentationDocument},
        {Native::Tombstone, Operation::Tombstone},
        {Native::WorksheetCollection, Operation::WorksheetCollection},
        {Native::BlockCollection, Operation::TextWithTombstones},
        {Native::SectionTag, Operation::SectionTag},
        {Native::Table, Operation::Table},
        {Native::Frame, Operation::Frame},
        {Native::FrameCollection, Operation::FrameCollection},
        {Native::ConditionalFormat, Operation::ConditionalFormat},
        {Native::ConditionalFormatCollection, Operation::ConditionalFormatCollection},
        {Native::FieldBlock, Operation::FieldBlock},
        {Native::CellCollection, Operation::CellCollection},
        {Native::Cell, Operation::Cell},
        {Native::Shape, Operation::Shape},
        {Native::Paragraph, Operation::ParagraphTag},
        {Native::RunCollection, std::nullopt},
        {Native::Run, Operation::Run},
        {Native::CharCollection, std::nullopt},
        {Native::Char, Operation::Char},
        {Native::CollectionEndMark, Operation::CollectionEndMark},
        {Native::HeaderFooterPairCollection, Operation::HeaderFooterPairCollection},
        {Native::HeaderFooterPair, Operation::HeaderFooterPair},
        {Native::Header, Operation::Header},
        {Native::Footer, Operation::Footer},
        {Native::Temporary, Operation::Temporary},
        {Native::DocumentProps, Operation::DocumentProps},
        {Native::ScriptCollection, Operation::ScriptCollection},
        {Native::CommentCollection, Operation::CommentCollection},
        {Native::Comment, Operation::Comment},
        {Native::NoteCollection, Operation::NoteCollection},
        {Native::Note, Operation::Note},
        {Native::TextStyleCollection, Operation::TextStyleCollection},
        {Native::TextStyle, Operation::TextStyle},
        {Native::TableStyleCollection, Operation::TableStyleCollection},
        {Native::TableStyle, Operation::TableStyle},
    }};
}();

namespace NodeTypesDetails
{

/// The native type of each operation type, by its number, from the table above. An operation type without a row, or
/// with two, or a row out of its order, doesn't compile.
inline constexpr std::array<DOM::NativeDOMNodeType, operationNodeTypesCount> nativeByOperation = []
{
    std::array<DOM::NativeDOMNodeType, operationNodeTypesCount> result{};
    std::array<bool, operationNodeTypesCount> isSet{};
    for (std::size_t row = 0; row < correspondingNodeTypes.size(); ++row)
    {
        const CorrespondingNodeTypes& types = correspondingNodeTypes.at(row);
        if (static_cast<std::size_t>(types._native) != row)
        {
            throw "The rows must stand in the order of the native numbers";
        }
        if (types._operation)
        {
            const unsigned long operation = convertOperationNodeType(*types._operation);
            if (isSet.at(operation))
            {
                throw "An operation type has two rows";
            }
            isSet.at(operation) = true;
            result.at(operation) = types._native;
        }
    }
    for (const bool has : isSet)
    {
        if (!has)
        {
            throw "An operation type has no row";
        }
    }
    return result;
}();

} // namespace NodeTypesDetails

} // namespace Zem::DOMCollaboration
