#!/usr/bin/env bash
# Installs what is missing, builds Mixorama and runs every test.
set -euo pipefail
cd "$(dirname "$0")"
scripts/install-deps.sh
scripts/build.sh
build="${MIXORAMA_BUILD_DIR:-build}"
cd "$build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)" "$@"
