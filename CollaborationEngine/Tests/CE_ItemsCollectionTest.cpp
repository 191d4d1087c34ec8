#include "CE_ItemsCollection.h"

#include "TS_Assertions.h"

#include <string>
#include <vector>

namespace Zem::CollaborationEngine::Testing
{

namespace
{

using Values = SimpleItemsCollection<std::vector<std::string>>;
using Owned = SimpleItemsCollection<std::vector<std::unique_ptr<std::string>>>;
using Range = IndexRange<unsigned long>;

Owned makeOwned(const std::vector<std::string>& values)
{
    std::vector<std::unique_ptr<std::string>> items;
    for (const std::string& value : values)
    {
        items.push_back(std::make_unique<std::string>(value));
    }
    return Owned(std::move(items));
}

} // namespace

TEST(ItemsCollection, SubrangeIsACopy)
{
    Values values({"a", "b", "c"});
    const auto part = values.copySubrange(Range(1, 3));
    values.getCollection()[1] = "changed";
    EXPECT_EQ(*part, Values({"b", "c"}));
}

TEST(ItemsCollection, SubrangePastTheEndFails)
{
    const Values values({"a", "b"});
    EXPECT_ASSERTION(values.copySubrange(Range(1, 3)), "range.getEnd() <= _collection.size()");
    EXPECT_EQ(values.copySubrange(Range(1, 2))->getSize(), 1u);
}

TEST(ItemsCollection, SubrangeOfOwningPointersCopiesTheirPointees)
{
    const Owned owned = makeOwned({"a", "b"});
    const auto part = owned.copySubrange(Range(1, 2));
    EXPECT_EQ(*part, makeOwned({"b"}));
    EXPECT_NE(cast<Owned>(*part).getCollection()[0].get(), owned.getCollection()[1].get());
}

TEST(ItemsCollection, EqualityIsDeep)
{
    EXPECT_EQ(makeOwned({"a", "b"}), makeOwned({"a", "b"}));
    EXPECT_FALSE(makeOwned({"a", "b"}) == makeOwned({"a", "c"}));
    EXPECT_FALSE(makeOwned({"a"}) == makeOwned({"a", "b"}));
    std::vector<std::unique_ptr<std::string>> nothing(1);
    std::vector<std::unique_ptr<std::string>> nothingElse(1);
    const Owned one(std::move(nothing));
    EXPECT_EQ(one, Owned(std::move(nothingElse)));
    EXPECT_FALSE(one == makeOwned({"a"}));
}

TEST(ItemsCollection, CollectionsOfOtherTypesAreUnequal)
{
    const Values values({"a"});
    const Owned owned = makeOwned({"a"});
    const ItemsCollection& left = values;
    const ItemsCollection& right = owned;
    EXPECT_FALSE(left == right);
    EXPECT_THROW(Values({"a"}).append(owned), std::bad_cast);
}

TEST(ItemsCollection, AppendsCopiesOfItsOwnItems)
{
    Values values({"a", "b", "c"});
    values.append(values);
    EXPECT_EQ(values, Values({"a", "b", "c", "a", "b", "c"}));
    Owned owned = makeOwned({"a"});
    owned.append(owned);
    EXPECT_EQ(owned, makeOwned({"a", "a"}));
}

TEST(ItemsCollection, ItemOutlivesItsCollection)
{
    auto owned = std::make_unique<Owned>(makeOwned({"a", "b"}));
    const SharedConstPtr<DataValue> item = owned->getItem(1);
    owned.reset();
    EXPECT_EQ(*getSimpleDataValue<std::unique_ptr<std::string>>(*item), "b");
}

TEST(ItemsCollection, ItemPastTheEndFails)
{
    EXPECT_ASSERTION(Values({"a"}).getItem(1), "index < _collection.size()");
}

TEST(ItemsCollection, ClonesAreDeep)
{
    const Owned owned = makeOwned({"a"});
    std::unique_ptr<ItemsCollection> uniqueClone;
    std::shared_ptr<ItemsCollection> sharedClone;
    owned.cloneTo(uniqueClone);
    owned.cloneTo(sharedClone);
    *owned.getCollection()[0] = "changed";
    EXPECT_EQ(*uniqueClone, makeOwned({"a"}));
    EXPECT_EQ(*sharedClone, makeOwned({"a"}));
}

} // namespace Zem::CollaborationEngine::Testing
