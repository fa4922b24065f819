#include "koltx/GenerateContext.h"
#include "MeshFixtures.h"
#include "kolt/AttributeMapBuilder.h"
#include "koltx/AllShapesReportingStrategy.h"
#include "koltx/KOLTUtils.h"
#include "koltx/LeafIterator.h"
#include "koltx/SumReportsAccumulator.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace koltx;

namespace {

ReportsPtr reports(double height, bool flag, std::wstring const& kind) {
    auto r = std::make_shared<Reports>();
    r->addFloat(L"height", height);
    r->addFloat(L"count", 1);
    r->addBool(L"flag", flag);
    r->addString(L"kind", kind);
    return r;
}

} // namespace

TEST(GenerateContext, LeafIteratorWalksTheLeavesOfOneInitialShape) {
    auto geometry = fixtures::geometryOf({fixtures::quadSoup(1, 1, L"a")});
    auto first = std::make_shared<Shape>(geometry, Shape::translation(1, 2, 3));
    auto second = std::make_shared<Shape>(geometry);
    KOLTUtils::AttributeMapBuilderPtr builder(kolt::AttributeMapBuilder::create());
    builder->setString(L"/enc/metaData/name", L"lot 7");
    auto shapeA =
        std::make_shared<InitialShape>(L"A", KOLTUtils::share(builder->createAttributeMap()),
                                       std::vector<std::shared_ptr<Shape>>{first, second});
    auto shapeB = std::make_shared<InitialShape>(L"B", nullptr,
                                                 std::vector<std::shared_ptr<Shape>>{}, geometry);
    GenerateContext context({shapeA, shapeB}, nullptr, nullptr);
    EXPECT_EQ(context.getInitialShapeCount(), 2u);
    EXPECT_EQ(context.getInitialShape(0)->getName(), L"A");
    EXPECT_STREQ(context.getInitialShape(0)->getAttributeMap()->getString(L"/enc/metaData/name"),
                 L"lot 7");
    // A shape without attributes still has a map, an empty one.
    ASSERT_NE(context.getInitialShape(1)->getAttributeMap(), nullptr);
    EXPECT_EQ(context.getInitialShape(1)->getAttributeMap()->getKeyCount(), 0u);
    EXPECT_EQ(context.getInitialShape(1)->getGeometry(), geometry);
    EXPECT_THROW(context.getInitialShape(2), std::out_of_range);

    auto leaves = LeafIterator::create(context, 0);
    EXPECT_EQ(leaves->getNext(), first);
    EXPECT_EQ(first->getTransform()[13], 2);
    EXPECT_EQ(leaves->getNext(), second);
    EXPECT_EQ(leaves->getNext(), nullptr);
    EXPECT_EQ(leaves->getNext(), nullptr);
    EXPECT_EQ(LeafIterator::create(context, 1)->getNext(), nullptr);
    EXPECT_THROW(LeafIterator::create(context, 5), std::out_of_range);
    EXPECT_THROW(InitialShape(L"x", nullptr, {nullptr}), std::invalid_argument);
}

TEST(GenerateContext, SumAccumulatorAddsFloatsAndKeepsFirstBoolsAndStrings) {
    auto geometry = fixtures::geometryOf({fixtures::quadSoup(1, 1, L"a")});
    std::vector<std::shared_ptr<Shape>> leaves{
        std::make_shared<Shape>(geometry, Shape::identity(), reports(2.5, true, L"roof")),
        std::make_shared<Shape>(geometry), // no reports
        std::make_shared<Shape>(geometry, Shape::identity(), reports(4.0, false, L"wall"))};
    auto extra = std::make_shared<Reports>();
    extra->addFloat(L"area", 10);
    extra->addString(L"kind", L"floor");
    leaves.push_back(std::make_shared<Shape>(geometry, Shape::identity(), extra));
    auto withReports = std::make_shared<InitialShape>(L"A", nullptr, leaves);
    auto without = std::make_shared<InitialShape>(
        L"B", nullptr, std::vector<std::shared_ptr<Shape>>{std::make_shared<Shape>(geometry)});
    GenerateContext context({withReports, without}, nullptr, nullptr);

    auto strategy = AllShapesReportingStrategy::create(context, 0, SumReportsAccumulator::create());
    ReportsPtr const& result = strategy->getReports();
    ASSERT_TRUE(result);
    ASSERT_EQ(result->floats.size(), 3u);
    EXPECT_EQ(*result->floats[0].first, L"height");
    EXPECT_DOUBLE_EQ(result->floats[0].second, 6.5);
    EXPECT_EQ(*result->floats[1].first, L"count");
    EXPECT_DOUBLE_EQ(result->floats[1].second, 2);
    EXPECT_EQ(*result->floats[2].first, L"area");
    ASSERT_EQ(result->bools.size(), 1u);
    EXPECT_TRUE(result->bools[0].second);
    ASSERT_EQ(result->strings.size(), 1u);
    EXPECT_EQ(*result->strings[0].second, L"roof");

    EXPECT_FALSE(AllShapesReportingStrategy::create(context, 1, SumReportsAccumulator::create())
                     ->getReports());
    EXPECT_THROW(AllShapesReportingStrategy::create(context, 0, nullptr), std::invalid_argument);
    EXPECT_THROW(AllShapesReportingStrategy::create(context, 2, SumReportsAccumulator::create()),
                 std::out_of_range);

    auto accumulator = SumReportsAccumulator::create();
    accumulator->add(*reports(1, true, L"x"));
    accumulator->reset();
    EXPECT_FALSE(accumulator->getResult());
    accumulator->add(*reports(1, false, L"y"));
    EXPECT_FALSE(accumulator->getResult()->bools[0].second);
}
