#include "koltx/AllShapesReportingStrategy.h"

#include "koltx/GenerateContext.h"

#include <stdexcept>
#include <utility>

namespace koltx {

std::shared_ptr<ReportingStrategy>
AllShapesReportingStrategy::create(GenerateContext const& context, size_t index,
                                   std::shared_ptr<ReportsAccumulator> const& accumulator) {
    if (!accumulator)
        throw std::invalid_argument("AllShapesReportingStrategy: null accumulator");
    InitialShape const* shape = context.getInitialShape(index);
    for (auto const& leaf : shape->getLeaves())
        if (leaf && leaf->getReports())
            accumulator->add(*leaf->getReports());
    return std::shared_ptr<ReportingStrategy>(new AllShapesReportingStrategy(accumulator));
}

AllShapesReportingStrategy::AllShapesReportingStrategy(
    std::shared_ptr<ReportsAccumulator> accumulator)
    : accumulator(std::move(accumulator)) {}

ReportsPtr const& AllShapesReportingStrategy::getReports() const {
    return accumulator->getResult();
}

} // namespace koltx
