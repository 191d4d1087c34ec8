#include "ShownDocument.h"

#include "DOM_Paragraph.h"
#include "DOM_Runs.h"
#include "DOM_SetToSharedStyle.h"
#include "Editing/CS_Characters.h"

#include "Util_Cast.h"

#include <algorithm>
#include <type_traits>

namespace ZemFarm
{

using Zem::CollaborationEngine::getSimpleDataValue;
using Zem::CollaborationSession::LookChange;
using Zem::CollaborationSession::LookChangeKind;
using Zem::DOMCollaboration::PropertyId;
namespace DOM = Zem::DOM;

namespace
{

template<class T>
std::string showValue(const T& value)
{
    if constexpr (std::is_enum_v<T>)
    {
        return std::to_string(static_cast<unsigned int>(value));
    }
    else if constexpr (std::is_arithmetic_v<T>)
    {
        return std::to_string(value);
    }
    else if constexpr (std::is_convertible_v<T, std::string>)
    {
        return value;
    }
    else
    {
        // The farm sets none of these.
        return "set";
    }
}

/// Those fields that are named, or all that are set.
template<class Props>
void showProps(const std::shared_ptr<const Props>& props, const std::string& prefix,
               const std::vector<std::string_view>* names, Fields& fields)
{
    Zem::forEachField<Props>(
        [&](const auto& row)
        {
            const bool isNamed = names && std::find(names->begin(), names->end(), row._name) != names->end();
            const bool hasValue = props && static_cast<bool>(props.get()->*(row._member));
            if (hasValue && (isNamed || !names))
            {
                fields[prefix + row._name] = showValue(*(props.get()->*(row._member)));
            }
            else if (isNamed)
            {
                fields[prefix + row._name] = "";
            }
        });
}

std::string getCommentField(const Zem::UUID& uuid)
{
    return "comment " + uuid.toString();
}

Fields showRun(const DOM::Run& run)
{
    const DOM::RunStyle& style = DOM::derefSharedStyle(run.getSharedStyle());
    Fields fields;
    showProps(style.getRunProps(), "", nullptr, fields);
    if (style.getHyperlink())
    {
        fields["link"] = style.getHyperlink()->getURL();
    }
    for (const Zem::UUID& uuid : style.getCommentUUIDs())
    {
        fields[getCommentField(uuid)] = "there";
    }
    return fields;
}

Fields showParagraph(const DOM::Paragraph& paragraph)
{
    Fields fields;
    const DOM::ParagraphStyle& style = DOM::derefSharedStyle(paragraph.getSharedStyle());
    showProps(style.getParaProps(), "", nullptr, fields);
    showProps(style.getRunProps(), "letters' ", nullptr, fields);
    showProps(DOM::derefSharedStyle(paragraph.getSharedParaMarkStyle()).getRunProps(), "mark ", nullptr, fields);
    return fields;
}

} // namespace

std::vector<std::string> splitCharacters(std::string_view text)
{
    std::vector<std::string> characters;
    for (const char byte : text)
    {
        if (characters.empty() || !Zem::CollaborationSession::isContinuationByte(byte))
        {
            characters.emplace_back();
        }
        characters.back() += byte;
    }
    return characters;
}

ShownText showText(const DOM::TextWithTombstones& text)
{
    ShownText shown;
    if (text.getBlocks().empty())
    {
        throw Misjudged("there is no paragraph left");
    }
    for (const auto& block : text.getBlocks())
    {
        const auto* paragraph = Zem::cast<DOM::Paragraph>(block.get());
        if (!paragraph)
        {
            throw Misjudged("there is a block that is no paragraph");
        }
        if (&block == &text.getBlocks().front())
        {
            shown._firstParagraph = showParagraph(*paragraph);
        }
        else
        {
            shown._characters.push_back({"\n", showParagraph(*paragraph)});
        }
        for (const auto& run : paragraph->getRuns())
        {
            const auto* textRun = Zem::cast<DOM::TextRun>(run.get());
            if (!textRun)
            {
                throw Misjudged("there is a run that is no text");
            }
            const Fields fields = showRun(*run);
            for (std::string& character : splitCharacters(textRun->getText()))
            {
                shown._characters.push_back({std::move(character), fields});
            }
        }
    }
    return shown;
}

Fields showFields(const LookChange& change, bool isOfParagraphs)
{
    const std::vector<std::string_view> names = change.getFieldNames();
    Fields fields;
    switch (change.getPropertyId())
    {
    case PropertyId::HyperlinkId:
    {
        const auto& link = getSimpleDataValue<DOM::HyperlinkConstPtr>(*change.getValue());
        fields["link"] = link ? link->getURL() : "";
        return fields;
    }
    case PropertyId::CommentUUIDsId:
        fields[getCommentField(getSimpleDataValue<std::vector<Zem::UUID>>(*change.getValue()).front())] =
            change.getKind() == LookChangeKind::AddComment ? "there" : "";
        return fields;
    case PropertyId::ParaPropertyId:
        showProps(getSimpleDataValue<DOM::ParaPropsConstPtr>(*change.getValue()), "", &names, fields);
        return fields;
    case PropertyId::ParagraphRunPropertyId:
        showProps(getSimpleDataValue<DOM::RunPropsConstPtr>(*change.getValue()), "letters' ", &names, fields);
        return fields;
    default:
        showProps(getSimpleDataValue<DOM::RunPropsConstPtr>(*change.getValue()), isOfParagraphs ? "mark " : "", &names,
                  fields);
        return fields;
    }
}

} // namespace ZemFarm
