#!/usr/bin/env bash
# Replays the planted faults of scripts/faults: each patch is applied to a scratch copy of the
# working tree, which is built and tested; the fault must make at least one test fail. Proves that
# a change to the tests (or the code) leaves no fault uncaught that the suite used to catch.
#
#   scripts/replay-faults.sh [--quick] [PATTERN]
#   scripts/replay-faults.sh --list    each fault, what it breaks and the tests that catch it
#
# PATTERN limits the run to the faults whose file name contains it (a grep -E regex). --quick runs
# only the tests a fault's Caught-by line names; without it every test runs, which is the honest
# check. The copy and its build (the copy's ./build) live in
# ${MIXORAMA_FAULT_DIR:-/tmp/mixorama-faults} and are kept, so later runs build incrementally. The
# real working tree and its build folders are never written.
# Exit status: 0 when every fault is caught, 1 when one is missed, does not apply or does not
# build (a fault must compile: a patch the compiler rejects needs fixing), 2 on a usage error or
# while another run uses the same scratch folder.
set -euo pipefail

usage() {
    sed -n '2,15p' "$0" | sed 's/^# \{0,1\}//'
}

quick=0
pattern=""
for arg in "$@"; do
    case "$arg" in
    --quick) quick=1 ;;
    --list)
        for patch in "$(dirname "$0")"/faults/*.patch; do
            printf '%s: %s\n    caught by: %s\n' "$(basename "$patch" .patch)" \
                "$(head -n 1 "$patch")" "$(sed -n 's/^Caught-by:[[:space:]]*//p' "$patch")"
        done
        exit 0
        ;;
    -h | --help)
        usage
        exit 0
        ;;
    -*)
        usage >&2
        exit 2
        ;;
    *) pattern="$arg" ;;
    esac
done

repo="$(cd "$(dirname "$0")/.." && pwd -P)"
faults_dir="$repo/scripts/faults"
scratch="$(realpath -m "${MIXORAMA_FAULT_DIR:-/tmp/mixorama-faults}")"
copy="$scratch/src"
# The build sits inside the copy as ./build sits in the tree, so that a compiler cache whose
# base_dir holds both (ccache) hands the copy the objects the tree's build made.
build="$copy/build"
logs="$scratch/logs"

# The copy is emptied of whatever the tree does not hold: it must never be the tree itself, nor
# hold it, nor lie inside it.
case "$repo/" in "$scratch/"*)
    echo "MIXORAMA_FAULT_DIR ($scratch) holds the working tree; choose another folder" >&2
    exit 2
    ;;
esac
case "$scratch/" in "$repo/"*)
    echo "MIXORAMA_FAULT_DIR ($scratch) lies inside the working tree; choose another folder" >&2
    exit 2
    ;;
esac

mkdir -p "$scratch"
# Two runs on one copy would test each other's faults.
exec 9>"$scratch/lock"
if ! flock -n 9; then
    echo "Another replay is running in $scratch; wait for it or set MIXORAMA_FAULT_DIR" >&2
    exit 2
fi

# git must not take the scratch folder for part of a repository it happens to sit in.
export GIT_CEILING_DIRECTORIES="$scratch"
jobs="$(nproc)"
# A fault may make a test wait forever (on a FIFO, a lock): that test fails after this many seconds.
timeout="${MIXORAMA_FAULT_TIMEOUT:-300}"

# Makes the copy hold exactly the working tree's files (tracked and untracked, without what git
# ignores). A file is written only when its content differs, and then with the current time:
# restoring an older time would hide from the build a file that changed since it was compiled.
sync_copy() {
    mkdir -p "$copy"
    local wanted="$scratch/wanted.list" present="$scratch/present.list" path
    (cd "$repo" && git ls-files -z --cached --others --exclude-standard) |
        tr '\0' '\n' | grep -Ev '^(build[^/]*|\.git)(/|$)' | sort -u >"$wanted.all"
    : >"$wanted"
    while IFS= read -r path; do
        [ -f "$repo/$path" ] || continue # deleted but not yet staged
        printf '%s\n' "$path" >>"$wanted"
        if ! cmp -s "$repo/$path" "$copy/$path"; then
            mkdir -p "$(dirname "$copy/$path")"
            rm -f "$copy/$path"
            cp -P --preserve=mode "$repo/$path" "$copy/$path"
        fi
    done <"$wanted.all"
    (cd "$copy" && find . -path ./build -prune -o \( -type f -o -type l \) -print) |
        sed 's|^\./||' | sort >"$present"
    comm -23 "$present" "$wanted" | while IFS= read -r path; do
        rm -f "$copy/$path"
    done
    find "$copy" -mindepth 1 -type d -empty -not -path "$build" -not -path "$build/*" -delete
    rm -f "$wanted.all" "$wanted" "$present"
}

