#pragma once

#include "koltx/Reports.h"

namespace koltx {

// Decides which shapes of an initial shape contribute reports, and gives the folded result.
class ReportingStrategy {
public:
    virtual ~ReportingStrategy() = default;
    // May be null when no contributing shape reported anything.
    virtual ReportsPtr const& getReports() const = 0;

protected:
    ReportingStrategy() = default;
};

} // namespace koltx
