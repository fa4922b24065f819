#!/usr/bin/env bash
# Line coverage of src/, host/, reader/ and cli/ by the whole test suite.
# Usage: scripts/coverage.sh [build-folder]   (default: build-cov; reused incrementally)
# Writes <build-folder>/coverage.info and <build-folder>/coverage-summary.txt (per file).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
build="${1:-$root/build-cov}"
jobs="${KOLT_JOBS:-2}"

# No compiler cache: one that rewrites source paths relative to a base folder leaves gcov's
# records pointing nowhere, and the extract below would find nothing.
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS=--coverage \
    -DCMAKE_C_FLAGS=--coverage -DKOLT_BUILD_BENCH=OFF -DCMAKE_CXX_COMPILER_LAUNCHER= \
    -DCMAKE_C_COMPILER_LAUNCHER= >/dev/null
cmake --build "$build" -j"$jobs"

lcov --quiet --zerocounters --directory "$build"
(cd "$build" && ctest -j"$jobs" --timeout 900 --output-on-failure) || echo "coverage: some tests failed" >&2

raw="$build/coverage-raw.info"
info="$build/coverage.info"
lcov --quiet --capture --directory "$build" --base-directory "$root" --output-file "$raw" \
    --rc lcov_branch_coverage=0 --ignore-errors gcov,source
lcov --quiet --extract "$raw" "$root/src/*" "$root/host/*" "$root/reader/*" "$root/cli/*" \
    --output-file "$info"

# Per-file summary: lines hit, lines found, path relative to the project root.
awk -v root="$root/" '
    /^SF:/ { file = substr($0, 4); sub(root, "", file) }
    /^LH:/ { hit = substr($0, 4) }
    /^LF:/ { found = substr($0, 4) }
    /^end_of_record/ { printf "%6d %6d %s\n", hit, found, file }
' "$info" | sort -k3 >"$build/coverage-summary.txt"

awk '
    { split($3, p, "/"); h[p[1]] += $1; f[p[1]] += $2; H += $1; F += $2 }
    END {
        for (c in h) printf "%-8s %6d / %6d  %5.1f%%\n", c, h[c], f[c], 100 * h[c] / f[c]
        printf "%-8s %6d / %6d  %5.1f%%\n", "total", H, F, 100 * H / F
    }
' "$build/coverage-summary.txt"
