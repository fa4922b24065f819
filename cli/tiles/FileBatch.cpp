#include "FileBatch.h"

#include "FileDecoder.h"
#include "ProgressBar.h"

#include <algorithm>
#include <atomic>
#include <cctype>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

bool cityGmlName(fs::path const& file) {
    std::string ext = file.extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext == ".gml" || ext == ".citygml" || ext == ".xml";
}

} // namespace

std::vector<FileBatch::Input> FileBatch::expand(std::vector<std::string> const& paths) {
    std::vector<Input> out;
    for (auto const& path : paths) {
        std::error_code error;
        fs::file_status const status = fs::status(path, error);
        if (error || !fs::exists(status))
            throw std::runtime_error("cannot read " + path + ": no such file or folder");
        if (!fs::is_directory(status)) {
            out.push_back({path, fs::path(path).filename().string(), fs::file_size(path, error)});
            continue;
        }
        std::vector<Input> found;
        fs::recursive_directory_iterator it(path, fs::directory_options::skip_permission_denied,
                                            error);
        for (; !error && it != fs::recursive_directory_iterator(); it.increment(error)) {
            std::error_code ignored;
            if (it->is_regular_file(ignored) && cityGmlName(it->path()))
                found.push_back({it->path().string(),
                                 it->path().lexically_relative(path).generic_string(),
                                 it->file_size(ignored)});
        }
        if (error)
            throw std::runtime_error("cannot list " + path + ": " + error.message());
        std::sort(found.begin(), found.end(),
                  [](Input const& a, Input const& b) { return a.path < b.path; });
        out.insert(out.end(), found.begin(), found.end());
    }
    return out;
}

std::vector<FileBatch::Outcome> FileBatch::run(std::vector<Input> const& inputs, unsigned threads,
                                               Work const& work, std::ostream& err,
                                               std::string const& label) {
    std::vector<Outcome> outcomes(inputs.size());
    uint64_t total = 0;
    for (auto const& input : inputs)
        total += input.size;
    threads = std::max(1u, std::min<unsigned>(threads, static_cast<unsigned>(inputs.size())));

    std::mutex lock;
    std::optional<ProgressBar> bar;
    if (&err == &std::cerr && isatty(STDERR_FILENO) == 1)
        bar.emplace(err, label, total);
    std::atomic<std::size_t> next{0};
    std::atomic<uint64_t> finished{0};
    std::vector<std::atomic<uint64_t>> reading(threads);
    auto const redraw = [&] {
        uint64_t done = finished.load();
        for (auto const& r : reading)
            done += r.load();
        bar->update(done);
    };

    auto const worker = [&](unsigned t) {
        if (bar)
            FileDecoder::setBatchHook([&, t](uint64_t done) {
                reading[t] = done;
                std::unique_lock<std::mutex> guard(lock, std::try_to_lock);
                if (guard.owns_lock())
                    redraw();
            });
        for (std::size_t i = next++; i < inputs.size(); i = next++) {
            Outcome outcome;
            try {
                Input input = inputs[i];
                input.last = i + 1 == inputs.size();
                outcome = work(input);
            } catch (std::exception const& e) {
                outcome = Outcome();
                outcome.error = e.what();
            }
            reading[t] = 0;
            finished += inputs[i].size;
            std::lock_guard<std::mutex> guard(lock);
            if (!outcome.warnings.empty() || !outcome.ok) {
                if (bar)
                    err << "\r\033[K";
                for (auto const& line : outcome.warnings)
                    err << inputs[i].path << ": warning: " << line << "\n";
                if (!outcome.ok)
                    err << inputs[i].path << ": " << outcome.error << "\n";
            }
            if (bar)
                redraw();
            outcomes[i] = std::move(outcome);
        }
        FileDecoder::setBatchHook({});
    };
    // Without a bar the decoder still frees what it decoded once the file is done.
    auto const quietWorker = [&](unsigned t) {
        if (!bar)
            FileDecoder::setBatchHook([](uint64_t) {});
        worker(t);
    };
    std::vector<std::thread> pool;
    for (unsigned t = 1; t < threads; ++t)
        pool.emplace_back(quietWorker, t);
    quietWorker(0);
    for (auto& thread : pool)
        thread.join();
    if (bar)
        bar->finish();
    return outcomes;
}
