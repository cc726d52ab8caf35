#!/usr/bin/env bash
# Builds every program and test with AddressSanitizer and UndefinedBehaviorSanitizer into
# ./build-asan (or $MIXORAMA_ASAN_DIR) and runs the whole suite there. Run on demand before a
# change is called done; CI does not run it. Any sanitizer report fails the run; leaks too.
# Extra arguments go to ctest (e.g. -R test_engine).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
build="${MIXORAMA_ASAN_DIR:-build-asan}"
flags="-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined"
# A compiler cache, where there is one, makes the second run cheap.
launcher=()
if command -v ccache >/dev/null; then
    launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
fi
cmake -S . -B "$build" "${launcher[@]}" -DCMAKE_BUILD_TYPE=Debug -DMIXORAMA_WERROR=OFF \
    -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" \
    -DCMAKE_EXE_LINKER_FLAGS="-fsanitize=address,undefined" \
    -DCMAKE_SHARED_LINKER_FLAGS="-fsanitize=address,undefined" >/dev/null
cmake --build "$build" -j"$(nproc)"
# Leaks that belong to the libraries (fontconfig's caches, Qt's plugin loader) are not ours.
suppressions="$PWD/scripts/lsan.supp"
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=0:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$suppressions:print_suppressions=0"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
cd "$build"
QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$(nproc)" "$@"
