#!/bin/bash
# Runs a command on a virtual X display of its own, with a window manager, since without one no window is ever active.
#   tools/virtual-display.sh COMMAND [ARGUMENT...]
# Its status is the command's; 125 when the display could not be had.
# shellcheck disable=SC2317  # the functions are called by trap and wait_for
set -uo pipefail

size=${NORVANE_VIRTUAL_SCREEN:-1600x1000x24}
folder=$(mktemp -d) || exit 125
server=
manager=
command=

clean_up() {
    [ -z "$command" ] || kill "$command" 2>/dev/null
    [ -z "$manager" ] || kill "$manager" 2>/dev/null
    [ -z "$server" ] || kill "$server" 2>/dev/null
    wait 2>/dev/null
    rm -rf -- "$folder"
}
trap clean_up EXIT
trap 'exit 130' INT
trap 'exit 143' TERM

# wait_for CONDITION...: polls for ten seconds
wait_for() {
    local tries
    for ((tries = 0; tries < 200; ++tries)); do
        "$@" && return 0
        sleep 0.05
    done
    return 1
}

has_number() { [ -s "$folder/display" ] || ! kill -0 "$server" 2>/dev/null; }
# a window manager that has taken over the screen tells how many desktops there are
manager_rules() { xdotool get_num_desktops >/dev/null 2>&1 || ! kill -0 "$manager" 2>/dev/null; }

Xvfb -displayfd 3 -screen 0 "$size" -nolisten tcp 3>"$folder/display" >"$folder/server.log" 2>&1 &
server=$!
wait_for has_number
if ! [ -s "$folder/display" ]; then
    echo "virtual-display: Xvfb did not start:" >&2
    cat "$folder/server.log" >&2
    exit 125
fi
DISPLAY=:$(<"$folder/display")
export DISPLAY
unset WAYLAND_DISPLAY
# a login gives programs a folder for their sockets; without one they say so
export XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$folder}

openbox --sm-disable >"$folder/manager.log" 2>&1 &
manager=$!
if ! wait_for manager_rules || ! kill -0 "$manager" 2>/dev/null; then
    echo "virtual-display: openbox did not start:" >&2
    cat "$folder/manager.log" >&2
    exit 125
fi

"$@" <&0 &
command=$!
wait "$command"
status=$?
command=
exit "$status"
