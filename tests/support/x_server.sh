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
