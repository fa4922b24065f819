#pragma once

#include <memory>
#include <string>

namespace citygml {

// Receives the reader's diagnostics; semantic faults the reader survives are told here.
class CityGMLLogger {
public:
    enum class LOGLEVEL { LL_TRACE = 0, LL_DEBUG = 1, LL_INFO = 2, LL_WARNING = 3, LL_ERROR = 4 };

    explicit CityGMLLogger(LOGLEVEL level = LOGLEVEL::LL_ERROR) : m_logLevel(level) {}
    virtual ~CityGMLLogger() = default;

    virtual void log(LOGLEVEL level, std::string const& message, char const* file = nullptr,
                     int line = -1) const = 0;

    virtual bool isEnabledFor(LOGLEVEL level) const { return level >= m_logLevel; }
    LOGLEVEL getLogLevel() const { return m_logLevel; }
    void setLogLevel(LOGLEVEL level) { m_logLevel = level; }

private:
    LOGLEVEL m_logLevel;
};

// The logger that load() uses on this thread when it is given none. An application that reaches
// the reader through another library (the codec passes no logger) hears the reader's diagnostics
// this way. Returns the logger it replaces.
std::shared_ptr<CityGMLLogger> setThreadFallbackLogger(std::shared_ptr<CityGMLLogger> logger);
std::shared_ptr<CityGMLLogger> threadFallbackLogger();

} // namespace citygml
