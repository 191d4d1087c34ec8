#include "Util_DeepCopy.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace Zem;

namespace
{

struct Plain
{
    int _value = 0;
};

class Animal : public Clonable<Animal>
{
public:
    virtual int getLegsCount() const = 0;
};

class Spider : public Animal
{
public:
    void cloneTo(std::shared_ptr<Animal>& target) const override
    {
        target = std::make_shared<Spider>(*this);
    }

    void cloneTo(std::unique_ptr<Animal>& target) const override
    {
        target = std::make_unique<Spider>(*this);
    }

    int getLegsCount() const override
    {
        return _legsCount;
    }

    int _legsCount = 8;
};

class Last final : public Spider
{
};

} // namespace

TEST(DeepCopy, CopiesThePointeesOfAVector)
{
    std::vector<std::unique_ptr<Plain>> originals;
    originals.push_back(std::make_unique<Plain>(Plain{1}));
    originals.push_back(nullptr);
    const std::vector<std::unique_ptr<Plain>> copies = deepCopy(originals);
    originals[0]->_value = 2;
    ASSERT_EQ(2U, copies.size());
    EXPECT_EQ(1, copies[0]->_value);
    EXPECT_EQ(nullptr, copies[1]);
}

TEST(DeepCopy, ClonesByTheDynamicType)
{
    std::vector<std::unique_ptr<Animal>> originals;
    auto spider = std::make_unique<Spider>();
    spider->_legsCount = 7;
    originals.push_back(std::move(spider));
    const std::vector<std::unique_ptr<Animal>> copies = deepCopy(originals);
    EXPECT_EQ(7, copies[0]->getLegsCount());
    EXPECT_NE(nullptr, dynamic_cast<Spider*>(copies[0].get()));
    EXPECT_NE(originals[0].get(), copies[0].get());
}

TEST(DeepCopy, ClonesIntoASharedPointerToo)
{
    const Spider spider;
    std::shared_ptr<Animal> clone;
    spider.cloneTo(clone);
    EXPECT_EQ(8, clone->getLegsCount());
    EXPECT_EQ(8, cloneToUnique<Animal>(spider)->getLegsCount());
}

TEST(DeepCopy, AFinalClassNeedsNoClone)
{
    auto last = std::make_unique<Last>();
    last->_legsCount = 6;
    const std::unique_ptr<Last> copy = deepCopy(last);
    EXPECT_EQ(6, copy->_legsCount);
}

TEST(DeepCopy, AVectorOfValuesIsCopiedAsItIs)
{
    const std::vector<int> values{1, 2};
    EXPECT_EQ(values, deepCopy(values));
}
