#pragma once

#include <citygml/CityGMLLogger.h>

#include <memory>
#include <string>
#include <string_view>

namespace citygml {

// What the reader tells its logger about faults it survives. Drops follow one form that callers
// may parse: "<unit> '<id>' dropped: <reason>", or "<unit> dropped: <reason>" without an id, as a
// warning with the 1-based line of the element's start tag.
class Diagnostics {
public:
    explicit Diagnostics(std::shared_ptr<CityGMLLogger> logger);

    bool enabled() const { return m_enabled; }
    void warn(std::string const& message, int line = -1) const;
    // `unit` is "ring", "polygon" or "geometry"; `documentId` is the element's gml:id or empty.
    void dropped(char const* unit, std::string_view documentId, std::string_view reason,
                 int line) const;
    // Text from the document made fit for one line of a message: control characters become '?',
    // and long text is cut short.
    static std::string printable(std::string_view text);

private:
    std::shared_ptr<CityGMLLogger> m_logger;
    bool m_enabled;
};

} // namespace citygml
