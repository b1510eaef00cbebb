#!/usr/bin/env bash
# Fuzzes the tape reader for the given number of seconds (60 by default):
# a clang build with the sanitizers in build-fuzz/, a corpus started from the
# demo collection, crashes kept in build-fuzz/crashes/. On a machine shared
# with other work, add -jobs=1 to keep it to one core and its log in
# build-fuzz/fuzz-0.log.
#
#   fuzz/run.sh [SECONDS] [more libFuzzer flags...]
set -euo pipefail
cd "$(dirname "$0")/.."

seconds="${1:-60}"
shift || true

need=()
for pkg in cmake ninja-build clang libclang-rt-dev g++ qt6-base-dev libqt6sql6-sqlite; do
    dpkg -s "$pkg" >/dev/null 2>&1 || need+=("$pkg")
done
if ((${#need[@]})); then
    apt-get update
    apt-get install -y --no-install-recommends "${need[@]}"
fi

build=build-fuzz
CC=clang CXX=clang++ cmake -S . -B "$build" -G Ninja \
    -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCINTAL_BUILD_FUZZ=ON -DCINTAL_BUILD_TESTS=OFF -DCINTAL_BUILD_BENCH=OFF
cmake --build "$build" --target tape_fuzz demo -j 2

corpus="$build/corpus"
crashes="$build/crashes"
mkdir -p "$corpus" "$crashes"
# The corpus starts from the demo tapes and snapshots; what the fuzzer found
# before stays in it.
find "$build/demo" -type f \( -iname '*.tzx' -o -iname '*.tap' -o -iname '*.z80' -o -iname '*.sna' \) \
    -exec cp -f {} "$corpus/" \;

# From inside the build folder, so that the logs of -jobs and -fork land there.
root="$PWD"
cd "$build"
exec ./fuzz/tape_fuzz corpus \
    -dict="$root/fuzz/tzx.dict" \
    -max_total_time="$seconds" \
    -artifact_prefix=crashes/ \
    -rss_limit_mb=2048 \
    -print_final_stats=1 \
    "$@"
