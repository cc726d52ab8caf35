#!/usr/bin/env bash
# Configures and builds Mixorama into ./build (or $MIXORAMA_BUILD_DIR).
set -euo pipefail
cd "$(dirname "$0")/.."
build="${MIXORAMA_BUILD_DIR:-build}"
werror=OFF
[ "${CI:-}" = "true" ] && werror=ON
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DMIXORAMA_WERROR=$werror >/dev/null
cmake --build "$build" -j"$(nproc)"
