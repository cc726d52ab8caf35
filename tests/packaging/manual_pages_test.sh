#!/usr/bin/env bash
# The manual pages made from the programs' --help: groff and man (as lintian calls it) format
# them without a warning, and each shows every command and option of its program's help.
#
#   manual_pages_test.sh SOURCE_DIR PROGRAM_DIR PAGE_DIR
set -euo pipefail
source_dir=$1
programs=$2
pages=$3
failed=0
for program in mixorama mixorama-cli; do
    page=$pages/$program.1
    warnings=$(groff -man -Tutf8 -ww -z "$page" 2>&1)
    warnings+=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
    if [ -n "$warnings" ]; then
        printf '%s: %s\n' "$page" "$warnings"
        failed=1
    fi
    shown=$(sed 's/\\-/-/g' "$page")  # the source: what man shows may be hyphenated
    while read -r word option; do
        for text in "$word" "$option"; do
            if [ "$text" != "-" ] && ! grep -qF -- "$text" <<<"$shown"; then
                echo "$page does not show $text"
                failed=1
            fi
        done
    done <<<"$(python3 "$source_dir/packaging/helptext.py" words "$programs/$program")"
done
[ "$failed" -eq 0 ] && echo "both manual pages format cleanly and show their program's help"
