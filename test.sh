#!/usr/bin/env bash
# Installs what Cintal needs, builds it and runs every test.
set -euo pipefail
cd "$(dirname "$0")"

packages=(cmake ninja-build g++ libgtest-dev libbenchmark-dev qt6-base-dev libqt6sql6-sqlite)
need=()
for pkg in "${packages[@]}"; do
    dpkg -s "$pkg" >/dev/null 2>&1 || need+=("$pkg")
done
if ((${#need[@]})); then
    apt-get update
    DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${need[@]}"
fi

cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j 2
QT_QPA_PLATFORM=offscreen ctest --test-dir build --output-on-failure
