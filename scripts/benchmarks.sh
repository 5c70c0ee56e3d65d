#!/bin/bash
# Builds and runs every benchmark; arguments go to each (for example -callgrind).
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh
qt_halvo_setup build test

cmake --preset dev
cmake --build --preset dev
for benchmark in build/dev/bin/bench_*; do
    QT_QPA_PLATFORM=offscreen "$benchmark" "$@"
done
