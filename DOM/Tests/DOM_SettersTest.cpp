// Each setter sets its own field, which its getter then shows, and no other.

#include "DOM_CellStyle.h"
#include "DOM_Comment.h"
#include "DOM_Frame.h"
#include "DOM_HeaderFooterPair.h"
#include "DOM_Image.h"
#include "DOM_NamedTableStyle.h"
#include "DOM_NamedTextStyle.h"
#include "DOM_Note.h"
#include "DOM_ParagraphStyle.h"
#include "DOM_RowColumnStyle.h"
#include "DOM_RunStyle.h"
#include "DOM_TableStyle.h"

#include "Util_DeepComparison.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

template<class T>
int countDifferences(const T& left, const T& right)
{
    int count = 0;
    forEachField<T>([&](const auto& row)
                    { count += areDeeplyEqual(left.*(row._member), right.*(row._member)) ? 0 : 1; });
    return count;
}

/// `set` changes an object, after which `isSet` holds.
template<class T, class Set, class IsSet>
void expectOneFieldSet(Set set, IsSet isSet)
{
    const T before;
    T after(before);
    EXPECT_FALSE(isSet(after));
    set(after);
    EXPECT_TRUE(isSet(after));
    EXPECT_EQ(1, countDifferences(before, after));
}

template<class T, class Value, class Getter>
void expectSetter(void (T::*setter)(Value), Getter getter, const std::decay_t<Value>& value)
{
    expectOneFieldSet<T>(
        [&](T& object)
        {
            std::decay_t<Value> copy(value);
            (object.*setter)(std::move(copy));
        },
        [&](const T& object) { return areDeeplyEqual(std::invoke(getter, object), value); });
}

const UUID someUUID(UUID::Bytes{7});

template<class T>
std::shared_ptr<const T> make()
{
    return std::make_shared<const T>();
}

} // namespace

TEST(Setters, OfARunStyle)
{
    using T = RunStyle;
    expectSetter(&T::setParentUUID, &T::getParentUUID, someUUID);
    expectSetter(&T::setRunProps, &T::getRunProps, make<RunProps>());
    expectSetter(&T::setHyperlink, &T::getHyperlink, make<Hyperlink>());
    expectSetter(&T::setTrackedRunProps, &T::getTrackedRunProps, make<TrackedObject<RunPropsConstPtr>>());
    expectSetter(&T::setTrackedAction, &T::getTrackedAction, make<TrackedObject<TrackChangesType>>());
    expectSetter(&T::setTrackedParent, &T::getTrackedParent, make<TrackedObject<UUID>>());
    expectOneFieldSet<T>([](T& style) { style.getCommentUUIDs().push_back(someUUID); },
                         [](const T& style) { return style.getCommentUUIDs() == std::vector<UUID>{someUUID}; });
}

TEST(Setters, OfAParagraphStyle)
{
    using T = ParagraphStyle;
    expectSetter(&T::setParentUUID, &T::getParentUUID, someUUID);
    expectSetter(&T::setParaProps, &T::getParaProps, make<ParaProps>());
    expectSetter(&T::setRunProps, &T::getRunProps, make<RunProps>());
    expectSetter(&T::setTrackedParaProps, &T::getTrackedParaProps, make<TrackedObject<ParaPropsConstPtr>>());
    expectSetter(&T::setTrackedParent, &T::getTrackedParent, make<TrackedObject<UUID>>());
}

TEST(Setters, OfACellStyle)
{
    using T = CellStyle;
    expectSetter(&T::setCellProps, &T::getCellProps, make<CellProps>());
    expectSetter(&T::setRunProps, &T::getRunProps, make<RunProps>());
    expectSetter(&T::setParaProps, &T::getParaProps, make<ParaProps>());
    expectSetter(&T::setParentUUID, &T::getParentUUID, someUUID);
}

TEST(Setters, OfATableStyle)
{
    using T = TableStyle;
    expectSetter(&T::setTableProps, &T::getTableProps, make<TableProps>());
    expectSetter(&T::setParentUUID, &T::getParentUUID, someUUID);
}

TEST(Setters, OfARowStyle)
{
    using T = RowStyle;
    CellStyle cellStyle;
    cellStyle.setParentUUID(someUUID);
    const SharedStyleConstIPtr<CellStyle> sharedStyle(new SharedStyle<CellStyle>(cellStyle));
    expectSetter(&T::setDefaultCellStyle, &T::getDefaultCellStyle, sharedStyle);
    expectSetter(&T::setProps, &T::getProps, make<RowProps>());
    expectSetter(&T::setParentUUID, &T::getParentUUID, someUUID);
}

TEST(Setters, OfANamedTextStyle)
{
    using T = NamedTextStyle;
    expectSetter(&T::setName, &T::getName, StyleName(std::string("Quote")));
    expectSetter(&T::setName, &T::getName, StyleName(PredefinedStyleName::Heading1));
    expectSetter(&T::setParentUUID, &T::getParentUUID, someUUID);
    expectSetter(&T::setNextStyleUUID, &T::getNextStyleUUID, someUUID);
    expectSetter(&T::setRunProps, &T::getRunProps, make<RunProps>());
    expectSetter(&T::setParaProps, &T::getParaProps, make<ParaProps>());
}

TEST(Setters, OfANamedTableStyle)
{
    using T = NamedTableStyle;
    expectSetter(&T::setName, &T::getName, StyleName(std::string("Striped")));
    expectSetter(&T::setParentUUID, &T::getParentUUID, someUUID);
}

TEST(Setters, OfAHeaderFooterPair)
{
    using T = HeaderFooterPair;
    expectSetter(&T::setNextHeaderFooterUUID, &T::getNextHeaderFooterUUID, someUUID);
    expectOneFieldSet<T>([](T& pair) { pair.setHeaderPageNumber(PageNumber()); },
                         [](const T& pair) { return pair.getHeaderPageNumber().has_value(); });
    expectOneFieldSet<T>([](T& pair) { pair.setFooterPageNumber(PageNumber()); },
                         [](const T& pair) { return pair.getFooterPageNumber().has_value(); });
    expectSetter(&T::setPageProps, &T::getPageProps, make<PageProps>());
}

TEST(Setters, OfAComment)
{
    using T = Comment;
    TrackChangesInfo info;
    info._userInfo = UserInfo("Ann", "ann@example.org");
    expectSetter(&T::setInfo, &T::getInfo, info);
    expectSetter(&T::setNextCommentUUID, &T::getNextCommentUUID, someUUID);
    expectSetter(&T::setResolved, &T::isResolved, true);
}

TEST(Setters, OfANote)
{
    using T = Note;
    const boost::optional<Size2D<float>> extent = Size2D<float>{3, 4};
    expectSetter(&T::setExtent, &T::getExtent, extent);
    expectSetter(&T::setAlwaysVisible, &T::isAlwaysVisible, true);
}

TEST(Setters, OfAFrame)
{
    using T = Frame;
    expectSetter(&T::setAnchor, &T::getAnchor, Anchor(OneCellAnchor()));
    expectSetter(&T::setExtent, &T::getExtent, boost::optional<Size2D<float>>(Size2D<float>{3, 4}));
    expectSetter(&T::setDescription, &T::getDescription, std::string("a picture"));
    expectOneFieldSet<T>([](T& frame) { frame.setGraphicalObject(std::make_unique<Image>()); },
                         [](const T& frame) { return frame.getGraphicalObject() != nullptr; });
}

} // namespace Zem::DOM::Tests
