#!/usr/bin/env bash
# mixorama-cli's bash completion offers every command and every option its --help shows (each
# after the command whose entry names it), and file names, odd ones too, where a file goes.
#
#   completion_test.sh SOURCE_DIR PROGRAM_DIR
set -euo pipefail
source_dir=$1
cli=$2/mixorama-cli
# shellcheck source=packaging/mixorama-cli.bash-completion
source "$source_dir/packaging/mixorama-cli.bash-completion"

offers() { # word... : what the completion offers for the last word
    COMP_WORDS=(mixorama-cli "$@")
    COMP_CWORD=$#
    _mixorama_cli
    printf '%s\n' "${COMPREPLY[@]}"
}

missing=0
expect() { # offered word, then the words typed
    local want=$1
    shift
    local offered
    offered=$(offers "$@")
    if ! grep -qxF -- "$want" <<<"$offered"; then
        echo "not offered: '$want' after: mixorama-cli $*"
        missing=$((missing + 1))
    fi
}

words=$(python3 "$source_dir/packaging/helptext.py" words "$cli")
[ -n "$words" ] || { echo "no commands read from $cli --help"; exit 1; }
while read -r command option; do
    expect "$command" ""
    expect "$command" "${command:0:2}"
    [ "$option" = "-" ] || expect "$option" "$command" db.mdb --
done <<<"$words"
expect --music-cache ""
expect tracks-all report db.mdb ""
expect letter report db.mdb tracks-all out.pdf --paper ""

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
touch "$work/Mix & Match's ö.mdb"
expect "$work/Mix & Match's ö.mdb" check "$work/Mix"
expect "$work/Mix & Match's ö.mdb" --music-cache "$work" new "$work/M"
expect "$work" add-tracks db.mdb Trip albums.mdb --music-cache "$work"
[ "$missing" -eq 0 ] || { echo "$missing not offered"; exit 1; }
echo "the completion offers all $(wc -l <<<"$words") commands and options of the help"
