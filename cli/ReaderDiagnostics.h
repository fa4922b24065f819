#pragma once

#include <citygml/CityGMLLogger.h>

#include <cstddef>
#include <iosfwd>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

// What the CityGML reader tells while the codec decodes a file, above all the rings, polygons
// and geometries it drops ("ring 'r1' dropped: fewer than 4 positions", with the line). The
// codec gives the reader no logger, so this one is installed as the thread's fallback logger for
// the time of a decode.
class ReaderDiagnostics : public citygml::CityGMLLogger {
public:
    struct Entry {
        std::string kind; // "ring", "polygon" or "geometry" for a drop, else "other"
        std::string id;   // the element's id, when the message names one
        std::string message;
        int line = -1;
        bool dropped = false;
    };

    // Entries kept for listing; beyond this only the counts grow.
    static constexpr std::size_t Kept = 10000;

    ReaderDiagnostics();
    void log(LOGLEVEL level, std::string const& message, char const* file, int line) const override;

    std::vector<Entry> entries() const;
    std::size_t count() const;
    // Drops (and other notes) by kind.
    std::map<std::string, std::size_t> countsByKind() const;

    // "line 12: ring 'r1' dropped: fewer than 4 positions".
    static std::string describe(Entry const& entry);
    // Every entry described, one per line (those past Kept are counted, not listed).
    std::vector<std::string> lines() const;
    // How many, of which kind, and the first `first` of them; "" when there are none.
    std::string summary(std::size_t first) const;

    // For a conversion: every entry with `verbose`, otherwise the summary of the first few; each
    // line starts with "warning: ".
    void report(std::ostream& err, bool verbose) const;

    // Makes `diagnostics` the reader's logger on this thread for the life of the object.
    class Scope {
    public:
        explicit Scope(std::shared_ptr<ReaderDiagnostics> diagnostics);
        Scope(Scope const&) = delete;
        Scope& operator=(Scope const&) = delete;
        ~Scope();

    private:
        std::shared_ptr<citygml::CityGMLLogger> previous;
    };

private:
    mutable std::mutex mutex;
    mutable std::vector<Entry> kept;
    mutable std::map<std::string, std::size_t> kinds;
    mutable std::size_t total = 0;
};
