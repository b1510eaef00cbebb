#!/usr/bin/env bash
# Installs what Cintal needs, builds it and starts it on the demo collection.
set -euo pipefail
cd "$(dirname "$0")"

source scripts/setup.sh

# The build leaves the demo collection in build/demo and its catalogue
# beside the program; Cintal opens that catalogue.
exec build/cintal "$@"
