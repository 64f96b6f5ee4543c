#!/usr/bin/env bash
# A guest in the host's process: hygiene_test.sh LIBRARY... looks at the built libraries. Each exports its own names
# alone, calls nothing that ends the process or writes to its streams, and runs no code when it is loaded but what the
# compiler always puts there and the making of the three static objects.
set -euo pipefail
fail() {
    echo "$1:"
    echo "$2"
    exit 1
}
for library; do
    defined=$(nm -DC --defined-only "$library")
    foreign=$(grep -vE '^[0-9a-f]+ . ((typeinfo|typeinfo name|vtable) for )?(qel|gvs|mvq)::' <<<"$defined" || true)
    [ -z "$foreign" ] || fail "$library exports" "$foreign"
    undefined=$(nm -D --undefined-only "$library")
    forbidden=$(grep -E \
        ' (abort|_?exit|_Exit|quick_exit|__assert_fail|_ZSt9terminatev|v?f?printf|f?puts|f?putc|putchar|fwrite|v?dprintf|writev?|perror|syslog|raise|std(out|err)|_ZSt[45]w?(cout|cerr|clog)|__(v?f?printf)_chk)(@|$)' <<<"$undefined" || true)
    [ -z "$forbidden" ] || fail "$library calls" "$forbidden"
    allowed=8 # bytes, for one function
    expected=
    case $library in */libORL_Sectrix.so*) allowed=16 expected=' _GLOBAL__sub_I_static_objects' ;; esac
    size=$(readelf -dW "$library" | sed -nE 's/.*\(INIT_ARRAYSZ\) *([0-9]+).*/\1/p')
    [ "${size:-0}" -le $allowed ] || fail "$library runs at load time" "$(nm "$library" | grep _GLOBAL__sub_I_)"
    [ "$(nm "$library" | grep -oE ' _GLOBAL__sub_I_\w+')" = "$expected" ] ||
        fail "$library makes other static objects" "$(nm "$library" | grep _GLOBAL__sub_I_)"
done
