#pragma once

#include <cstdint>
#include <ostream>
#include <string>

// A one-line bar of work done over work to do, redrawn in place with "\r". It redraws only
// when the shown per mille changes, so calling it for every chunk costs next to nothing.
class ProgressBar {
public:
    ProgressBar(std::ostream& out, std::string label, uint64_t total, int width = 40);
    ~ProgressBar();

    void update(uint64_t done);
    // Draws the full bar and ends the line; further updates are ignored.
    void finish();

private:
    void draw(uint64_t done);

    std::ostream& out;
    std::string label;
    uint64_t total;
    int width;
    int shown = -1;
    bool finished = false;
};
