#!/usr/bin/env bash
# Installs what is missing, builds Mixorama and starts it. Without arguments it opens a demo
# compilation database (made once in the program folder's data/); with a file, it opens that.
set -euo pipefail
cd "$(dirname "$0")"
scripts/install-deps.sh
scripts/build.sh mixorama mixorama-cli make-demo  # only what it runs; ./test.sh builds the rest
build="${MIXORAMA_BUILD_DIR:-build}"
bin="$build/bin"
if [ $# -eq 0 ]; then
    mkdir -p "$bin/data"
    demo="$bin/data/demo.mdb"
    if [ ! -f "$demo" ]; then
        echo "Making the demo databases in $bin/data ..."
        rm -f "$bin/data/demo-albums.mdb"
        "$bin/make-demo" "$demo" "$bin/data/demo-albums.mdb"
    fi
    set -- "$demo"
fi
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
    echo "No display is available here (DISPLAY is not set), so Mixorama's window cannot open."
    echo "Run ./run.sh from a desktop session, or under a virtual display: xvfb-run ./run.sh"
    echo "The command-line tool works without a display: $bin/mixorama-cli --help"
    exit 1
fi
exec "$bin/mixorama" "$@"
