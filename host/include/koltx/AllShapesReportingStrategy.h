#pragma once

#include "koltx/ReportingStrategy.h"
#include "koltx/ReportsAccumulator.h"

#include <cstddef>
#include <memory>

namespace koltx {

class GenerateContext;

// Every leaf of the initial shape contributes, in leaf order.
class AllShapesReportingStrategy : public ReportingStrategy {
public:
    // Folds the leaves' reports into `accumulator` at once. Throws std::out_of_range for an index
    // outside the context and std::invalid_argument for a null accumulator.
    static std::shared_ptr<ReportingStrategy>
    create(GenerateContext const& context, size_t index,
           std::shared_ptr<ReportsAccumulator> const& accumulator);

    ReportsPtr const& getReports() const override;

private:
    explicit AllShapesReportingStrategy(std::shared_ptr<ReportsAccumulator> accumulator);

    std::shared_ptr<ReportsAccumulator> accumulator;
};

} // namespace koltx
