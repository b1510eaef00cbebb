#!/usr/bin/env bash
# Installs what Cintal needs, builds it and starts it on the demo collection.
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

# The build leaves the demo collection in build/demo and its catalogue
# beside the program; Cintal opens that catalogue.
exec build/cintal "$@"
