#!/usr/bin/env bash
# Builds the wheel as `pip install .` does, installs it into an empty virtual environment that sees the packages of the
# system, and runs the Python of README.md there.
# Arguments: the source folder, a folder to work in, the interpreter, the C++ compiler.
set -euo pipefail
source=$1 work=$2 python=$3 compiler=$4
rm -rf "$work" && mkdir -p "$work/source"
cp -r "$source"/{CMakeLists.txt,README.md,setup.py,pyproject.toml,cmake,docs,src,python} "$work/source"

# Not optimised, since that takes most of the time of a build and nothing is measured here.
SKBUILD_CONFIGURE_OPTIONS="-DCMAKE_CXX_COMPILER=$compiler -DCMAKE_CXX_FLAGS_RELEASE=-O0" \
    "$python" -m pip wheel --quiet --no-build-isolation --no-deps --wheel-dir "$work" "$work/source" >"$work/log" 2>&1 ||
    { tail -n 40 "$work/log"; exit 1; }
"$python" -m venv --system-site-packages "$work/venv"
"$work/venv/bin/pip" install --quiet --no-index --no-deps "$work"/sectrix-*.whl
rm -rf "$work/source/_skbuild"

cd "$source/examples/data"
awk '$0 == "```pycon" { inside = 1; next } /^```/ { inside = 0 } inside' "$source/README.md" >"$work/readme.txt"
env -u PYTHONPATH "$work/venv/bin/python" -c '
import doctest, sys
import sectrix
assert sectrix.__file__.startswith(sys.prefix), sectrix.__file__
failed, tried = doctest.testfile(sys.argv[1], module_relative=False)
print(f"{tried} lines of README.md tried, {failed} failed")
sys.exit(failed > 0 or tried < 5)
' "$work/readme.txt"
