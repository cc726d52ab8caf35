#!/usr/bin/env bash
# Configures and builds Mixorama into ./build (or $MIXORAMA_BUILD_DIR). With target names as
# arguments it builds only those (and what they need); without, everything, tests included.
set -euo pipefail
cd "$(dirname "$0")/.."
build="${MIXORAMA_BUILD_DIR:-build}"
werror=OFF
[ "${CI:-}" = "true" ] && werror=ON
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DMIXORAMA_WERROR=$werror >/dev/null
targets=()
for target in "$@"; do
    targets+=(--target "$target")
done
cmake --build "$build" -j"$(nproc)" "${targets[@]}"
