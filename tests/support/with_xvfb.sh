#!/bin/sh
# Runs a command on a private Xvfb server of its own, so that tests see real enter and
# leave events, focus, cursors and QApplication::widgetAt, independent of the
# developer's display and of other tests running at the same time.
#
# The display can be chosen: QT_HALVO_XVFB_SCREEN (WIDTHxHEIGHTxDEPTH, 1280x1024x24),
# QT_HALVO_XVFB_DPI (its physical DPI), QT_HALVO_XVFB_XFT_DPI (the Xft.dpi resource that
# desktops set for their scaling) and QT_HALVO_XVFB_WORKAREA ("x, y, width, height", the
# work area a window manager would publish). QT_HALVO_WINDOW_MANAGER=openbox runs a
# window manager on it.
set -u

work=$(mktemp -d "${TMPDIR:-/tmp}/qt_halvo-xvfb.XXXXXX") || exit 1
. "$(dirname "$0")/x_server.sh"
start_x_server with_xvfb.sh "$work/xvfb.log" Xvfb -screen 0 "${QT_HALVO_XVFB_SCREEN:-1280x1024x24}" \
    ${QT_HALVO_XVFB_DPI:+-dpi "$QT_HALVO_XVFB_DPI"} -nolisten tcp -noreset
if [ -n "${QT_HALVO_XVFB_XFT_DPI:-}" ]; then
    printf 'Xft.dpi: %s\n' "$QT_HALVO_XVFB_XFT_DPI" | xrdb -merge || exit 1
fi
if [ -n "${QT_HALVO_XVFB_WORKAREA:-}" ]; then
    xprop -root -f _NET_WORKAREA 32c -set _NET_WORKAREA "$QT_HALVO_XVFB_WORKAREA" || exit 1
fi
start_window_manager
QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR="$work" "$@"
