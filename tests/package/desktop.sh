# shellcheck shell=bash
# A desktop in memory for one script: X server, session bus, window manager. To be sourced after report.sh.

desktop_processes=()

# start_server LOG COMMAND... starts something that runs until the desktop ends. Its home is the desktop's own.
start_server() {
    local log=$1
    shift
    HOME=$desktop_folder/home "$@" >"$desktop_folder/$log" 2>&1 &
    desktop_processes+=($!)
}

# start_desktop FOLDER returns with DISPLAY and DBUS_SESSION_BUS_ADDRESS set. What the desktop itself writes is in
# FOLDER.
start_desktop() {
    desktop_folder=$1
    mkdir -p "$desktop_folder/home"
    unset WAYLAND_DISPLAY XDG_CONFIG_HOME XDG_CURRENT_DESKTOP XDG_DATA_HOME XDG_CACHE_HOME XDG_STATE_HOME JOURNAL_STREAM
    export XDG_RUNTIME_DIR=$desktop_folder/run
    mkdir -m 700 "$XDG_RUNTIME_DIR"

    local number=$desktop_folder/display-number
    start_server server.log Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$number"
    wait_for 20 test -s "$number" || fail "the X server does not start" "$(<"$desktop_folder/server.log")"
    DISPLAY=:$(<"$number")
    export DISPLAY

    export DBUS_SESSION_BUS_ADDRESS=unix:path=$XDG_RUNTIME_DIR/bus
    # What the bus starts is the user's and not the desktop's.
    start_server bus.log env HOME="$HOME" \
        dbus-daemon --session --nofork --nopidfile --address="$DBUS_SESSION_BUS_ADDRESS"
    wait_for 20 bus_answers || fail "the session bus does not start" "$(<"$desktop_folder/bus.log")"

    start_server manager.log openbox
    wait_for 20 has_window_manager || fail "the window manager does not start" "$(<"$desktop_folder/manager.log")"
}

# call_bus METHOD ARGUMENT... asks the session bus itself.
call_bus() {
    local method=$1
    shift
    dbus-send --session --print-reply --dest=org.freedesktop.DBus /org/freedesktop/DBus \
        "org.freedesktop.DBus.$method" "$@"
}

bus_answers() {
    call_bus GetId >/dev/null 2>&1
}

has_window_manager() {
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep 'window id' >/dev/null
}

# stop_desktop ends everything in the reverse order of its start.
stop_desktop() {
    local index
    for ((index = ${#desktop_processes[@]} - 1; index >= 0; --index)); do
        kill "${desktop_processes[index]}" 2>/dev/null || true
        wait "${desktop_processes[index]}" 2>/dev/null || true
    done
    desktop_processes=()
}
