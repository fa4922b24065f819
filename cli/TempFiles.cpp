#include "TempFiles.h"

#include <csignal>
#include <filesystem>
#include <pthread.h>
#include <set>
#include <thread>
#include <unistd.h>
#include <utility>

namespace {

std::recursive_mutex& registryMutex() {
    static std::recursive_mutex mutex;
    return mutex;
}

std::set<std::string>& paths() {
    static std::set<std::string> registered;
    return registered;
}

std::set<std::pair<std::string, std::string>>& patterns() {
    static std::set<std::pair<std::string, std::string>> registered;
    return registered;
}

void removeAll() {
    for (auto const& path : paths())
        ::unlink(path.c_str());
    for (auto const& [folder, prefix] : patterns()) {
        std::error_code error;
        for (auto it = std::filesystem::directory_iterator(folder, error);
             !error && it != std::filesystem::directory_iterator(); it.increment(error)) {
            std::string const name = it->path().filename().string();
            if (name.size() > prefix.size() && name.compare(0, prefix.size(), prefix) == 0)
                ::unlink(it->path().c_str());
        }
    }
}

} // namespace

void TempFiles::removeOnSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::thread([signals] {
        int number = 0;
        if (sigwait(&signals, &number) != 0)
            return;
        // Held to the end: nobody makes a new temporary file any more.
        registryMutex().lock();
        removeAll();
        std::signal(number, SIG_DFL);
        sigset_t one;
        sigemptyset(&one);
        sigaddset(&one, number);
        pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
        ::raise(number);
        ::_exit(128 + number);
    }).detach();
}

std::unique_lock<std::recursive_mutex> TempFiles::lock() {
    return std::unique_lock<std::recursive_mutex>(registryMutex());
}

void TempFiles::add(std::string const& path) {
    auto const held = lock();
    paths().insert(path);
}

void TempFiles::remove(std::string const& path) {
    auto const held = lock();
    paths().erase(path);
}

void TempFiles::addPattern(std::string const& folder, std::string const& prefix) {
    auto const held = lock();
    patterns().emplace(folder, prefix);
}
