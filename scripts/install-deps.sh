#!/usr/bin/env bash
# Installs the Debian packages Mixorama needs to build, test, package and run, when any is missing.
# The last row makes the manual pages (python3) and the Debian package (dpkg-shlibdeps, file) and
# checks them: lintian, the desktop entry, the metainfo, groff and man.
set -euo pipefail
packages=(cmake g++ make pkg-config qt6-base-dev qt6-base-dev-tools libsqlite3-dev sqlite3 libicu-dev
          googletest libgtest-dev libgmock-dev mdbtools mdbtools-dev libgl-dev
          xvfb xauth fonts-dejavu-core fonts-liberation fontconfig poppler-utils
          libbenchmark-dev libtag1-dev libcue-dev
          python3 dpkg-dev file lintian desktop-file-utils appstream groff-base man-db)
missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
echo "Installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq "${missing[@]}" >/dev/null
