#!/bin/sh
# Runs a command on a private X server with two screens side by side: the left one
# 1280x1024 (primary), the right one 1024x768, top-aligned at x = 1280. Xvfb places all
# its screens at the origin, so this is Xorg with the dummy video driver, whose outputs
# xrandr can place like monitors. QT_HALVO_SCREEN_SCALE_FACTORS ("1;2") gives the screens
# Qt scale factors of their own.
set -u

work=$(mktemp -d "${TMPDIR:-/tmp}/qt_halvo-xorg.XXXXXX") || exit 1
cat >"$work/xorg.conf" <<'CONF'
Section "ServerFlags"
    Option "AutoAddDevices" "false"
    Option "AutoAddGPU" "false"
    Option "DontVTSwitch" "true"
EndSection
Section "Device"
    Identifier "card"
    Driver "dummy"
    VideoRam 64000
EndSection
Section "Monitor"
    Identifier "monitor"
    HorizSync 5.0 - 1000.0
    VertRefresh 5.0 - 200.0
EndSection
Section "Screen"
    Identifier "screen"
    Device "card"
    Monitor "monitor"
    DefaultDepth 24
    SubSection "Display"
        Depth 24
        Virtual 2304 1024
    EndSubSection
EndSection
CONF

. "$(dirname "$0")/x_server.sh"
start_x_server with_two_screens.sh "$work/xorg.out" Xorg -config "$work/xorg.conf" -configdir "$work" \
    -logfile "$work/xorg.log" -noreset -nolisten tcp -novtswitch -sharevts
xrandr --addmode DUMMY1 1024x768 &&
    xrandr --fb 2304x1024 --output DUMMY0 --primary --mode 1280x1024 --pos 0x0 \
        --output DUMMY1 --mode 1024x768 --pos 1280x0 || {
    echo "with_two_screens.sh: could not place the two screens" >&2
    exit 1
}
# The server publishes the new layout a moment later.
two_monitors() { xrandr --listmonitors | grep -q '^Monitors: 2'; }
wait_until "with_two_screens.sh: the second screen" "$work/xorg.log" "$server" 100 two_monitors
start_window_manager
QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR="$work" QT_SCREEN_SCALE_FACTORS="${QT_HALVO_SCREEN_SCALE_FACTORS:-}" "$@"
