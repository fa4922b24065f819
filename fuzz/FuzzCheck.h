#pragma once

#include <cstdlib>

// A broken promise ends the run, so that libFuzzer keeps the input that broke it.
inline void fuzzCheck(bool condition) {
    if (!condition)
        std::abort();
}
