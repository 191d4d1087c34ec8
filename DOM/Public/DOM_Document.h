#pragma once

#include "DOM_Comment.h"
#include "DOM_FieldOperators.h"
#include "DOM_HeaderFooterPair.h"
#include "DOM_Note.h"
#include "DOM_NumberedList.h"
#include "DOM_Scripts.h"
#include "DOM_SectionProps.h"
#include "DOM_SharedObjectFactory.h"
#include "DOM_Styles.h"
#include "DOM_TextWithTombstones.h"
#include "DOM_Theme.h"
#include "DOM_TimeZone.h"
#include "DOM_UUIDContainer.h"

#include "Util_Export.h"

namespace Zem::DOM
{

/// A document. It doesn't know what kind it is: in a text document and a presentation the main text is the text itself,
/// in a workbook it is the list of worksheets, each a `Table`.
///
/// Copies are deep but for shared styles and properties, which are immutable. Two documents are equal when all their
/// parts are; the factory isn't one of them.
class ZEM_EXPORT Document
{
public:
    Document();
    Document(const Document&);
    Document(Document&&) noexcept;
    Document& operator=(const Document&);
    Document& operator=(Document&&) noexcept;
    ~Document();

    const TextWithTombstones& getTextWithTombstones() const
    {
        return _text;
    }

    TextWithTombstones& getTextWithTombstones()
    {
        return _text;
    }

    const Styles& getStyles() const
    {
        return _styles;
    }

    Styles& getStyles()
    {
        return _styles;
    }

    const UUIDContainer<Comment>& getComments() const
    {
        return _comments;
    }

    UUIDContainer<Comment>& getComments()
    {
        return _comments;
    }

    const UUIDContainer<Note>& getNotes() const
    {
        return _notes;
    }

    UUIDContainer<Note>& getNotes()
    {
        return _notes;
    }

    const UUIDContainer<HeaderFooterPair>& getHeadersFooters() const
    {
        return _headersFooters;
    }

    UUIDContainer<HeaderFooterPair>& getHeadersFooters()
    {
        return _headersFooters;
    }

    const Scripts& getScripts() const
    {
        return _scripts;
    }

    Scripts& getScripts()
    {
        return _scripts;
    }

    const UUIDContainer<NumberedList>& getNumLists() const
    {
        return _numLists;
    }

    UUIDContainer<NumberedList>& getNumLists()
    {
        return _numLists;
    }

    /// What sections have that they don't say themselves.
    const SectionProps& getDefaultSectionProps() const
    {
        return _defaultSectionProps;
    }

    SectionProps& getDefaultSectionProps()
    {
        return _defaultSectionProps;
    }

    const Theme& getTheme() const
    {
        return _theme;
    }

    void setTheme(const Theme& theme)
    {
        _theme = theme;
    }

    const ColorMap& getColorMap() const
    {
        return _colorMap;
    }

    void setColorMap(const ColorMap& colorMap)
    {
        _colorMap = colorMap;
    }

    const SharedObjectFactory& getSharedObjectFactory() const
    {
        return _sharedObjectFactory;
    }

    bool isChangesTrackingEnabled() const
    {
        return _isChangesTrackingEnabled;
    }

    void setChangesTrackingEnabled(bool isEnabled)
    {
        _isChangesTrackingEnabled = isEnabled;
    }

    const TimeZone& getTimeZone() const
    {
        return _timeZone;
    }

    void setTimeZone(const TimeZone& timeZone)
    {
        _timeZone = timeZone;
    }

    static constexpr auto fields()
    {
        return std::make_tuple(field("_text", &Document::_text), field("_styles", &Document::_styles),
                               field("_comments", &Document::_comments), field("_notes", &Document::_notes),
                               field("_headersFooters", &Document::_headersFooters),
                               field("_scripts", &Document::_scripts), field("_numLists", &Document::_numLists),
                               field("_defaultSectionProps", &Document::_defaultSectionProps),
                               field("_theme", &Document::_theme), field("_colorMap", &Document::_colorMap),
                               field("_isChangesTrackingEnabled", &Document::_isChangesTrackingEnabled),
                               field("_timeZone", &Document::_timeZone));
    }

    friend ZEM_EXPORT bool operator==(const Document& left, const Document& right);

    template<class Archive>
    void serialize(Archive& archive);

private:
    TextWithTombstones _text;
    Styles _styles;
    UUIDContainer<Comment> _comments;
    UUIDContainer<Note> _notes;
    UUIDContainer<HeaderFooterPair> _headersFooters;
    Scripts _scripts;
    UUIDContainer<NumberedList> _numLists;
    SectionProps _defaultSectionProps;
    Theme _theme;
    ColorMap _colorMap;
    SharedObjectFactory _sharedObjectFactory;
    bool _isChangesTrackingEnabled = false;
    TimeZone _timeZone;
};

} // namespace Zem::DOM
