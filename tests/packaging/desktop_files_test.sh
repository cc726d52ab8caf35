#!/usr/bin/env bash
# The desktop entry and the AppStream metainfo as the package installs them pass their
# validators; the metainfo's release is the project's version.
#
#   desktop_files_test.sh SOURCE_DIR PACKAGING_BUILD_DIR VERSION
set -euo pipefail
id=org.example.mixorama
desktop-file-validate "$1/packaging/$id.desktop"
appstreamcli validate --no-net --pedantic "$2/$id.metainfo.xml"
grep -q "<release version=\"$3\" date=\"[0-9-]*\"" "$2/$id.metainfo.xml"
grep -qx "Exec=mixorama %f" "$1/packaging/$id.desktop"
