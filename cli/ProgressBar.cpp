#include "ProgressBar.h"

#include <cstdio>
#include <utility>

ProgressBar::ProgressBar(std::ostream& stream, std::string text, uint64_t totalWork, int barWidth)
    : out(stream), label(std::move(text)), total(totalWork), width(barWidth) {}

ProgressBar::~ProgressBar() {
    if (shown >= 0 && !finished)
        out << '\n' << std::flush;
}

void ProgressBar::update(uint64_t done) {
    if (finished)
        return;
    draw(done);
}

void ProgressBar::finish() {
    if (finished)
        return;
    draw(total);
    out << '\n' << std::flush;
    finished = true;
}

void ProgressBar::draw(uint64_t done) {
    if (done > total)
        done = total;
    int const permille = total == 0 ? 1000 : static_cast<int>(done * 1000 / total);
    if (permille == shown)
        return;
    shown = permille;
    int const filled = permille * width / 1000;
    char numbers[64];
    std::snprintf(numbers, sizeof numbers, "%5.1f%% %llu/%llu MB", permille / 10.0,
                  static_cast<unsigned long long>(done >> 20),
                  static_cast<unsigned long long>(total >> 20));
    out << '\r' << label << " [" << std::string(static_cast<std::size_t>(filled), '#')
        << std::string(static_cast<std::size_t>(width - filled), ' ') << "] " << numbers
        << std::flush;
}
