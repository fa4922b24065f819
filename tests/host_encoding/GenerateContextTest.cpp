// What the codec's generations leave out: misuse of shapes and strategies, and an accumulator
// used again after a reset. Leaf walks and report sums are the encoder's tests.
#include "koltx/GenerateContext.h"
#include "MeshFixtures.h"
#include "koltx/AllShapesReportingStrategy.h"
#include "koltx/SumReportsAccumulator.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace koltx;

TEST(GenerateContext, MisuseIsRefusedAndAResetAccumulatorStartsOver) {
    EXPECT_THROW(InitialShape(L"x", nullptr, {nullptr}), std::invalid_argument);
    auto const geometry = fixtures::geometryOf({fixtures::quadSoup(1, 1, L"a")});
    GenerateContext context(
        {std::make_shared<InitialShape>(
            L"A", nullptr, std::vector<std::shared_ptr<Shape>>{std::make_shared<Shape>(geometry)})},
        nullptr, nullptr);
    EXPECT_THROW(AllShapesReportingStrategy::create(context, 0, nullptr), std::invalid_argument);

    auto const reports = [](bool flag) {
        auto r = std::make_shared<Reports>();
        r->addBool(L"flag", flag);
        return r;
    };
    auto accumulator = SumReportsAccumulator::create();
    accumulator->add(*reports(true));
    accumulator->reset();
    EXPECT_FALSE(accumulator->getResult());
    accumulator->add(*reports(false));
    EXPECT_FALSE(accumulator->getResult()->bools[0].second);
}
