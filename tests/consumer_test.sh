#!/usr/bin/env bash
# Builds and runs the host in tests/consumer/ in every way in which a host comes by the library.
# Arguments: the source folder, the build folder, a folder to work in, the compiler, the version of the library.
set -euo pipefail
source=$1 build=$2 work=$3
export CXX=$4
version=$5
fail() { echo "FAILED: $1"; exit 1; }
expected="no such table: main.MESHES
$version: 2 convex loops"
expected_of_tools="1:66 index-out-of-range
1:57 edges-cross"
warnings=(-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
rm -rf "$work" && mkdir -p "$work"

expect_output() { # way, what is printed, the program with its arguments
    local output
    output=$("${@:3}") || fail "$1: the program fails"
    [ "$output" = "$2" ] || fail "$1: the program prints $output"
}

build_host() { # way, CMake options
    echo "== $1"
    cmake -S "$source/tests/consumer" -B "$work/$1" -G Ninja -Werror=dev \
        -DCMAKE_CXX_FLAGS="${warnings[*]}" "${@:2}" >"$work/$1.log" 2>&1
    ! grep -q Warning "$work/$1.log" || fail "$1: CMake warns"
    cmake --build "$work/$1" -- -j2 >>"$work/$1.log" || { cat "$work/$1.log"; fail "$1: does not build"; }
    [ "$1" = host-interfaces ] || expect_output "$1" "$expected" "$work/$1/consumer"
    # With the host's interfaces the tools are only built: they ask a document tree more than the library promises.
    [[ $1 =~ ^(package|host-interfaces)$ ]] || expect_output "$1" "$expected_of_tools" "$work/$1/consumer_of_tools"
}

# An installed copy works wherever it is moved to.
cmake --install "$build" --prefix "$work/here" >/dev/null
mkdir "$work/moved" && mv "$work/here" "$work/moved/there"
copy=$work/moved/there
for page in README.md docs/sections.md docs/images/box-girder.svg docs/schemas/section-document.schema.json; do
    [ -f "$copy/share/doc/ORL_Sectrix/$page" ] || fail "$page is not installed"
done
expect_output "the program" "sectrix $version" "$copy/bin/sectrix" --version
for page in sectrix sectrix-check; do
    grep -q "^$page " "$copy/share/man/man1/$page.1" || fail "the manual page of $page"
done
build_host package -DSECTRIX_AS=package -DCMAKE_PREFIX_PATH="$copy"
build_host package-with-tools -DSECTRIX_AS=package -DSECTRIX_COMPONENTS=Tools -DCMAKE_PREFIX_PATH="$copy"
cmake -S "$source/tests/consumer" -B "$work/unknown" -DSECTRIX_AS=package -DSECTRIX_COMPONENTS=Toolz \
    -DCMAKE_PREFIX_PATH="$copy" >"$work/unknown.log" 2>&1 && fail "a component that is not there is found"
grep -q 'There is no component Toolz' "$work/unknown.log" || fail "nothing is said of a component that is not there"

echo "== Debian packages"
cpack --config "$build/CPackConfig.cmake" -B "$work/packages" >"$work/cpack.log" 2>&1 || { cat "$work/cpack.log"; fail "cpack"; }
for package in "$work"/packages/*.deb; do dpkg-deb -x "$package" "$work/debian"; done
expect_output "the packaged program" "sectrix $version" "$work/debian/usr/bin/sectrix" --version
build_host debian -DSECTRIX_AS=package -DSECTRIX_COMPONENTS=Tools -DCMAKE_PREFIX_PATH="$work/debian/usr"
python=$(sed -n 's/^Python_EXECUTABLE:[A-Z]*=//p' "$build/CMakeCache.txt")
if compgen -G "$work/packages/python3-sectrix_*.deb" >/dev/null; then
    dpkg-deb -f "$work"/packages/python3-sectrix_*.deb Depends | grep -qE 'python3 \(>= 3\.[0-9]+\)' || fail "Depends of python3-sectrix"
    PYTHONPATH=$work/debian/usr/lib/python3/dist-packages "$python" -c 'import sectrix; sectrix.loads("{}").cut()' ||
        fail "python3-sectrix"
fi

echo "== README"
mkdir "$work/readme"
block() { awk -v fence="\`\`\`$1" '$0 == fence { inside = 1; next } /^```/ { inside = 0 } inside' "$source/README.md"; }
block cpp >"$work/readme/main.cpp"
block cmake >"$work/readme/CMakeLists.txt"
cmake -S "$work/readme" -B "$work/readme/build" -DCMAKE_PREFIX_PATH="$copy" >/dev/null
cmake --build "$work/readme/build" >/dev/null
"$work/readme/build/host" >"$work/readme/printed" || fail "the README's host fails"
diff "$work/readme/printed" <(block text) || fail "the README's host does not print what stands there"

echo "== pkg-config"
PKG_CONFIG_PATH=$(dirname "$(find "$copy" -name ORL_Sectrix.pc)")
export PKG_CONFIG_PATH
pkg_config_host() { # package, source file, what it prints, options of pkg-config
    read -ra flags <<<"$(pkg-config --cflags --libs "${@:4}" "$1")"
    "$CXX" -std=c++17 "${warnings[@]}" "$source/tests/consumer/$2" "${flags[@]}" -o "$work/$1_consumer"
    LD_LIBRARY_PATH=$(pkg-config --variable=libdir "$1") expect_output "pkg-config $1" "$3" "$work/$1_consumer"
    [ "$(pkg-config --modversion "$1")" = "$version" ] || fail "version in $1.pc"
}
pkg_config_host ORL_Sectrix main.cpp "$expected"
pkg_config_host ORL_SectrixTools tools.cpp "$expected_of_tools"

echo "== static libraries"
cmake -S "$source" -B "$work/static-libraries" -G Ninja -DBUILD_SHARED_LIBS=OFF -DCMAKE_BUILD_TYPE=Debug \
    -DORL_SECTRIX_TESTS=OFF -DORL_SECTRIX_EXAMPLES=OFF -DORL_SECTRIX_COMMAND=OFF >"$work/static-libraries.log"
cmake --build "$work/static-libraries" -- -j2 >>"$work/static-libraries.log"
cmake --install "$work/static-libraries" --prefix "$work/static-copy" >/dev/null
[ -z "$(find "$work/static-copy" -name '*.so*')" ] || fail "a library is shared"
build_host static -DSECTRIX_AS=package -DSECTRIX_COMPONENTS=Tools -DCMAKE_PREFIX_PATH="$work/static-copy"
PKG_CONFIG_PATH=$(dirname "$(find "$work/static-copy" -name ORL_Sectrix.pc)")
pkg_config_host ORL_Sectrix main.cpp "$expected" --static
pkg_config_host ORL_SectrixTools tools.cpp "$expected_of_tools" --static

echo "== headers, each by itself"
find "$copy/include" -name '*.h' | while read -r header; do
    "$CXX" -std=c++17 "${warnings[@]}" -I"$copy/include" -fsyntax-only -x c++ - <<<"#include \"$header\"" ||
        fail "$header does not compile by itself"
done

# A part of a host's own build: without tests, and without flags for the host's files.
build_host subdirectory -DSECTRIX_AS=subdirectory -DSECTRIX_SOURCE="$source"
grep -q 'command.*/consumer/main.cpp' "$work/subdirectory/compile_commands.json" || fail "no command for main.cpp"
! grep 'command.*/consumer/main.cpp' "$work/subdirectory/compile_commands.json" | grep -q 'ffp-contract\|fvisibility' ||
    fail "flags of ours reach the host's files"
! grep -q 'sectrix_tests\|read_and_cut' "$work/subdirectory/build.ninja" || fail "tests or examples in a host's build"

# The host's own document tree and database layer, which end the program when the library breaks a promise, give the
# same answers as the bundled ones.
build_host host-interfaces -DSECTRIX_AS=subdirectory-host-interfaces -DSECTRIX_SOURCE="$source"
"$source/fuzz/make_seeds.py" "$source/tests/data" "$work/inputs"
mkdir "$work/inputs/pulls"
for cases in "$source"/tests/data/records/d*.sql; do sqlite3 "$work/inputs/pulls/$(basename "$cases" .sql).db" <"$cases"; done
compared=0
for input in "$source"/examples/data/*.json "$source"/fuzz/corpus/{section_document,extrusion}/* "$work"/inputs/*/*; do
    for way in subdirectory host-interfaces; do
        "$work/$way/answers" "$input" >"$work/$way.answers" || fail "$way: no answers for $input"
    done
    # Of what only one of the two parsers takes for JSON there is nothing to compare.
    [[ $input != *.db && $(head -n 1 "$work/subdirectory.answers") != $(head -n 1 "$work/host-interfaces.answers") ]] ||
        { cmp "$work"/{subdirectory,host-interfaces}.answers || fail "answers for $input"; compared=$((compared + 1)); }
done
echo "$compared inputs compared"
[ "$compared" -ge 80 ] || fail "there are more inputs to compare"
