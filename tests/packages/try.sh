#!/bin/sh
# Installs Debian packages, uses each as its user would, and removes them again: try.sh FOLDER VERSION, as root
set -eu
packages=$(cd "$1" && pwd)
version=$2
here=$(cd "$(dirname "$0")" && pwd)
names="liblumivex1 liblumivex-dev lumivex python3-lumivex"
if dpkg-query -W -f='${Status}\n' $names 2>/dev/null | grep -q 'ok installed'; then
    echo "try.sh: some of $names are installed already; remove them first" >&2
    exit 1
fi

work=$(mktemp -d)
remove() {
    cd /
    rm -rf "$work"
    apt-get purge -qq -y $names >/dev/null
}
trap remove EXIT
chmod 755 "$work"
DEBIAN_FRONTEND=noninteractive apt-get install -qq -y --no-install-recommends "$packages"/*.deb >/dev/null

expect() { # WANTED COMMAND...
    wanted=$1
    shift
    got=$("$@")
    [ "$got" = "$wanted" ] || { echo "try.sh: $* gives '$got', not '$wanted'" >&2; exit 1; }
}
cd "$work"
expect "lumivex $version" lumivex --version
lumivex scene -o scene.png
lumivex invert scene.png -o inverted.png --quiet
sh "$here/../consumers/pkg-config/build.sh" "$here/../consumers" .
cmake -S "$here/../consumers/cmake" -B cmake -G Ninja -DWANTED_VERSION="$version" >/dev/null
cmake --build cmake >/dev/null
for program in ./c_host ./cxx_host cmake/c_host cmake/cxx_host; do
    expect "$version: 255 155 0 7" "$program"
done
# The same operation on the same picture, through Python.
expect "$version True" /usr/bin/python3 -c "
import lumivex, numpy
picture = lumivex.pictures.read('scene.png')
same = numpy.array_equal(lumivex.invert(picture), lumivex.pictures.read('inverted.png'))
print(lumivex.__version__, same)"

remove
trap - EXIT
left=$(find /usr /var/lib/dpkg/info -xdev -path '*lumivex*' -not -path '/usr/local/*' -not -path "$packages/*" 2>/dev/null || true)
[ -z "$left" ] || { echo "try.sh: left behind: $left" >&2; exit 1; }
echo "The packages install, work and leave nothing behind."
