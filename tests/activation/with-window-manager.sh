#!/bin/bash
# with-window-manager.sh COMMAND [ARGUMENT...]
# Runs the command on a virtual X screen with a window manager and ends with its status; with 77 if one of the programs that
# this needs is not installed.
set -u

for program in Xvfb openbox xdotool; do
    if ! command -v "$program" >/dev/null; then
        echo "skipped: $program is not installed"
        exit 77
    fi
done

folder=$(mktemp -d)
server=
manager=
finish()
{
    for process in $manager $server; do
        kill "$process" 2>/dev/null
        wait "$process" 2>/dev/null
    done
    rm -rf "$folder"
}
trap finish EXIT
trap 'exit 143' TERM
trap 'exit 130' INT

# Both tell through this pipe that they are ready.
mkfifo "$folder/ready"
exec 3<>"$folder/ready"

Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp >"$folder/server.log" 2>&1 &
server=$!
if ! read -r -t 20 display <&3; then
    echo "Xvfb does not start:"
    cat "$folder/server.log"
    exit 1
fi
export DISPLAY=:$display
# A session of the person who runs this is none of the command's business.
unset WAYLAND_DISPLAY XAUTHORITY SESSION_MANAGER DBUS_SESSION_BUS_ADDRESS

XDG_CONFIG_HOME="$folder" XDG_CACHE_HOME="$folder" XDG_DATA_HOME="$folder" \
    openbox --sm-disable --startup "sh -c 'echo ready >$folder/ready'" >"$folder/manager.log" 2>&1 3>&- &
manager=$!
if ! read -r -t 20 <&3; then
    echo "openbox does not start:"
    cat "$folder/manager.log"
    exit 1
fi
exec 3>&-

# Nothing is drawn by OpenGL, and a driver that is loaded all the same leaks.
QT_XCB_GL_INTEGRATION=none QT_QPA_PLATFORM=xcb "$@"
