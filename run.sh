#!/bin/bash
# Builds Norvane and starts it; installs what is missing first.
#   ./run.sh [IMAGE]
# Where there is no display it plays the tour instead: a scripted session by real key and mouse events, whose pictures
# it writes into ./tour (or into the folder that NORVANE_TOUR_DIR names). The status is then the tour's.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)

if [ $# -gt 1 ] || [ "${1-}" = --help ]; then
    sed -n '2,5s/^# \{0,1\}//p' "$root/run.sh" >&2
    [ $# -le 1 ]
    exit
fi

# absolute NAME: NAME as seen from the caller's folder, so that nothing that begins with a dash reaches a command line
absolute() {
    case $1 in
        /*) printf '%s' "$1" ;;
        *) printf '%s/%s' "$PWD" "$1" ;;
    esac
}

arguments=()
if [ $# -eq 1 ]; then
    arguments=("$(absolute "$1")")
fi

"$root/tools/install-packages.sh" build run

has_x() { [ -n "${DISPLAY:-}" ] && timeout 10 xdotool getdisplaygeometry >/dev/null 2>&1; }
has_wayland() {
    [ -n "${WAYLAND_DISPLAY:-}" ] || return 1
    case $WAYLAND_DISPLAY in
        /*) [ -S "$WAYLAND_DISPLAY" ] ;;
        *) [ -n "${XDG_RUNTIME_DIR:-}" ] && [ -S "$XDG_RUNTIME_DIR/$WAYLAND_DISPLAY" ] ;;
    esac
}

display=none
if has_x; then
    display=x
elif has_wayland; then
    display=wayland
    "$root/tools/install-packages.sh" wayland
fi

cmake -S "$root" --preset release --log-level=WARNING
cmake --build "$root/build/release" --target norvane
norvane=$root/build/release/bin/norvane

if [ "$display" = wayland ]; then
    QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-wayland} exec "$norvane" "${arguments[@]}"
elif [ "$display" = x ]; then
    exec "$norvane" "${arguments[@]}"
fi

folder=$(absolute "${NORVANE_TOUR_DIR:-tour}")
echo "There is no display here: playing the tour instead. Its pictures go to $folder"
status=0
if command -v Xvfb >/dev/null && command -v openbox >/dev/null && command -v xdotool >/dev/null; then
    QT_QPA_PLATFORM=xcb "$root/tools/virtual-display.sh" "$norvane" --tour "$folder" "${arguments[@]}" || status=$?
else
    QT_QPA_PLATFORM=offscreen "$norvane" --tour "$folder" "${arguments[@]}" || status=$?
fi
if [ "$status" -eq 0 ]; then
    echo "The pictures of the tour are in $folder (open index.html)."
else
    echo "The tour ended with status $status. What it wrote is in $folder" >&2
fi
exit "$status"
