#!/usr/bin/env bash
# A guest in the host's process: hygiene_test.sh FOLDER looks at the built libraries in it. Each exports its own names
# alone, calls nothing that ends the process or writes to its streams, and runs no code when it is loaded but what the
# compiler always puts there and the making of the three static objects.
set -euo pipefail
cd "$1"
fail() {
    echo "$1:"
    echo "$2"
    exit 1
}
for name in ORL_Json GvsWrap MVQ ORL_Sectrix; do
    library=lib$name.so
    defined=$(nm -DC --defined-only "$library")
    foreign=$(grep -vE '^[0-9a-f]+ . ((typeinfo|typeinfo name|vtable) for )?(qel|gvs|mvq)::' <<<"$defined" || true)
    [ -z "$foreign" ] || fail "$library exports" "$foreign"
    undefined=$(nm -D --undefined-only "$library")
    forbidden=$(grep -E \
        ' (abort|_?exit|_Exit|quick_exit|__assert_fail|_ZSt9terminatev|v?f?printf|f?puts|f?putc|putchar|fwrite|v?dprintf|writev?|perror|syslog|raise|std(out|err)|_ZSt[45]w?(cout|cerr|clog)|__(v?f?printf)_chk)(@|$)' <<<"$undefined" || true)
    [ -z "$forbidden" ] || fail "$library calls" "$forbidden"
    allowed=8 # bytes, for one function
    [ $name != ORL_Sectrix ] || allowed=16
    size=$(readelf -dW "$library" | sed -nE 's/.*\(INIT_ARRAYSZ\) *([0-9]+).*/\1/p')
    [ "${size:-0}" -le $allowed ] || fail "$library runs at load time" "$(nm "$library" | grep _GLOBAL__sub_I_)"
done
[ "$(nm libORL_Sectrix.so | grep -oE ' _GLOBAL__sub_I_\w+')" = ' _GLOBAL__sub_I_static_objects' ] ||
    fail "not the static objects" "$(nm libORL_Sectrix.so | grep _GLOBAL__sub_I_)"
