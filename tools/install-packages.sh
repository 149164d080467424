#!/bin/bash
# Installs the Debian packages that the named groups need and that are not there yet.
#   tools/install-packages.sh GROUP...     groups: build run wayland test print lint measure package thread fuzz
# NORVANE_SKIP_PACKAGES=1 leaves the machine as it is, for systems whose packages have other names.
set -euo pipefail

group_packages() {
    case $1 in
        # compiler, build tools and the headers of what is linked
        build) echo g++ lld cmake ninja-build ccache python3 qtbase5-dev qtbase5-dev-tools libqt5svg5-dev \
            qttools5-dev qttools5-dev-tools libopencv-core-dev libopencv-imgproc-dev libopencv-photo-dev \
            libbenchmark-dev ;;
        # image formats and translations for the editor, and a virtual display with a window manager for machines
        # without a screen
        run) echo qt5-image-formats-plugins kimageformat-plugins qttranslations5-l10n fonts-dejavu-core xvfb xauth \
            openbox xdotool ;;
        # only for a desktop that offers Wayland and no X
        wayland) echo qtwayland5 ;;
        test) echo desktop-file-utils git ;;
        # a print server for the tests, and what measures the documents that reach it
        print) echo cups-daemon cups-client poppler-utils ;;
        lint) echo git clang-format clang-tidy clazy ;;
        # what counts instructions
        measure) echo valgrind ;;
        # what the toolkit's core is built from for the thread sanitizer
        thread) echo ca-certificates dpkg-dev make perl pkg-config xz-utils zlib1g-dev libpcre2-dev \
            libdouble-conversion-dev libglib2.0-dev libicu-dev ;;
        # what tells the dependencies of packages
        package) echo dpkg-dev file ;;
        # a compiler that counts what an input reaches, with its runtime
        fuzz) echo clang libclang-rt-dev ;;
        *) echo "install-packages: unknown group '$1'" >&2; return 2 ;;
    esac
}

is_installed() {
    [ "$(dpkg-query -W -f='${db:Status-Status}\n' "$1" 2>/dev/null | head -n 1)" = installed ]
}

# missing_packages PACKAGE...: those of the list that are not installed, one a line
missing_packages() {
    local package
    for package in "$@"; do
        is_installed "$package" || echo "$package"
    done
}

give_up() {
    echo "install-packages: $1" >&2
    echo "install-packages: missing packages: ${*:2}" >&2
    exit 1
}

if [ "${NORVANE_SKIP_PACKAGES:-0}" = 1 ]; then
    exit 0
fi
[ $# -gt 0 ] || { echo "usage: tools/install-packages.sh GROUP..." >&2; exit 2; }

wanted=()
for group in "$@"; do
    list=$(group_packages "$group")
    read -r -a packages <<<"$list"
    wanted+=("${packages[@]}")
done

if ! command -v dpkg-query >/dev/null; then
    give_up "this machine has no dpkg. Install the counterparts of these packages, then set NORVANE_SKIP_PACKAGES=1." \
        "${wanted[@]}"
fi

mapfile -t missing < <(missing_packages "${wanted[@]}" | sort -u)
if [ ${#missing[@]} -gt 0 ]; then
    as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || give_up "not root, and there is no sudo to install with." "${missing[@]}"
        as_root=(sudo)
    fi
    command -v apt-get >/dev/null || give_up "there is no apt-get to install with." "${missing[@]}"

    echo "Installing: ${missing[*]}"
    apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
    "${apt[@]}" update || give_up "the package lists could not be fetched." "${missing[@]}"
    "${apt[@]}" install -y --no-install-recommends "${missing[@]}" ||
        give_up "apt-get could not install them." "${missing[@]}"
    mapfile -t missing < <(missing_packages "${missing[@]}")
    [ ${#missing[@]} -eq 0 ] || give_up "apt-get ended well, yet some are not installed." "${missing[@]}"
fi

if [[ " ${wanted[*]} " == *" cmake "* ]]; then
    version=$(cmake --version | sed -n '1s/^cmake version //p')
    if [ "$(printf '3.25\n%s\n' "$version" | sort -V | head -n 1)" != 3.25 ]; then
        echo "install-packages: CMake 3.25 or later is needed, this machine has $version." >&2
        exit 1
    fi
fi
