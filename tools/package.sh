#!/bin/bash
# Makes the Debian packages of the library and of the editor from the release build.
#   tools/package.sh [DIR]            into DIR, build/packages by default
#   tools/package.sh --check [DIR]    and unpacks them into one folder, starts the editor from there, and lets
#                                     examples/consumer find the library there
# Build first: cmake --preset release && cmake --build build/release
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)

check=no
if [ "${1-}" = --check ]; then
    check=yes
    shift
fi
case $#${1-} in
    0 | 1[!-]*) folder=$(realpath -m -- "${1:-$root/build/packages}") ;;
    *)
        sed -n '2,6s/^# \{0,1\}//p' "$root/tools/package.sh" >&2
        [ "${1-}" = --help ]
        exit
        ;;
esac
build=$root/build/release
if [ ! -f "$build/CPackConfig.cmake" ]; then
    echo "package: there is no release build. Build first: cmake --preset release && cmake --build build/release" >&2
    exit 1
fi
for program in dpkg-shlibdeps file; do
    if ! command -v "$program" >/dev/null; then
        echo "package: there is no $program. Install it: tools/install-packages.sh package" >&2
        exit 1
    fi
done

work=$(mktemp -d)
trap 'rm -rf -- "$work"' EXIT
(cd "$build" && cpack --config CPackConfig.cmake -B "$work" >"$work/log") || { cat "$work/log" >&2; exit 1; }
mkdir -p -- "$folder"
for package in "$work"/*.deb; do
    cp -- "$package" "$folder"
    echo "$folder/${package##*/}"
done

[ "$check" = yes ] || exit 0
for package in "$work"/*.deb; do
    dpkg-deb --info "$package" | grep -E '^ (Package|Version|Depends):'
    dpkg-deb --extract "$package" "$work/root"
done
"$root/tests/examples/installed.sh" "$work/root/usr" "$work/consumer"
