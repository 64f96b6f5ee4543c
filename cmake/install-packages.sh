#!/usr/bin/env bash
# Installs what debian-packages.txt lists and this machine lacks: install-packages.sh [SECTION...], where the packages
# that stand before all sections are always meant. Does nothing, and needs no network, when all is there.
set -euo pipefail
list=$(dirname "$0")/debian-packages.txt
missing=()
for package in $(awk -v sections=" base $* " '
    BEGIN { section = "base" }
    /^\[/ { section = substr($0, 2, length($0) - 2); next }
    !/^#/ && index(sections, " " section " ")
' "$list"); do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

root=()
[ "$(id -u)" = 0 ] || root=(sudo)
echo "installing: ${missing[*]}"
"${root[@]}" apt-get update -qq
"${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
