#include "Values.h"

#include "DOM_Hyperlink.h"
#include "DOM_NumberingRef.h"
#include "DOM_ParaProps.h"
#include "DOM_RunProps.h"
#include "DOM_Runs.h"
#include "DOM_SectionProps.h"

#include "Util_Cast.h"

#include <array>

namespace ZemFarm
{

using Zem::DOMCollaboration::PropertyId;
namespace DOM = Zem::DOM;

namespace
{

constexpr unsigned long rarely = 4;

DOM::TrackChangesInfo makeTrackInfo(Random& random)
{
    DOM::TrackChangesInfo info;
    info._userInfo = DOM::UserInfo(random.isOnceIn(2) ? "Ada" : "Ben", "");
    return info;
}

template<class T>
std::shared_ptr<const DOM::TrackedObject<T>> makeTracked(Random& random, T value)
{
    if (random.isOnceIn(rarely))
    {
        return nullptr;
    }
    return std::make_shared<const DOM::TrackedObject<T>>(std::move(value), makeTrackInfo(random));
}

DOM::TrackedActionConstPtr makeTrackedAction(Random& random)
{
    return makeTracked(random, random.isOnceIn(2) ? DOM::TrackChangesType::Insertion : DOM::TrackChangesType::Deletion);
}

std::vector<Zem::UUID> makeUUIDs(Random& random)
{
    std::vector<Zem::UUID> uuids;
    for (unsigned long count = random.pick(3); count > 0; --count)
    {
        uuids.push_back(makeUUID(random));
    }
    return uuids;
}

boost::optional<DOM::NumberingRef> makeNumberingRef(Random& random)
{
    if (random.isOnceIn(rarely))
    {
        return boost::none;
    }
    DOM::NumberingRef ref;
    ref._listUUID = makeUUID(random);
    ref._level = static_cast<unsigned char>(random.pick(3));
    return ref;
}

DOM::RunStyle getStyle(const Zem::DOM::SharedStyleConstIPtr<DOM::RunStyle>& style)
{
    return style ? style->get() : DOM::RunStyle();
}

/// One of the properties that a run's style and that of a paragraph's mark have.
PropertyChange changeRunStyle(Random& random, const DOM::RunStyle& style)
{
    switch (random.pick(5))
    {
    case 0:
        return makeChange<PropertyId::RunTrackedPropsId>(style.getTrackedRunProps(),
                                                         makeTracked(random, makeRunProps(random)));
    case 1:
        return makeChange<PropertyId::TrackedActionId>(style.getTrackedAction(), makeTrackedAction(random));
    case 2:
        return makeChange<PropertyId::HyperlinkId>(style.getHyperlink(), makeHyperlink(random));
    case 3:
        return makeChange<PropertyId::CommentUUIDsId>(style.getCommentUUIDs(), makeUUIDs(random));
    default:
        return makeChange<PropertyId::RunPropertyId>(style.getRunProps(), makeRunProps(random));
    }
}

PropertyChange changeParagraphStyle(Random& random, const DOM::ParagraphStyle& style)
{
    switch (random.pick(5))
    {
    case 0:
        return makeChange<PropertyId::ParaTrackedPropsId>(style.getTrackedParaProps(),
                                                          makeTracked(random, makeParaProps(random)));
    case 1:
        return makeChange<PropertyId::ParagraphRunPropertyId>(style.getRunProps(), makeRunProps(random));
    case 2:
        return makeChange<PropertyId::ParentStyleId>(style.getParentUUID(), makeUUID(random));
    case 3:
        return makeChange<PropertyId::TrackedParentStyleId>(style.getTrackedParent(),
                                                            makeTracked(random, makeUUID(random)));
    default:
        return makeChange<PropertyId::ParaPropertyId>(style.getParaProps(), makeParaProps(random));
    }
}

} // namespace

Zem::UUID makeUUID(Random& random)
{
    Zem::UUID::Bytes bytes{};
    bytes.back() = static_cast<std::uint8_t>(random.pick(5));
    return Zem::UUID(bytes);
}

DOM::RunPropsConstPtr makeRunProps(Random& random)
{
    if (random.isOnceIn(rarely))
    {
        return nullptr;
    }
    auto props = std::make_shared<DOM::RunProps>();
    if (random.isOnceIn(2))
    {
        props->_weight = random.isOnceIn(2) ? DOM::FontWeight::Bold : DOM::FontWeight::Light;
    }
    if (random.isOnceIn(2))
    {
        props->_fontSize = static_cast<float>(10 + random.pick(3));
    }
    if (random.isOnceIn(3))
    {
        props->_language = "de-AT";
    }
    return props;
}

DOM::ParaPropsConstPtr makeParaProps(Random& random)
{
    if (random.isOnceIn(rarely))
    {
        return nullptr;
    }
    auto props = std::make_shared<DOM::ParaProps>();
    if (random.isOnceIn(2))
    {
        props->_alignment = random.isOnceIn(2) ? DOM::ParagraphAlignment::Center : DOM::ParagraphAlignment::Justify;
    }
    if (random.isOnceIn(2))
    {
        props->_leftIndent = static_cast<float>(random.pick(3));
    }
    return props;
}

DOM::HyperlinkConstPtr makeHyperlink(Random& random)
{
    if (random.isOnceIn(rarely))
    {
        return nullptr;
    }
    return std::make_shared<const DOM::Hyperlink>(random.isOnceIn(2) ? "a:" : "b:");
}

DOM::SectionProps makeSectionProps(Random& random)
{
    DOM::SectionProps props;
    if (random.isOnceIn(2))
    {
        props._start = random.isOnceIn(2) ? DOM::SectionStart::NextPage : DOM::SectionStart::Continuous;
    }
    if (random.isOnceIn(2))
    {
        props._columnsCount = static_cast<unsigned char>(1 + random.pick(3));
    }
    return props;
}

DOM::FieldBlock::FieldInfo makeContentsInfo(Random& random)
{
    DOM::TableOfContentsInfo info;
    info._title = random.isOnceIn(2) ? "Contents" : "";
    info._lastLevel = static_cast<unsigned char>(random.pick(4));
    return info;
}

DOM::FieldBlock::FieldInfo makeCellInfo(Random& random)
{
    switch (random.pick(3))
    {
    case 0:
        return DOM::Formula(random.isOnceIn(2) ? "1+1" : "A1*2");
    case 1:
        return DOM::BlockValue<bool>(random.isOnceIn(2));
    default:
        return DOM::BlockValue<DOM::FormulaErrorType>(DOM::FormulaErrorType::UnknownName);
    }
}

DOM::RunStyle makeRunStyle(Random& random)
{
    DOM::RunStyle style;
    style.setRunProps(makeRunProps(random));
    style.setHyperlink(random.isOnceIn(rarely) ? makeHyperlink(random) : nullptr);
    return style;
}

DOM::ParagraphStyle makeParagraphStyle(Random& random)
{
    DOM::ParagraphStyle style;
    style.setParaProps(makeParaProps(random));
    style.setRunProps(makeRunProps(random));
    return style;
}

PropertyChange changeRun(Random& random, const DOM::Run& run)
{
    const DOM::RunStyle style = getStyle(run.getSharedStyle());
    if (const auto* drawing = Zem::cast<DOM::DrawingRun>(&run); drawing && random.isOnceIn(2))
    {
        const auto width = static_cast<float>(random.pick(3));
        return makeChange<PropertyId::ExtentId>(drawing->getFrame().getExtent(), Zem::Size2D<float>{width, 1});
    }
    switch (random.pick(6))
    {
    case 0:
        return makeChange<PropertyId::ParentStyleId>(style.getParentUUID(), makeUUID(random));
    case 1:
        return makeChange<PropertyId::TrackedParentStyleId>(style.getTrackedParent(),
                                                            makeTracked(random, makeUUID(random)));
    default:
        return changeRunStyle(random, style);
    }
}

PropertyChange changeParagraph(Random& random, const DOM::Paragraph& paragraph)
{
    if (random.isOnceIn(3))
    {
        return changeRunStyle(random, getStyle(paragraph.getSharedParaMarkStyle()));
    }
    if (random.isOnceIn(rarely))
    {
        const auto& oldRef = paragraph.getNumRef();
        return makeChange<PropertyId::NumRefId>(oldRef ? boost::optional<DOM::NumberingRef>(*oldRef) : boost::none,
                                                makeNumberingRef(random));
    }
    const auto& style = paragraph.getSharedStyle();
    return changeParagraphStyle(random, style ? style->get() : DOM::ParagraphStyle());
}

PropertyChange changeFieldBlock(Random& random, const DOM::FieldBlock& block)
{
    switch (random.pick(3))
    {
    case 0:
        return makeChange<PropertyId::HyperlinkId>(block.getHyperlink(), makeHyperlink(random));
    case 1:
        return makeChange<PropertyId::CommentUUIDsId>(block.getCommentUUIDs(), makeUUIDs(random));
    default:
        const bool isContents = boost::get<DOM::TableOfContentsInfo>(&block.getFieldInfo()) != nullptr;
        return makeChange<PropertyId::FieldValueId>(block.getFieldInfo(),
                                                    isContents ? makeContentsInfo(random) : makeCellInfo(random));
    }
}

std::string makeWords(Random& random, unsigned long maxCharactersCount)
{
    static constexpr std::array<const char*, 12> characters = {
        "a", "b", "c", "d", "e", " ", " ", "x", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x98\x80", "\xD0\xB6"};
    std::string words;
    for (unsigned long count = 1 + random.pick(maxCharactersCount); count > 0; --count)
    {
        words += random.pickFrom(characters);
    }
    return words;
}

} // namespace ZemFarm
