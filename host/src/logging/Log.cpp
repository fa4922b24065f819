#include "koltx/Log.h"

#include "koltx/StderrLogSink.h"

#include <atomic>
#include <mutex>

namespace koltx {

namespace {

struct LogState {
    std::mutex mutex;
    LogSinkPtr sink = std::make_shared<StderrLogSink>();
    std::atomic<int32_t> threshold{kolt::LOG_WARNING};
};

// Never destroyed, so that extensions may still log while the process shuts down.
LogState& state() {
    static auto* theState = new LogState();
    return *theState;
}

} // namespace

LogSinkPtr Log::setSink(LogSinkPtr sink) {
    if (!sink)
        sink = std::make_shared<StderrLogSink>();
    std::lock_guard<std::mutex> lock(state().mutex);
    std::swap(state().sink, sink);
    return sink;
}

LogSinkPtr Log::getSink() {
    std::lock_guard<std::mutex> lock(state().mutex);
    return state().sink;
}

void Log::setThreshold(kolt::LogLevel level) {
    state().threshold = level;
}

kolt::LogLevel Log::getThreshold() {
    return static_cast<kolt::LogLevel>(state().threshold.load());
}

bool Log::isEnabled(kolt::LogLevel level) {
    return level >= state().threshold.load();
}

void Log::write(kolt::LogLevel level, std::string const& message) {
    if (!isEnabled(level))
        return;
    LogSinkPtr sink = getSink();
    sink->write(level, message);
}

Log::Scope::Scope(LogSinkPtr sink, kolt::LogLevel threshold)
    : previousSink(Log::setSink(std::move(sink))), previousThreshold(Log::getThreshold()) {
    Log::setThreshold(threshold);
}

Log::Scope::~Scope() {
    Log::setSink(previousSink);
    Log::setThreshold(previousThreshold);
}

} // namespace koltx
