#!/bin/bash
# Sets up a Debian 12 machine, builds qt_halvo and runs the whole test suite: the
# library's tests on a private X server, then the Win32 units under wine, and the
# 32-bit Win32 build of the units compiled.
#   scripts/test.sh [--sanitize]   (--sanitize also runs the suite under ASan and UBSan)
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/setup.sh
qt_halvo_setup build test win32

cmake --preset dev
cmake --build --preset dev
ctest --preset dev

cmake --preset win32-units
cmake --build --preset win32-units
ctest --preset win32-units
# The 32-bit build only compiles: wine64 here runs the 64-bit tests.
cmake --preset win32-units-i686
cmake --build --preset win32-units-i686

if [ "${1:-}" = "--sanitize" ]; then
    cmake --preset asan
    cmake --build --preset asan
    ctest --preset asan
fi
