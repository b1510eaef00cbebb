#!/usr/bin/env bash
# Installs what Cintal needs, builds it and runs every test.
set -euo pipefail
cd "$(dirname "$0")"

source scripts/setup.sh
QT_QPA_PLATFORM=offscreen ctest --test-dir build --output-on-failure
