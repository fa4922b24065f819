#!/usr/bin/env bash
# Configures and builds the project into ./build (extra arguments go to CMake).
set -euo pipefail
root="$(cd "$(dirname "$0")/.." && pwd)"
bash "$root/scripts/install-deps.sh"
cmake -S "$root" -B "$root/build" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >/dev/null
cmake --build "$root/build" -j"$(nproc)"
