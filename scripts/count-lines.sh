#!/usr/bin/env bash
# Counts the lines of C++ (.cpp and .h files, blank lines left out) of the tests against the code,
# per folder and in all. The tests (tests/) may be at most 0.35 of the code (src/ and tools/);
# benchmarks count for neither. Exit status 1 when the tests are over that share.
#
#   scripts/count-lines.sh [--quiet]
set -euo pipefail
cd "$(dirname "$0")/.."

lines() { # folders...
    find "$@" -type f \( -name '*.cpp' -o -name '*.h' \) -print0 2>/dev/null |
        xargs -0 -r cat | grep -cv '^[[:space:]]*$' || true
}

if [ "${1:-}" != "--quiet" ]; then
    for folder in src/*/ tools/ tests/*/; do
        printf '%-20s %6d\n' "${folder%/}" "$(lines "$folder")"
    done
fi
code=$(lines src tools)
tests=$(lines tests)
share=$(awk -v t="$tests" -v c="$code" 'BEGIN { printf "%.3f", t / c }')
echo "code $code, tests $tests, share $share (at most 0.35)"
# Compared exactly, not as the rounded share printed above.
[ $((tests * 100)) -le $((code * 35)) ]
