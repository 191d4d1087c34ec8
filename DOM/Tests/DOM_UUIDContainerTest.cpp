#include "DOM_UUIDContainer.h"
#include "DOM_Comment.h"

#include "Util_JsonText.h"

#include "TS_Assertions.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace Zem::DOM::Tests
{

namespace
{

UUID makeUUID(unsigned char last)
{
    UUID::Bytes bytes{};
    bytes.back() = last;
    return UUID(bytes);
}

Comment makeComment(unsigned char last, bool isResolved = false)
{
    Comment comment(makeUUID(last));
    comment.setResolved(isResolved);
    return comment;
}

std::vector<UUID> getUUIDs(const UUIDContainer<Comment>& container)
{
    std::vector<UUID> uuids;
    std::transform(container.begin(), container.end(), std::back_inserter(uuids),
                   [](const Comment& comment) { return comment.getUUID(); });
    return uuids;
}

} // namespace

TEST(UUIDContainer, IsWalkedInTheOrderOfTheUUIDs)
{
    UUIDContainer<Comment> container;
    container.insert(makeComment(3));
    container.insert(makeComment(1));
    container.insert(makeComment(2));
    EXPECT_EQ((std::vector<UUID>{makeUUID(1), makeUUID(2), makeUUID(3)}), getUUIDs(container));
    EXPECT_TRUE(container.areElementsUnderTheirUUIDs());
}

TEST(UUIDContainer, FindsAnElementForChange)
{
    UUIDContainer<Comment> container;
    container.insert(makeComment(1));
    EXPECT_EQ(nullptr, container.find(makeUUID(2)));
    container.find(makeUUID(1))->setResolved(true);
    EXPECT_TRUE(std::as_const(container).find(makeUUID(1))->isResolved());
}

TEST(UUIDContainer, RefusesASecondElementOfOneUUID)
{
    UUIDContainer<Comment> container;
    container.insert(makeComment(1));
    EXPECT_ASSERTION(container.insert(makeComment(1, true)), "_collection.find(uuid) == _collection.end()");
    EXPECT_EQ(1u, container.size());
    EXPECT_FALSE(container.find(makeUUID(1))->isResolved());
}

TEST(UUIDContainer, AssertsThatARemovedElementIsThere)
{
    UUIDContainer<Comment> container;
    EXPECT_ASSERTION(container.remove(makeUUID(1)), "it != _collection.end()");
    EXPECT_ASSERTION(container.take(makeUUID(1)), "it != _collection.end()");
}

TEST(UUIDContainer, HandsOutWhatIsTaken)
{
    UUIDContainer<Comment> container;
    container.insert(makeComment(1, true));
    container.insert(makeComment(2));
    EXPECT_TRUE(container.take(makeUUID(1)) == makeComment(1, true));
    container.remove(makeUUID(2));
    EXPECT_TRUE(container.empty());
}

TEST(UUIDContainer, ComparesItsElements)
{
    UUIDContainer<Comment> left;
    UUIDContainer<Comment> right;
    left.insert(makeComment(1));
    EXPECT_FALSE(left == right);
    right.insert(makeComment(1, true));
    EXPECT_FALSE(left == right);
    right.find(makeUUID(1))->setResolved(false);
    EXPECT_TRUE(left == right);
}

TEST(UUIDContainer, IsAnArrayOfItsElements)
{
    UUIDContainer<Comment> container;
    EXPECT_EQ("[]", Zem::toJson(container));
    container.insert(makeComment(2));
    container.insert(makeComment(1, true));
    EXPECT_EQ("[" + Zem::toJson(makeComment(1, true)) + "," + Zem::toJson(makeComment(2)) + "]",
              Zem::toJson(container));
    EXPECT_TRUE(fromJson<UUIDContainer<Comment>>(Zem::toJson(container)) == container);
}

TEST(UUIDContainer, RefusesJsonWithOneUUIDTwice)
{
    const std::string element = Zem::toJson(makeComment(1));
    try
    {
        fromJson<UUIDContainer<Comment>>("[" + element + "," + element + "]");
        ADD_FAILURE();
    }
    catch (const std::runtime_error& error)
    {
        EXPECT_EQ("Two elements of one container have the UUID 00000000-0000-0000-0000-000000000001",
                  std::string(error.what()));
    }
}

TEST(UUIDContainer, SeesAnElementUnderAnotherUUID)
{
    UUIDContainer<Comment> container;
    container.insert(makeComment(1));
    *container.begin() = makeComment(2);
    EXPECT_FALSE(container.areElementsUnderTheirUUIDs());
}

} // namespace Zem::DOM::Tests
