#include "Sharing/CS_Bridge.h"

#include "CE_ListMultirangeOperation.h"
#include "DClb_DocumentOperationTransformer.h"
#include "DClb_NodeTypes.h"
#include "Editing/CS_TextEditor.h"

#include "TS_TextCase.h"

#include "Util_Cast.h"

#include <gtest/gtest.h>

namespace Zem::CollaborationSession
{

namespace
{

using namespace CollaborationEngine;
using DOMCollaboration::OperationDOMNodeType;
using NodeAddressing::AddressInList;
using NodeAddressing::AddressInTable;

constexpr auto textType = static_cast<unsigned long>(OperationDOMNodeType::TextWithTombstones);

OperationNodeAddress main()
{
    return TextEditor::getMainTextAddress();
}

/// The text of the first cell of the table at a slot of the main text.
OperationNodeAddress cellOf(unsigned long slot)
{
    OperationNodeAddress address = main();
    address.appendItems(
        AddressInList(slot), OperationNodeAddress::FixedChunk(static_cast<unsigned long>(OperationDOMNodeType::Table)),
        AddressInTable(AddressInTable::Row(0), AddressInTable::Column(0)), OperationNodeAddress::FixedChunk(textType));
    return address;
}

template<class Tag>
std::unique_ptr<ListMultirangeOperationImpl<ListModificationOperation<Tag>>>
make(const OperationNodeAddress& text, std::initializer_list<TestSupport::Piece> pieces)
{
    std::vector<ListModificationOperation<Tag>> nestedOperations;
    for (const TestSupport::Piece& piece : pieces)
    {
        const auto elements = TestSupport::makeElements(piece._elements);
        nestedOperations.emplace_back(text, textType,
                                      makeSharedConst<DOMCollaboration::TextWithTombstonesItems>(elements),
                                      IndexRange<unsigned long>::fromCount(piece._slot, elements.size()));
    }
    return std::make_unique<ListMultirangeOperationImpl<ListModificationOperation<Tag>>>(std::move(nestedOperations));
}

OperationUPtr insertIn(const OperationNodeAddress& text, unsigned long slot, std::string_view elements)
{
    return make<InsertTag>(text, {{slot, elements}});
}

OperationUPtr markIn(const OperationNodeAddress& text, unsigned long slot, std::string_view elements)
{
    return make<MarkAsRemovedTag>(text, {{slot, elements}});
}

OperationUPtr restoreIn(const OperationNodeAddress& text, unsigned long slot, std::string_view elements)
{
    return make<RestoreTag>(text, {{slot, elements}});
}

class BridgeTest : public testing::Test
{
protected:
    void appendOfOther(OperationUPtr operation)
    {
        _bridge.append(std::shared_ptr<const Operation>(std::move(operation)));
    }

