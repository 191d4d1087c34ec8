#pragma once

/// The kinds of run, and the closed visit over them.

#include "DOM_Frame.h"
#include "DOM_Run.h"

#include "Util_Assert.h"
#include "Util_UUID.h"
#include "Util_Visitor.h"

#include <string>
#include <utility>

namespace Zem::DOM
{

/// A stretch of text of one style. The text is UTF-8; nothing here looks at the encoding.
class ZEM_EXPORT TextRun final : public RunImpl<TextRun, RunKind::TextRun>
{
public:
    TextRun() = default;

    explicit TextRun(std::string text)
        : _text(std::move(text))
    {
    }

    const std::string& getText() const
    {
        return _text;
    }

    void setText(std::string text)
    {
        _text = std::move(text);
    }

    /// Moves the text out and leaves the run without any.
    std::string takeText()
    {
        return std::exchange(_text, std::string());
    }

    bool hasEqualContent(const TextRun& other) const
    {
        return _text == other._text;
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    std::string _text;
};

/// A tabulator.
class ZEM_EXPORT TabRun final : public RunImpl<TabRun, RunKind::TabRun>
{
public:
    bool hasEqualContent(const TabRun&) const
    {
        return true;
    }

    template<class Archive>
    void serialize(Archive& archive);
};

enum class BreakType : unsigned char
{
    Line,
    Page,
    Column
};

constexpr BreakType getLastEnumerator(BreakType)
{
    return BreakType::Column;
}

/// A break of the line, page or column inside a paragraph.
class ZEM_EXPORT BreakRun final : public RunImpl<BreakRun, RunKind::BreakRun>
{
public:
    BreakRun() = default;

    explicit BreakRun(BreakType type)
        : _type(type)
    {
    }

    BreakType getType() const
    {
        return _type;
    }

    bool hasEqualContent(const BreakRun& other) const
    {
        return _type == other._type;
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    BreakType _type = BreakType::Line;
};

/// A floating or inline drawing, anchored in the text.
class ZEM_EXPORT DrawingRun final : public RunImpl<DrawingRun, RunKind::DrawingRun>
{
public:
    const Frame& getFrame() const
    {
        return _frame;
    }

    Frame& getFrame()
    {
        return _frame;
    }

    bool hasEqualContent(const DrawingRun& other) const
    {
        return _frame == other._frame;
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    Frame _frame;
};

enum class BookmarkEdge : unsigned char
{
    Begin,
    End
};

constexpr BookmarkEdge getLastEnumerator(BookmarkEdge)
{
    return BookmarkEdge::End;
}

/// One edge of a named bookmark.
class ZEM_EXPORT BookmarkRun final : public RunImpl<BookmarkRun, RunKind::BookmarkRun>
{
public:
    BookmarkRun() = default;

    BookmarkRun(std::string name, BookmarkEdge edge)
        : _name(std::move(name))
        , _edge(edge)
    {
    }

    const std::string& getName() const
    {
        return _name;
    }

    BookmarkEdge getEdge() const
    {
        return _edge;
    }

    bool hasEqualContent(const BookmarkRun& other) const
    {
        return _name == other._name && _edge == other._edge;
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    std::string _name;
    BookmarkEdge _edge = BookmarkEdge::Begin;
};

enum class FieldType : unsigned char
{
    PageNumber,
    PagesCount,
    Date,
    Time,
    Author,
    Title,
    FileName
};

constexpr FieldType getLastEnumerator(FieldType)
{
    return FieldType::FileName;
}

/// A field whose text is worked out when the document is shown.
class ZEM_EXPORT FieldRun final : public RunImpl<FieldRun, RunKind::FieldRun>
{
public:
    FieldRun() = default;

    FieldRun(FieldType type, std::string format)
        : _type(type)
        , _format(std::move(format))
    {
    }

    FieldType getType() const
    {
        return _type;
    }

    const std::string& getFormat() const
    {
        return _format;
    }

    bool hasEqualContent(const FieldRun& other) const
    {
        return _type == other._type && _format == other._format;
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    FieldType _type = FieldType::PageNumber;
    std::string _format;
};

/// The place in the text that a note is anchored at.
class ZEM_EXPORT AnchorRun final : public RunImpl<AnchorRun, RunKind::AnchorRun>
{
public:
    AnchorRun() = default;

    explicit AnchorRun(const UUID& noteUUID)
        : _noteUUID(noteUUID)
    {
    }

    const UUID& getNoteUUID() const
    {
        return _noteUUID;
    }

    bool hasEqualContent(const AnchorRun& other) const
    {
        return _noteUUID == other._noteUUID;
    }

    template<class Archive>
    void serialize(Archive& archive);

private:
    UUID _noteUUID;
};

/// Calls the one of `callables` that takes the class of `run`; together they must take every kind.
template<class RunType, class... Callables>
requires std::is_same_v<std::remove_const_t<RunType>, Run>
decltype(auto) visitRun(RunType& run, Callables&&... callables)
{
    Overloads<std::remove_cvref_t<Callables>...> overloads{std::forward<Callables>(callables)...};
    const auto as = [&]<class Kind>(std::type_identity<Kind>) -> decltype(auto)
    { return static_cast<std::conditional_t<std::is_const_v<RunType>, const Kind, Kind>&>(run); };
    switch (run.getKind())
    {
    case RunKind::TextRun:
        return overloads(as(std::type_identity<TextRun>()));
    case RunKind::TabRun:
        return overloads(as(std::type_identity<TabRun>()));
    case RunKind::BreakRun:
        return overloads(as(std::type_identity<BreakRun>()));
    case RunKind::DrawingRun:
        return overloads(as(std::type_identity<DrawingRun>()));
    case RunKind::BookmarkRun:
        return overloads(as(std::type_identity<BookmarkRun>()));
    case RunKind::FieldRun:
        return overloads(as(std::type_identity<FieldRun>()));
    case RunKind::AnchorRun:
        return overloads(as(std::type_identity<AnchorRun>()));
    }
    ZEM_FAIL("Invalid enum value");
}

} // namespace Zem::DOM
