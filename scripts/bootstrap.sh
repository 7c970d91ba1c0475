#!/usr/bin/env bash
# Installs the Debian packages Ketrel needs to build, run and test, if any are missing.
set -euo pipefail

PACKAGES=(
    cmake ninja-build g++ pkg-config
    qt6-base-dev qt6-serialport-dev qt6-svg-dev libgl-dev desktop-file-utils
    libsqlite3-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    fonts-dejavu-core
    poppler-utils
    clang libclang-rt-14-dev
)

missing=()
for p in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}" >&2
if [ "$(id -u)" -eq 0 ]; then
    apt-get update -qq
    DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}"
elif command -v sudo >/dev/null 2>&1; then
    sudo apt-get update -qq
    sudo DEBIAN_FRONTEND=noninteractive apt-get install -y -qq "${missing[@]}"
else
    echo "Not root and no sudo: ask an administrator to run" >&2
    echo "  apt-get install ${missing[*]}" >&2
    exit 1
fi
