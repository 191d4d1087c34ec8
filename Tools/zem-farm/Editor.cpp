#include "Editor.h"

#include <utility>

namespace ZemFarm
{

Editor::Operations Editor::replace(unsigned long begin, unsigned long end, std::string_view replacement)
{
    if (!_witness)
    {
        return _editor.replace(begin, end, replacement);
    }
    const ShownText text = _witness->look();
    const std::string unique = _witness->makeUnique(replacement);
    Operations operations = _editor.replace(begin, end, unique);
    if (!operations.empty())
    {
        _witness->tellReplacement(text, begin, end, unique);
    }
    return operations;
}

template<class Edit>
Editor::Operations Editor::set(unsigned long begin, unsigned long end, bool isOfParagraphs, const LookChange& change,
                               Edit edit)
{
    if (!_witness)
    {
        return edit();
    }
    const ShownText text = _witness->look();
    Operations operations = edit();
    if (!operations.empty())
    {
        _witness->tellSetting(text, begin, end, isOfParagraphs, change);
    }
    return operations;
}

Editor::Operations Editor::setRunLook(unsigned long begin, unsigned long end, const LookChange& change)
{
    return set(begin, end, false, change, [&] { return _editor.setRunLook(begin, end, change); });
}

Editor::Operations Editor::setParagraphLook(unsigned long begin, unsigned long end, const LookChange& change)
{
    return set(begin, end, true, change, [&] { return _editor.setParagraphLook(begin, end, change); });
}

Editor::Operations Editor::setRunProperty(unsigned long begin, unsigned long end, PropertyId propertyId,
                                          const Value& value)
{
    return set(begin, end, false, LookChange::setProperty(propertyId, value),
               [&] { return _editor.setRunProperty(begin, end, propertyId, value); });
}

Editor::Operations Editor::setParagraphProperty(unsigned long begin, unsigned long end, PropertyId propertyId,
                                                const Value& value)
{
    return set(begin, end, true, LookChange::setProperty(propertyId, value),
               [&] { return _editor.setParagraphProperty(begin, end, propertyId, value); });
}

Editor::Operations Editor::setLink(unsigned long begin, unsigned long end, Zem::DOM::HyperlinkConstPtr link)
{
    const LookChange change = LookChange::setLink(link);
    return set(begin, end, false, change, [&] { return _editor.setLink(begin, end, std::move(link)); });
}

Editor::Operations Editor::addComment(unsigned long begin, unsigned long end, const Zem::UUID& uuid)
{
    return set(begin, end, false, LookChange::addComment(uuid), [&] { return _editor.addComment(begin, end, uuid); });
}

Editor::Operations Editor::removeComment(unsigned long begin, unsigned long end, const Zem::UUID& uuid)
{
    return set(begin, end, false, LookChange::removeComment(uuid),
               [&] { return _editor.removeComment(begin, end, uuid); });
}

} // namespace ZemFarm
