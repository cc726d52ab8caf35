#!/usr/bin/env bash
# The Debian package made from this build: lintian finds no error in it, and unpacked into a
# scratch root that nobody may write, its programs run with the user's files in a scratch home
# (no MIXORAMA_HOME): they find their resources in share/ and the Access reader in libexec/.
#
#   package_test.sh BUILD_DIR
set -euo pipefail
build=$(cd "$1" && pwd)
work=$(mktemp -d "${TMPDIR:-/tmp}/mixorama-package.XXXXXX")
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

started=$SECONDS
cpack --config "$build/CPackConfig.cmake" -B "$work/out" >"$work/cpack.log" 2>&1 ||
    { cat "$work/cpack.log"; fail "cpack"; }
debs=("$work"/out/mixorama_*.deb)
deb=${debs[0]}
echo "$(basename "$deb"): $(stat -c %s "$deb") bytes, made in $((SECONDS - started)) s"
lintian --fail-on error "$deb" || fail "lintian reports errors"

root=$work/root
dpkg -x "$deb" "$root"
chmod -R a-w "$root"
# Root may write a read-only folder: what the tree holds is compared at the end as well.
listing() { find "$root" -printf '%p %s %T@\n' | sort; }
unpacked=$(listing)
unset MIXORAMA_HOME MIXORAMA_MDBREAD MIXORAMA_MUSIC_CACHE
export HOME=$work/home XDG_DATA_HOME=$work/home/data XDG_CACHE_HOME=$work/home/cache \
    XDG_CONFIG_HOME=$work/home/config QT_QPA_PLATFORM=offscreen
mkdir -p "$HOME"
cli=$root/usr/bin/mixorama-cli

db="$HOME/Mix & Match's ö.mdb"
"$cli" new "$db" || fail "new"
"$cli" add-compilation "$db" "Road Trip" --format MD --length 74 || fail "add-compilation"
"$cli" make-albums "$HOME/albums.mdb" --albums 3 --seed 1 || fail "make-albums"
"$cli" tempsource "$db" "$HOME/albums.mdb" || fail "tempsource (the reader in libexec/)"
"$cli" add-tracks "$db" "Road Trip" "$HOME/albums.mdb" --first 2 || fail "add-tracks"
"$cli" report "$db" tracks "Road Trip" "$HOME/road trip.pdf" || fail "report"
grep -q "Road Trip" <<<"$(pdftotext "$HOME/road trip.pdf" -)" || fail "the report does not show Road Trip"

# The desktop program's first start without a file makes the demo in the user's data folder.
grep -q -- "--screenshots" <<<"$("$root/usr/bin/mixorama" --help)" || fail "mixorama --help"
demo=$XDG_DATA_HOME/mixorama/demo.mdb
"$root/usr/bin/mixorama" >"$work/gui.log" 2>&1 &
gui=$!
for _ in $(seq 600); do
    [ -f "$demo" ] || ! kill -0 "$gui" 2>/dev/null && break
    sleep 0.1
done
kill -0 "$gui" 2>/dev/null || { cat "$work/gui.log"; fail "mixorama ended at its first start"; }
kill "$gui"
wait "$gui" || true
[ -f "$demo" ] || { cat "$work/gui.log"; fail "no demo in $XDG_DATA_HOME/mixorama"; }
[ "$("$cli" check "$demo")" = ok ] || fail "the demo does not check ok"
[ "$(listing)" = "$unpacked" ] || fail "the programs wrote into their installed folders"
echo "package checked in $((SECONDS - started)) s"
