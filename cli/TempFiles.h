#pragma once

#include <mutex>
#include <string>

// The temporary files of the running process, removed when SIGINT or SIGTERM ends it. The
// signals are blocked in every thread and taken by one watcher thread, which removes the files
// in an ordinary context (no async-signal-safety limits) and then ends the process with the
// signal's default action. Whoever creates a temporary file holds lock() while it does, so the
// watcher never misses a file that is being made.
class TempFiles {
public:
    // Call first thing in main, before any other thread exists.
    static void removeOnSignals();

    static std::unique_lock<std::recursive_mutex> lock();
    // A temporary file, by its path.
    static void add(std::string const& path);
    static void remove(std::string const& path);
    // Temporary files that the host makes beside their target: any file in `folder` whose name
    // starts with `prefix` and is longer than it.
    static void addPattern(std::string const& folder, std::string const& prefix);
};
