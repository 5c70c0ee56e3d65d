# Sourced by with_xvfb.sh and with_two_screens.sh: starts an X server that writes the
# display number it chose once it accepts connections, waits for that, exports DISPLAY,
# and stops the server and removes $work when the script exits.
#   start_x_server NAME LOG SERVER ARGUMENTS...  (the server is given -displayfd 3)

# Runs COMMAND every 50 ms until it succeeds; gives up, with WHAT and the log, when the
# process PID has ended or after TRIES rounds.
#   wait_until WHAT LOG PID TRIES COMMAND...
wait_until() {
    what=$1
    wait_log=$2
    pid=$3
    limit=$4
    shift 4
    tries=0
    until "$@"; do
        if ! kill -0 "$pid" 2>/dev/null || [ $tries -ge "$limit" ]; then
            echo "$what did not start" >&2
            cat "$wait_log" >&2
            exit 1
        fi
        tries=$((tries + 1))
        sleep 0.05
    done
}

start_x_server() {
    name=$1
    log=$2
    shift 2
    "$@" -displayfd 3 3>"$work/display" >"$log" 2>&1 &
    server=$!
    trap 'kill "$server" 2>/dev/null; wait "$server" 2>/dev/null; rm -rf "$work"' EXIT
    trap 'exit 130' INT TERM
    wait_until "$name: the X server" "$log" "$server" 400 test -s "$work/display"
    DISPLAY=":$(head -n 1 "$work/display")"
    export DISPLAY
}

window_manager_runs() {
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'
}

# Starts the window manager named by QT_HALVO_WINDOW_MANAGER (openbox), if any, on the
# server and waits until it manages the screen; it ends with the server.
start_window_manager() {
    [ -n "${QT_HALVO_WINDOW_MANAGER:-}" ] || return 0
    case "$QT_HALVO_WINDOW_MANAGER" in
        openbox) openbox --sm-disable >"$work/window-manager.log" 2>&1 & ;;
        *) echo "x_server.sh: unknown window manager $QT_HALVO_WINDOW_MANAGER" >&2; exit 1 ;;
    esac
    wait_until "x_server.sh: $QT_HALVO_WINDOW_MANAGER" "$work/window-manager.log" $! 200 window_manager_runs
}
