#!/usr/bin/env bash
# Installs the Debian packages the project needs, only when some are missing.
set -euo pipefail

packages=(
    build-essential cmake pkg-config clang clang-format
    libgtest-dev libgmock-dev googletest libbenchmark-dev
    libpng-dev libjpeg62-turbo-dev libxml2-dev libxml2-utils libboost-dev libglu1-mesa-dev
    libtinyobjloader-dev libcitygml-dev libfuzzer-14-dev libclang-rt-14-dev lcov
)

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing missing packages: ${missing[*]}"
sudo=""
[ "$(id -u)" -ne 0 ] && sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq "${missing[@]}"
