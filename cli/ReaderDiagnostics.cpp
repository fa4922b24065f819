#include "ReaderDiagnostics.h"

#include <ostream>
#include <sstream>

namespace {

// "<unit> '<id>' dropped: <reason>" or "<unit> dropped: <reason>"; older wordings that name the
// unit first and say "dropped" count as drops too.
ReaderDiagnostics::Entry parse(std::string const& message, int line) {
    ReaderDiagnostics::Entry entry;
    entry.message = message;
    entry.line = line;
    std::string const unit = message.substr(0, message.find(' '));
    entry.dropped = (unit == "ring" || unit == "polygon" || unit == "geometry") &&
                    message.find("dropped") != std::string::npos;
    entry.kind = entry.dropped ? unit : "other";
    auto const open = message.find('\'');
    if (entry.dropped && open == unit.size() + 1) {
        auto const close = message.find('\'', open + 1);
        if (close != std::string::npos)
            entry.id = message.substr(open + 1, close - open - 1);
    }
    return entry;
}

} // namespace

ReaderDiagnostics::ReaderDiagnostics() : CityGMLLogger(LOGLEVEL::LL_WARNING) {}

void ReaderDiagnostics::log(LOGLEVEL level, std::string const& message, char const*,
                            int line) const {
    if (level < LOGLEVEL::LL_WARNING)
        return;
    Entry entry = parse(message, line);
    std::lock_guard<std::mutex> const held(mutex);
    ++total;
    ++kinds[entry.kind];
    if (kept.size() < Kept)
        kept.push_back(std::move(entry));
}

std::vector<ReaderDiagnostics::Entry> ReaderDiagnostics::entries() const {
    std::lock_guard<std::mutex> const held(mutex);
    return kept;
}

std::size_t ReaderDiagnostics::count() const {
    std::lock_guard<std::mutex> const held(mutex);
    return total;
}

std::map<std::string, std::size_t> ReaderDiagnostics::countsByKind() const {
    std::lock_guard<std::mutex> const held(mutex);
    return kinds;
}

std::string ReaderDiagnostics::describe(Entry const& entry) {
    return (entry.line > 0 ? "line " + std::to_string(entry.line) + ": " : std::string()) +
           entry.message;
}

std::vector<std::string> ReaderDiagnostics::lines() const {
    std::vector<std::string> out;
    for (auto const& entry : entries())
        out.push_back(describe(entry));
    std::size_t const all = count();
    if (all > out.size())
        out.push_back(std::to_string(all - out.size()) + " more reader warnings not listed");
    return out;
}

std::string ReaderDiagnostics::summary(std::size_t first) const {
    std::size_t const all = count();
    if (all == 0)
        return std::string();
    std::ostringstream out;
    out << "the reader reported " << all << " problem" << (all == 1 ? "" : "s") << " (";
    bool next = false;
    for (auto const& [kind, n] : countsByKind()) {
        out << (next ? ", " : "") << n << " " << (kind == "other" ? "other" : kind + " dropped");
        next = true;
    }
    out << ")" << (all > first ? ", the first " + std::to_string(first) : std::string()) << ":\n";
    auto const listed = entries();
    for (std::size_t i = 0; i < listed.size() && i < first; ++i)
        out << "  " << describe(listed[i]) << "\n";
    if (all > first)
        out << "  (--verbose lists them all)\n";
    return out.str();
}

void ReaderDiagnostics::report(std::ostream& err, bool verbose) const {
    if (verbose) {
        for (auto const& line : lines())
            err << "warning: " << line << "\n";
        return;
    }
    std::string const text = summary(5);
    if (!text.empty())
        err << "warning: " << text;
}

ReaderDiagnostics::Scope::Scope(std::shared_ptr<ReaderDiagnostics> diagnostics)
    : previous(citygml::setThreadFallbackLogger(std::move(diagnostics))) {}

ReaderDiagnostics::Scope::~Scope() {
    citygml::setThreadFallbackLogger(std::move(previous));
}
