#!/bin/sh
# Builds the benchmark in Release and runs it. Generated album files are kept in the cache
# folder, so later runs time only the work itself.
#   bench/run.sh [BUILD_DIR] [benchmark options: --sizes 1000,10000 --runs 5 --cache DIR]
set -e
source_dir=$(cd "$(dirname "$0")/.." && pwd)
build_dir=${1:-$source_dir/build-bench}
[ $# -gt 0 ] && shift
cmake -S "$source_dir" -B "$build_dir" -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$build_dir" --target benchmarks -j2
exec "$build_dir/bin/bench_tempsource" --cache "$build_dir/bench-cache" "$@"
