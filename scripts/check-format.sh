#!/usr/bin/env bash
# Fails when a C++ file of the tree differs from what clang-format makes of it (.clang-format,
# east const included). Prints the offending places; `clang-format -i FILE` fixes them.
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files -z '*.cpp' '*.h' | xargs -0 -P "$(nproc)" -n 40 clang-format --dry-run --Werror
