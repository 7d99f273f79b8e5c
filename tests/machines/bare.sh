#!/bin/bash
# Makes a bare Debian 12, with git and nothing else, clones the checkout into it and runs a command there, as root:
# bare.sh COMMAND...
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
. "$here/machine.sh"

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
trap 'exit 130' INT TERM
make_machine "$folder/machine" "$(dpkg --print-architecture)" git,ca-certificates
git clone --quiet --no-hardlinks "$here/../.." "$folder/machine/root/lumivex"
# What the command leaves running ends with it.
isolation=(--pid --fork --kill-child)
# No command here makes a bare machine within a bare machine.
enter_machine "$folder/machine" "" LUMIVEX_BARE=1 CI="${CI-}" /bin/sh -c 'cd /root/lumivex && exec "$@"' sh "$@"
