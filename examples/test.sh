#!/usr/bin/env bash
# Runs the demo, compares the links on its page with the files that there are, and draws the pictures.
# Arguments: the source folder, the build folder, an empty folder to work in.
set -euo pipefail
. "$(dirname "$0")/test_common.sh"

"$examples/demo.sh" "$build" "$work/demo" >/dev/null
cd "$work/demo"
grep -o 'href="[^"#]*"' index.html | cut -d '"' -f 2 | sort -u >"$work/links"
find data ./*/index.html ./*/*.svg -type f | sed 's,^\./,,' | sort -u | diff "$work/links" - ||
    fail "the links on the page (<) are not the files that there are (>)"
! grep -Eq '(src|href)="(https?:|/)|@import|url\(' index.html ./*/index.html ||
    fail "a page takes what is not beside it"
for picture in ./*/*.svg; do
    rsvg-convert "$picture" -o "$work/picture.png" || fail "$picture cannot be drawn"
done
