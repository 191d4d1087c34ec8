#pragma once

#include "JudgedSession.h"

#include "Editing/CS_TextEditor.h"

#include <string_view>

namespace ZemFarm
{

/// The editor of one text that generators use. Where the session is judged, the judge hears of what is done.
class Editor
{
public:
    using TextEditor = Zem::CollaborationSession::TextEditor;
    using Operations = Zem::CollaborationSession::Operations;
    using LookChange = Zem::CollaborationSession::LookChange;
    using PropertyId = Zem::DOMCollaboration::PropertyId;
    using Value = Zem::SharedConstPtr<Zem::CollaborationEngine::DataValue>;

    /// `witness` is null if nobody judges.
    Editor(TextEditor& editor, Witness* witness)
        : _editor(editor)
        , _witness(witness)
    {
    }

    const Zem::CollaborationSession::CharacterIndex& getIndex()
    {
        return _editor.getIndex();
    }

    /// Each does what `TextEditor` does, and fails as that does, or with `Misjudged`. In a judged session, other
    /// characters come in place of those of `replacement`.
    Operations replace(unsigned long begin, unsigned long end, std::string_view replacement);
    Operations setRunLook(unsigned long begin, unsigned long end, const LookChange& change);
    Operations setParagraphLook(unsigned long begin, unsigned long end, const LookChange& change);
    Operations setRunProperty(unsigned long begin, unsigned long end, PropertyId propertyId, const Value& value);
    Operations setParagraphProperty(unsigned long begin, unsigned long end, PropertyId propertyId, const Value& value);
    Operations setLink(unsigned long begin, unsigned long end, Zem::DOM::HyperlinkConstPtr link);
    Operations addComment(unsigned long begin, unsigned long end, const Zem::UUID& uuid);
    Operations removeComment(unsigned long begin, unsigned long end, const Zem::UUID& uuid);

private:
    template<class Edit>
    Operations set(unsigned long begin, unsigned long end, bool isOfParagraphs, const LookChange& change, Edit edit);

    TextEditor& _editor;
    Witness* _witness;
};

} // namespace ZemFarm
