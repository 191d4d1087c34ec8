#include "NA_MapKey.h"

#include "Util_UUID.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace Zem;
using namespace Zem::NodeAddressing;

namespace
{

using UUIDKey = SimpleValueMapKey<UUID>;
using NameKey = SimpleValueMapKey<std::string>;

template<class Key, class Pointer>
void expectClone(const Key& key)
{
    Pointer clone;
    static_cast<const MapKey&>(key).cloneTo(clone);
    ASSERT_TRUE(clone);
    EXPECT_NE(&key, clone.get());
    EXPECT_TRUE(*clone == key);
    const auto* const sameClass = dynamic_cast<const Key*>(clone.get());
    ASSERT_TRUE(sameClass);
    EXPECT_EQ(key.getValue(), sameClass->getValue());
}

} // namespace

TEST(MapKey, HoldsItsValue)
{
    const UUID uuid = UUID::generate();
    EXPECT_EQ(uuid, UUIDKey(uuid).getValue());
    EXPECT_EQ("name", NameKey("name").getValue());
    EXPECT_TRUE(UUIDKey().getValue().isNil());
    EXPECT_EQ("", NameKey().getValue());
}

TEST(MapKey, IsEqualByClassAndValue)
{
    const MapKey& none = UUIDKey();
    EXPECT_TRUE(none == UUIDKey());
    EXPECT_FALSE(none == UUIDKey(UUID::generate()));
    EXPECT_TRUE(NameKey("a") == NameKey("a"));
    EXPECT_FALSE(NameKey("a") == NameKey("b"));
    EXPECT_FALSE(none == NameKey(UUID().toString()));
    EXPECT_FALSE(NameKey(UUID().toString()) == none);
}

TEST(MapKey, HasTheHashOfItsValue)
{
    const UUID uuid = UUID::generate();
    EXPECT_EQ(UUIDKey(uuid).getHash(), UUIDKey(uuid).getHash());
    EXPECT_EQ(hash_value(uuid), UUIDKey(uuid).getHash());
    EXPECT_NE(UUIDKey(uuid).getHash(), UUIDKey().getHash());
    EXPECT_EQ(NameKey("a").getHash(), NameKey("a").getHash());
    EXPECT_NE(NameKey("a").getHash(), NameKey("b").getHash());
}

TEST(MapKey, IsClonedAsWhatItIs)
{
    const UUID uuid = UUID::generate();
    expectClone<UUIDKey, std::unique_ptr<MapKey>>(UUIDKey(uuid));
    expectClone<UUIDKey, std::shared_ptr<MapKey>>(UUIDKey(uuid));
    expectClone<NameKey, std::unique_ptr<MapKey>>(NameKey("name"));
    expectClone<NameKey, std::shared_ptr<MapKey>>(NameKey("name"));
}
