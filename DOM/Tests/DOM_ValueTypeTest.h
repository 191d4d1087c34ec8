#pragma once

/// What every value type of the model must do, as a typed suite. Several sources instantiate it with their own classes.

#include "DOM_FieldChanges.h"

#include "Util_DeepComparison.h"
#include "Util_JsonText.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace Zem::DOM::Tests
{

template<class T>
class ValueType : public ::testing::Test
{
protected:
    const T _default{};
    const T _changed = makeChanged(_default);
};

TYPED_TEST_SUITE_P(ValueType);

TYPED_TEST_P(ValueType, IsUnequalOnceAnyFieldIsChanged)
{
    for (const TypeParam* object : {&this->_default, &this->_changed})
    {
        forEachFieldChanged(*object,
                            [&](const char* name, const TypeParam& changed)
                            {
                                EXPECT_FALSE(changed == *object) << name;
                                EXPECT_FALSE(*object == changed) << name;
                            });
    }
}

TYPED_TEST_P(ValueType, IsEqualToItsCopy)
{
    for (const TypeParam* object : {&this->_default, &this->_changed})
    {
        const TypeParam copy(*object);
        EXPECT_TRUE(copy == *object);
        TypeParam assigned;
        assigned = copy;
        EXPECT_TRUE(assigned == *object);
        const TypeParam moved(std::move(assigned));
        EXPECT_TRUE(moved == *object);
    }
}

TYPED_TEST_P(ValueType, ComesBackFromJsonWithEachField)
{
    for (const TypeParam* object : {&this->_default, &this->_changed})
    {
        EXPECT_TRUE(fromJson<TypeParam>(Zem::toJson(*object)) == *object);
        forEachFieldChanged(*object,
                            [](const char* name, const TypeParam& changed)
                            {
                                const std::string text = Zem::toJson(changed);
                                EXPECT_TRUE(fromJson<TypeParam>(text) == changed) << name << ' ' << text;
                            });
    }
}

TYPED_TEST_P(ValueType, NamesNoFieldTwice)
{
    std::set<std::string> names;
    forEachField<TypeParam>([&](const auto& row) { EXPECT_TRUE(names.insert(row._name).second) << row._name; });
}

REGISTER_TYPED_TEST_SUITE_P(ValueType, IsUnequalOnceAnyFieldIsChanged, IsEqualToItsCopy, ComesBackFromJsonWithEachField,
                            NamesNoFieldTwice);

} // namespace Zem::DOM::Tests
