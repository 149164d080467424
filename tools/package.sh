#!/bin/bash
# Makes the Debian packages of the library and of the editor from the release build.
#   tools/package.sh [DIR]            into DIR, build/packages by default
#   tools/package.sh --check [DIR]    and unpacks them beside one another, starts the editor from there and lets
#                                     examples/consumer find the library
# Build first: cmake --preset release && cmake --build build/release
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

check=no
if [ "${1-}" = --check ]; then
    check=yes
    shift
fi
if [ $# -gt 1 ] || [ "${1-}" = --help ]; then
    sed -n '2,6s/^# \{0,1\}//p' tools/package.sh >&2
    [ $# -le 1 ]
    exit
fi
folder=$(realpath -m -- "${1:-build/packages}")
if [ ! -f build/release/CPackConfig.cmake ]; then
    echo "package: there is no release build. Build first: cmake --preset release && cmake --build build/release" >&2
    exit 1
fi
if ! command -v dpkg-shlibdeps >/dev/null; then
    echo "package: there is no dpkg-shlibdeps. Install it: tools/install-packages.sh package" >&2
    exit 1
fi

rm -rf -- "$folder"
mkdir -p -- "$folder"
(cd build/release && cpack --config CPackConfig.cmake -B "$folder" >"$folder/log") || { cat "$folder/log" >&2; exit 1; }
rm -rf -- "$folder/_CPack_Packages" "$folder/log"
ls -l "$folder"

[ "$check" = yes ] || exit 0
root=$folder/root
for package in "$folder"/*.deb; do
    dpkg-deb --info "$package" | grep -E '^ (Package|Version|Depends):'
    dpkg-deb --extract "$package" "$root"
done
tests/examples/installed.sh "$root/usr" "$folder/consumer"
rm -rf -- "$root" "$folder/consumer"
