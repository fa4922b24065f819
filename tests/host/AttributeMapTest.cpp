#include "kolt/AttributeMap.h"
#include "kolt/AttributeMapBuilder.h"
#include "koltx/KOLTUtils.h"

#include <Describe.h>
#include <Golden.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using koltx::KOLTUtils;

TEST(AttributeMap, EveryTypeRoundTripsWithItsTypeCode) {
    KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    ASSERT_TRUE(builder);
    int blind = 7;
    wchar_t const* strings[] = {L"eins", L"zwei"};
    double const floats[] = {1.5, -2.25, 3.0};
    bool const bools[] = {true, false, true};
    int32_t const ints[] = {-1, 0, 2147483647};
    kolt::Status status = kolt::STATUS_UNSPECIFIED_ERROR;
    builder->setString(L"s", L"h\u00E9llo", &status);
    EXPECT_EQ(status, kolt::STATUS_OK);
    builder->setFloat(L"f", 0.125);
    builder->setBool(L"b", true);
    builder->setInt(L"i", -42);
    builder->setStringArray(L"sa", strings, 2);
    builder->setFloatArray(L"fa", floats, 3);
    builder->setBoolArray(L"ba", bools, 3);
    builder->setIntArray(L"ia", ints, 3);
    builder->setBlindData(L"x", &blind);
    KOLTUtils::AttributeMapPtr map(builder->createAttributeMap());
    ASSERT_TRUE(map);

    // Keys come sorted by code unit, each with its type and values.
    EXPECT_TRUE(testsupport::matchesGolden("host/attribute_types.txt",
                                           testsupport::describeAttributes(*map)));
    EXPECT_EQ(map->getType(L"x", &status), kolt::PT_BLIND_DATA);
    EXPECT_EQ(status, kolt::STATUS_OK);
    EXPECT_EQ(map->getBlindData(L"x"), &blind);
}

TEST(AttributeMap, StatusesOfFailedReadsAndWrites) {
    KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    builder->setInt(L"n", 3);
    kolt::Status status = kolt::STATUS_OK;
    builder->setString(nullptr, L"v", &status);
    EXPECT_EQ(status, kolt::STATUS_ILLEGAL_KEY);
    builder->setString(L"k", nullptr, &status);
    EXPECT_EQ(status, kolt::STATUS_ILLEGAL_VALUE);
    builder->setFloatArray(L"k", nullptr, 2, &status);
    EXPECT_EQ(status, kolt::STATUS_ILLEGAL_VALUE);
    EXPECT_FALSE(builder->hasKey(L"k"));
    KOLTUtils::AttributeMapPtr map(builder->createAttributeMap());

    EXPECT_EQ(map->getString(L"n", &status), nullptr);
    EXPECT_EQ(status, kolt::STATUS_KEY_TYPE_MISMATCH);
    EXPECT_EQ(map->getInt(L"missing", &status), 0);
    EXPECT_EQ(status, kolt::STATUS_KEY_NOT_FOUND);
    EXPECT_FALSE(map->getBool(nullptr, &status));
    EXPECT_EQ(status, kolt::STATUS_ILLEGAL_KEY);
    size_t count = 99;
    EXPECT_EQ(map->getFloatArray(L"n", &count, &status), nullptr);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(status, kolt::STATUS_KEY_TYPE_MISMATCH);
    EXPECT_FALSE(map->hasKey(L"missing", &status));
    EXPECT_EQ(status, kolt::STATUS_OK);
    EXPECT_TRUE(map->hasKey(L"n"));
    EXPECT_EQ(map->getType(L"missing", &status), kolt::PT_UNDEFINED);
    EXPECT_EQ(status, kolt::STATUS_KEY_NOT_FOUND);
}

TEST(AttributeMap, BuilderReplacesCopiesAndResets) {
    KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    builder->setInt(L"a", 1);
    builder->setString(L"a", L"now text");
    KOLTUtils::AttributeMapPtr first(builder->createAttributeMap());
    EXPECT_EQ(first->getType(L"a"), kolt::PT_STRING);

    // A map outlives the builder's later changes.
    builder->setBool(L"b", true);
    EXPECT_FALSE(first->hasKey(L"b"));
    KOLTUtils::AttributeMapPtr second(builder->createAttributeMapAndReset());
    EXPECT_EQ(second->getKeyCount(), 2u);
    KOLTUtils::AttributeMapPtr empty(builder->createAttributeMap());
    EXPECT_EQ(empty->getKeyCount(), 0u);

    KOLTUtils::AttributeMapBuilderPtr copy(
        kolt::AttributeMapBuilder::createFromAttributeMap(second.get()));
    copy->setFloat(L"c", 2.0);
    KOLTUtils::AttributeMapPtr third(copy->createAttributeMap());
    EXPECT_EQ(std::wstring(third->getString(L"a")), L"now text");
    EXPECT_FALSE(third->equals(*second));
    copy->remove(L"c");
    KOLTUtils::AttributeMapPtr fourth(copy->createAttributeMap());
    EXPECT_TRUE(fourth->equals(*second));
}
