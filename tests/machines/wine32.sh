#!/bin/bash
# 32-bit wine in a system of its own, because Debian's does not install beside a 64-bit one, as root.
#     wine32.sh make               makes the system, unless it stands
#     wine32.sh run PROGRAM ...    runs a Windows program of the checkout in it, in this folder
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/machine.sh"
machine=${XDG_CACHE_HOME:-$HOME/.cache}/lumivex/wine32

case $1 in
make)
    [ ! -e "$machine" ] || exit 0
    mkdir -p "$(dirname "$machine")"
    rm -rf "$machine.new"
    make_machine "$machine.new" i386 wine,wine32
    # Wine makes its own drives and registry on first use, once; its server writes the registry when it ends.
    enter_machine "$machine.new" "" WINEDEBUG=-all /bin/sh -c 'wineboot --init && wineserver -w'
    mv "$machine.new" "$machine"
    ;;
run)
    shift
    enter_machine "$machine" "$(cd "$here/../.." && pwd)" WINEDEBUG=-all ${LUMIVEX_LEVEL+"LUMIVEX_LEVEL=$LUMIVEX_LEVEL"} \
        /bin/sh -c 'cd "$1" && shift && exec wine "$@"' sh "$PWD" "$@"
    ;;
esac
