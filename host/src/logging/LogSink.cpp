#include "koltx/LogSink.h"

namespace koltx {

LogSink::~LogSink() = default;

} // namespace koltx
