#!/usr/bin/env bash
# Runs the demo, compares the links on its page with the files that there are, and looks at these from outside.
# Arguments: the source folder, the build folder, a folder to work in, which is emptied.
set -euo pipefail
source=$1 build=$2 work=$3
examples=$source/examples
rm -rf "$work" && mkdir -p "$work"
fail() { echo "FAILED: $1"; exit 1; }

"$examples/demo.sh" "$build" "$work/demo" >/dev/null
cd "$work/demo"
grep -o 'href="[^"#]*"' index.html | cut -d '"' -f 2 | sort -u >"$work/links"
find . -mindepth 2 -type f ! -name commands.txt | sed 's,^\./,,' | sort -u | diff "$work/links" - ||
    fail "the links on the page (<) are not the files that there are (>)"
! grep -Eq '(src|href)="(https?:|/)|@import|url\(' index.html || fail "the page takes what is not beside it"
for picture in ./*/*.svg; do
    rsvg-convert "$picture" -o "$work/picture.png" || fail "$picture cannot be drawn"
done
for solid in solids/*.stl; do
    [ "$(admesh "$solid" | grep -cE '(Degenerate facets|Edges fixed|Backwards edges|Normals fixed) +: +0$')" = 4 ] ||
        fail "$solid is not a closed solid"
done

# Sample data is what its scripts write, to the last byte, and what the schemas take, as is a document that is written.
mkdir "$work/samples"
for script in "$examples"/data/make_*.py; do
    python3 "$script" "$work/samples"
done
for file in "$work"/samples/*; do
    cmp "$file" "$examples/data/${file##*/}" || fail "no script writes the committed ${file##*/}"
done
"$build/command/sectrix" blend "$examples"/data/haunched-box-{pier,midspan}.json --ratio 0.5 -o "$work/half.json" >/dev/null 2>&1
python3 "$source/tests/schemas_test.py" "$source" "$work/half.json" || fail "documents against the schemas"
