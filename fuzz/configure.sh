#!/usr/bin/env bash
# Configures the fuzz build in folder $1 (clang, libFuzzer, ASan and UBSan), once.
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:?usage: fuzz/configure.sh BUILD_FOLDER}"
[ -f "$build/CMakeCache.txt" ] && exit 0
# Light optimisation and line tables only: quick to build, and findings still name their lines.
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DKOLT_FUZZ=ON -DKOLT_BUILD_TESTS=OFF \
    -DKOLT_BUILD_BENCH=OFF -DCMAKE_BUILD_TYPE=Release \
    "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -gline-tables-only" "-DCMAKE_C_FLAGS_RELEASE=-O1 -gline-tables-only" \
    -DCMAKE_C_COMPILER_LAUNCHER="$(command -v ccache || true)" \
    -DCMAKE_CXX_COMPILER_LAUNCHER="$(command -v ccache || true)" >/dev/null
