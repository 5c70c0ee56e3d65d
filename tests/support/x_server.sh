# Sourced by with_xvfb.sh and with_two_screens.sh: starts an X server that writes the
# display number it chose once it accepts connections, waits for that, exports DISPLAY,
# and stops the server and removes $work when the script exits.
#   start_x_server NAME LOG SERVER ARGUMENTS...  (the server is given -displayfd 3)
start_x_server() {
    name=$1
    log=$2
    shift 2
    "$@" -displayfd 3 3>"$work/display" >"$log" 2>&1 &
    server=$!
    trap 'kill "$server" 2>/dev/null; wait "$server" 2>/dev/null; rm -rf "$work"' EXIT
    trap 'exit 130' INT TERM
    tries=0
    while [ ! -s "$work/display" ]; do
        if ! kill -0 "$server" 2>/dev/null || [ $tries -ge 400 ]; then
            echo "$name: the X server did not start" >&2
            cat "$log" >&2
            exit 1
        fi
        tries=$((tries + 1))
        sleep 0.05
    done
    DISPLAY=":$(head -n 1 "$work/display")"
    export DISPLAY
}

# Starts the window manager named by QT_HALVO_WINDOW_MANAGER (openbox), if any, on the
# server and waits until it manages the screen; it ends with the server.
start_window_manager() {
    [ -n "${QT_HALVO_WINDOW_MANAGER:-}" ] || return 0
    case "$QT_HALVO_WINDOW_MANAGER" in
        openbox) openbox --sm-disable >"$work/window-manager.log" 2>&1 & ;;
        *) echo "x_server.sh: unknown window manager $QT_HALVO_WINDOW_MANAGER" >&2; exit 1 ;;
    esac
    wm=$!
    tries=0
    until xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; do
        if ! kill -0 "$wm" 2>/dev/null || [ $tries -ge 200 ]; then
            echo "x_server.sh: $QT_HALVO_WINDOW_MANAGER did not start" >&2
            cat "$work/window-manager.log" >&2
            exit 1
        fi
        tries=$((tries + 1))
        sleep 0.05
    done
}
