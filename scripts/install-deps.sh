#!/usr/bin/env bash
# Installs the Debian packages the project needs, only when some are missing.
set -euo pipefail

packages=(
    build-essential cmake pkg-config clang clang-format
    libgtest-dev libgmock-dev googletest libbenchmark-dev
    libpng-dev libjpeg62-turbo-dev libxml2-dev libxml2-utils libboost-dev libglu1-mesa-dev
    libtinyobjloader-dev libcitygml-dev libfuzzer-14-dev libclang-rt-14-dev
    libproj-dev proj-data proj-bin nlohmann-json3-dev libjemalloc-dev nodejs chromium lcov parallel
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
# npm comes with some Node builds; Debian's own package only where it did not.
command -v npm >/dev/null 2>&1 || missing+=(npm)

if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing missing packages: ${missing[*]}"
    sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    export DEBIAN_FRONTEND=noninteractive
    $sudo apt-get update -qq
    $sudo apt-get install -y -qq "${missing[@]}"
fi

# Node test tools (the Khronos glTF validator, three.js, puppeteer-core), pinned by the lock file;
# installed again only when the lock file is newer than what is installed.
js="$(cd "$(dirname "$0")/../tests/js" && pwd)"
if [ ! -f "$js/node_modules/.package-lock.json" ] ||
    [ "$js/package-lock.json" -nt "$js/node_modules/.package-lock.json" ]; then
    (cd "$js" && npm ci --no-audit --no-fund --loglevel=error)
fi
