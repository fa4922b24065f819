#pragma once

#include "koltx/Reports.h"

namespace koltx {

// Folds the reports of many shapes into one record.
class ReportsAccumulator {
public:
    virtual ~ReportsAccumulator() = default;
    virtual void add(Reports const& reports) = 0;
    // Null while nothing was added.
    virtual ReportsPtr const& getResult() const = 0;
    virtual void reset() = 0;

protected:
    ReportsAccumulator() = default;
};

} // namespace koltx
