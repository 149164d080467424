#!/bin/bash
# Builds QtCore and QtConcurrent with the thread sanitizer, from the distribution's own source package, into
# .cache/qt-tsan. Without them the sanitizer cannot see how the toolkit's locks order things and reports races that are
# none. Once built they are kept; remove the folder to build anew.
#   tools/build-tsan-qt.sh [JOBS]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

jobs=${1:-$(nproc)}
cache=$PWD/.cache/qt-tsan
version=$(dpkg-query -W -f='${source:Version}' qtbase5-dev)
if [ "$(cat "$cache/version" 2>/dev/null)" = "$version" ]; then
    echo "The toolkit core for the thread sanitizer is there: $cache ($version)"
    exit 0
fi
work=$PWD/.cache/qt-tsan-build
mkdir -p "$work/apt/lists/partial" "$work/apt/archives/partial"

# source packages come from where the binary ones do; the machine's own lists stay as they are
suite=$(. /etc/os-release && echo "$VERSION_CODENAME")
key=/usr/share/keyrings/debian-archive-keyring.gpg
cat >"$work/apt/sources.list" <<END
deb-src [signed-by=$key] http://deb.debian.org/debian $suite main
deb-src [signed-by=$key] http://deb.debian.org/debian $suite-updates main
deb-src [signed-by=$key] http://deb.debian.org/debian-security $suite-security main
END
apt=(apt-get -q
    -o "Dir::Etc::SourceList=$work/apt/sources.list" -o Dir::Etc::SourceParts=/dev/null
    -o "Dir::State::Lists=$work/apt/lists" -o "Dir::Cache::Archives=$work/apt/archives"
    -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache= -o APT::Sandbox::User=root)

source=$work/source
if [ ! -e "$source/.unpacked" ]; then
    "${apt[@]}" update
    rm -rf -- "$work/package" "$source"
    mkdir -p "$work/package"
    if ! (cd "$work/package" && "${apt[@]}" source "qtbase-opensource-src=$version"); then
        echo "build-tsan-qt: the source package of version $version could not be fetched" >&2
        exit 1
    fi
    mv "$work"/package/qtbase-opensource-src-*/ "$source"
    touch "$source/.unpacked"
fi

build=$work/build
if [ ! -e "$build/.configured" ]; then
    # a configuration that failed remembers what it did not find
    rm -rf -- "$build"
    mkdir -p "$build"
    cd "$build"
    # only what the two libraries need; nothing that changes the layout which the distribution's other libraries expect
    "$source/configure" -opensource -confirm-license -release -prefix "$cache" \
        -no-gui -no-widgets -no-dbus -no-openssl \
        -system-zlib -system-pcre -system-doubleconversion -glib -icu \
        -no-feature-relocatable -no-mimetype-database -no-use-gold-linker -no-reduce-relocations \
        -sanitize thread -no-pch -nomake examples -nomake tests
    touch .configured
fi
cd "$build"
make -j"$jobs" qmake_all
make -j"$jobs" -C src sub-corelib sub-concurrent

rm -rf -- "$cache"
mkdir -p "$cache/lib"
cp -a lib/libQt5Core.so.5* lib/libQt5Concurrent.so.5* "$cache/lib/"
echo "$version" >"$cache/version"
rm -rf -- "$work"
echo "The toolkit core for the thread sanitizer is built: $cache ($version)"
