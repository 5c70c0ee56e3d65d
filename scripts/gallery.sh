#!/bin/bash
# Sets up a Debian 12 machine, builds qt_halvo and runs its gallery. Without a display
# it writes a picture of every page instead and says where.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh
qt_halvo_setup build

cmake --preset dev
cmake --build --preset dev --target qt_halvo_gallery

gallery=build/dev/bin/qt_halvo_gallery
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    exec "$gallery" "$@"
fi
echo "No display: writing the gallery's pages as pictures instead."
QT_QPA_PLATFORM=offscreen "$gallery" --screenshots build/gallery-screenshots "$@"
