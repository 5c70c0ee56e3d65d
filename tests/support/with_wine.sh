#!/bin/sh
# Runs a cross-compiled Windows test under wine. Absolute paths among the arguments are
# given to the program as the Windows paths wine maps them to (Z:\...).
set -u
program=$1
shift
export WINEPREFIX="${QT_HALVO_WINEPREFIX:-${HOME:-/tmp}/.cache/qt_halvo-wine}"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
mkdir -p "$WINEPREFIX"
for argument in "$@"; do
    case "$argument" in
        /*) argument="Z:$(printf '%s' "$argument" | tr '/' '\\')" ;;
    esac
    set -- "$@" "$argument"
    shift
done
# wine reports its own start-up noise on stderr; the test's output stays on stdout.
exec wine "$program" "$@" 2>"$WINEPREFIX/last-run-stderr.log"
