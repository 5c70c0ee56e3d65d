#!/bin/bash
# Builds and runs every benchmark; arguments go to each (for example -callgrind).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh
qt_halvo_setup build test bench

cmake --preset dev
cmake --build --preset dev
# Those that measure painting run on a private X server (placement on one with two
# screens), the rest off screen.
on_x_server=(bench_collapsing_pane bench_busy_curtains bench_notification_widget bench_popup_message bench_tab_bar bench_tool_bar bench_table_view bench_widget_item_delegate)
on_two_screens=(bench_popup_placement)
for benchmark in build/dev/bin/bench_*; do
    if [[ " ${on_two_screens[*]} " == *" $(basename "$benchmark") "* ]]; then
        tests/support/with_two_screens.sh "$benchmark" "$@"
    elif [[ " ${on_x_server[*]} " == *" $(basename "$benchmark") "* ]]; then
        tests/support/with_xvfb.sh "$benchmark" "$@"
    else
        QT_QPA_PLATFORM=offscreen "$benchmark" "$@"
    fi
done