build_copy() { # log file
    if [ ! -f "$build/CMakeCache.txt" ]; then
        # The generator and flags of scripts/build.sh: a compiler cache then sees the same
        # commands as for ./build.
        local options=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DMIXORAMA_WERROR=OFF)
        if command -v ccache >/dev/null; then
            options+=(-DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
        fi
        cmake -S "$copy" -B "$build" "${options[@]}" >"$1" 2>&1 || return 1
    fi
    nice cmake --build "$build" -j"$jobs" >>"$1" 2>&1
}

# Runs ctest (with the extra arguments given) and prints the names of the tests that failed.
failed_tests() { # log file, ctest arguments...
    local log="$1" failures="$build/Testing/Temporary/LastTestsFailed.log"
    shift
    rm -f "$failures"
    (cd "$build" && QT_QPA_PLATFORM=offscreen nice ctest -j"$jobs" --timeout "$timeout" \
        --output-on-failure "$@") \
        >"$log" 2>&1 || true
    if grep -q 'No tests were found' "$log"; then
        echo "<none ran>"
        return
    fi
    # A parameterised case's name ends in a comment on its parameter's bytes: dropped.
    [ -f "$failures" ] && sed 's/^[0-9]*://; s/  # GetParam() = .*//' "$failures" | sort -u
    return 0
}

caught_by() { # patch
    sed -n 's/^Caught-by:[[:space:]]*//p' "$1" | head -n 1
}

# One ctest -R regex from a Caught-by line: its names or regexes, separated by spaces or commas.
caught_by_regex() { # patch
    caught_by "$1" | sed 's/[,[:space:]]\+/\n/g' | sed '/^$/d' | paste -sd '|'
}

patches=()
for patch in "$faults_dir"/*.patch; do
    [ -f "$patch" ] || continue
    [ -z "$pattern" ] || basename "$patch" | grep -Eq -- "$pattern" || continue
    patches+=("$patch")
done
if [ ${#patches[@]} -eq 0 ]; then
    echo "No fault in $faults_dir matches '${pattern}'" >&2
    exit 2
fi

mkdir -p "$logs"
echo "Scratch copy: $copy, build: $build, logs: $logs"
sync_copy
echo "Building the unchanged tree ..."
if ! build_copy "$logs/baseline.build.log"; then
    echo "The unchanged tree does not build; see $logs/baseline.build.log" >&2
    exit 1
fi

# Tests that fail without any fault catch nothing: they are left out of every fault's count.
baseline_args=()
if [ $quick -eq 1 ]; then
    regexes=()
    for patch in "${patches[@]}"; do
        regexes+=("$(caught_by_regex "$patch")")
    done
    baseline_args=(-R "$(printf '%s\n' "${regexes[@]}" | sed '/^$/d' | paste -sd '|')")
fi
echo "Running the tests on the unchanged tree ..."
baseline="$(failed_tests "$logs/baseline.test.log" "${baseline_args[@]}")"
if [ -n "$baseline" ]; then
    echo "These tests fail without any fault and count for none: $(echo "$baseline" | paste -sd ' ')"
fi

status=0
for patch in "${patches[@]}"; do
    name="$(basename "$patch" .patch)"
    printf '%s: ' "$name"
    sync_copy
    if ! git -C "$copy" apply --check "$patch" >"$logs/$name.apply.log" 2>&1; then
        echo "does not apply (see $logs/$name.apply.log)"
        status=1
        continue
    fi
    git -C "$copy" apply "$patch"
    if ! build_copy "$logs/$name.build.log"; then
        echo "does not build (see $logs/$name.build.log)"
        git -C "$copy" apply -R "$patch"
        status=1
        continue
    fi
    args=()
    if [ $quick -eq 1 ]; then
        regex="$(caught_by_regex "$patch")"
        if [ -z "$regex" ]; then
            echo "has no Caught-by line"
            git -C "$copy" apply -R "$patch"
            status=1
            continue
        fi
        args=(-R "$regex")
    fi
    failed="$(failed_tests "$logs/$name.test.log" "${args[@]}")"
    git -C "$copy" apply -R "$patch"
    if [ "$failed" = "<none ran>" ]; then
        echo "MISSED: no test matches its Caught-by line ($(caught_by "$patch"))"
        status=1
        continue
    fi
    if [ -n "$baseline" ] && [ -n "$failed" ]; then
        failed="$(comm -23 <(echo "$failed") <(echo "$baseline"))"
    fi
    if [ -z "$failed" ]; then
        echo "MISSED"
        status=1
    else
        echo "caught by $(echo "$failed" | wc -l): $(echo "$failed" | paste -sd ' ')"
    fi
done
# Leave the copy as the tree is, so an interrupted later run starts from a clean copy.
sync_copy
exit $status