    DOMCollaboration::DocumentOperationTransformer _transformer;
    Bridge _bridge{_transformer};
};

} // namespace

TEST_F(BridgeTest, RefusedDeletionHidesNothingThatOthersDidInside)
{
    appendOfOther(markIn(cellOf(10), 3, "a"));
    const OperationUPtr deletion = markIn(main(), 10, "T");
    _bridge.cross(*deletion);
    _bridge.refuse(*deletion);

    EXPECT_EQ(TestSupport::print(*_bridge.cross(*restoreIn(main(), 10, "T"))), "empty");
    // What the other one marked was never gone, so that a letter behind it stands where it stood.
    EXPECT_EQ(TestSupport::print(*_bridge.cross(*markIn(cellOf(10), 3, "a"))), "leave 3:a");
}

TEST_F(BridgeTest, InsertionThatWasRefusedInARestoredTableGoesAgain)
{
    const OperationUPtr insertion = insertIn(cellOf(10), 2, "x");
    _bridge.cross(*insertion);
    _bridge.refuse(*insertion);
    _bridge.cross(*markIn(main(), 10, "T"));

    const OperationUPtr restoring = _bridge.cross(*restoreIn(main(), 10, "T"));
    const auto* composite = cast<CompositeOperation>(restoring.get());
    ASSERT_TRUE(composite);
    ASSERT_EQ(composite->getParts().size(), 2u);
    EXPECT_EQ(TestSupport::print(*composite->getParts()[0]), "restore 10:T");
    EXPECT_EQ(TestSupport::print(*composite->getParts()[1]), "mark 2:x");
    // Its slot is there, dead.
    EXPECT_EQ(TestSupport::print(*_bridge.cross(*insertIn(cellOf(10), 3, "y"))), "insert 3:y");
}

TEST_F(BridgeTest, RestOfADeletionThatHappenedInPartIsTakenBack)
{
    const OperationUPtr deletion = make<MarkAsRemovedTag>(main(), {{8, "cd"}, {3, "ab"}});
    _bridge.cross(*deletion);
    const OperationUPtr happened = markIn(main(), 8, "cd");
    _bridge.appendChange(*deletion, *deletion, *happened);

    const OperationUPtr undoing = _bridge.cross(*make<RestoreTag>(main(), {{8, "cd"}, {3, "ab"}}));
    EXPECT_EQ(TestSupport::print(*undoing), "restore 8:cd");
}

TEST_F(BridgeTest, DeletionOfWhichOnlyTheSharedPartHappenedLeavesThatToItsUndo)
{
    appendOfOther(markIn(main(), 3, "ab"));
    const OperationUPtr deletion = make<MarkAsRemovedTag>(main(), {{8, "cd"}, {3, "ab"}});
    const OperationUPtr planned = _bridge.cross(*deletion);
    const auto* composite = cast<CompositeOperation>(planned.get());
    ASSERT_TRUE(composite);
    const Operation& leaving = *composite->getParts().back();
    ASSERT_EQ(TestSupport::print(leaving), "leave 3:ab");
    _bridge.appendChange(*deletion, *planned, leaving);

    const OperationUPtr undoing = _bridge.cross(*make<RestoreTag>(main(), {{8, "cd"}, {3, "ab"}}));
    const auto* shadowed = cast<ShadowedOperation>(undoing.get());
    ASSERT_TRUE(shadowed);
    EXPECT_EQ(TestSupport::print(shadowed->getOriginal()), "restore 3:ab");
}

TEST_F(BridgeTest, ChangedInsertionFollowsItsTextWhenThatMoves)
{
    const OperationUPtr planned = insertIn(cellOf(5), 3, "x");
    _bridge.cross(*planned);
    _bridge.appendChange(*planned, *planned, *insertIn(cellOf(5), 8, "{|x}"));
    _bridge.cross(*insertIn(main(), 2, "z"));

    const OperationUPtr behind = _bridge.cross(*insertIn(cellOf(6), 4, "y"));
    EXPECT_EQ(TestSupport::print(*behind), "insert 11:y");
    EXPECT_EQ(cast<HierarchicalOperation>(*behind).getNodeAddress(), cellOf(6));
}

TEST_F(BridgeTest, ChangedInsertionIsOverWhenItsTextComesBackAsTheAuthorHadIt)
{
    const OperationUPtr planned = insertIn(cellOf(5), 3, "x");
    _bridge.cross(*planned);
    _bridge.appendChange(*planned, *planned, *insertIn(cellOf(5), 8, "{|x}"));
    _bridge.cross(*markIn(main(), 5, "T"));
    _bridge.cross(*restoreIn(main(), 5, "T"));

    EXPECT_EQ(TestSupport::print(*_bridge.cross(*insertIn(cellOf(5), 4, "y"))), "insert 4:y");
}

TEST_F(BridgeTest, MarkingThatTookOutOtherValuesIsNoChange)
{
    const OperationUPtr planned = markIn(main(), 3, "T");
    _bridge.cross(*planned);
    _bridge.appendChange(*planned, *planned, *markIn(main(), 3, "S"));
    EXPECT_EQ(TestSupport::print(*_bridge.cross(*restoreIn(main(), 3, "T"))), "restore 3:T");
}

} // namespace Zem::CollaborationSession
