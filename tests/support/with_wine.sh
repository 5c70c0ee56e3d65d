#!/bin/sh
# Runs a cross-compiled Windows test under wine. Absolute paths among the arguments are
# given to the program as the Windows paths wine maps them to (Z:\...).
set -u
program=$1
shift
# A prefix of the build's own (the program is in <build>/bin), not one in the home folder.
export WINEPREFIX="${QT_HALVO_WINEPREFIX:-$(dirname "$program")/../wine-prefix}"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="
mkdir -p "$WINEPREFIX" || exit 1
# wine wants it absolute.
WINEPREFIX=$(cd "$WINEPREFIX" && pwd) || exit 1
# Tests run side by side: two wines starting at once on a new prefix race to create it,
# and one fails. So one creates it while the others wait.
if [ ! -e "$WINEPREFIX/.created" ]; then
    (
        flock 9 || exit 1
        if [ ! -e "$WINEPREFIX/.created" ]; then
            wineboot --init >"$WINEPREFIX/wineboot.log" 2>&1 || { cat "$WINEPREFIX/wineboot.log" >&2; exit 1; }
            touch "$WINEPREFIX/.created"
        fi
    ) 9>"$WINEPREFIX/.lock" || exit 1
fi
for argument in "$@"; do
    case "$argument" in
        /*) argument="Z:$(printf '%s' "$argument" | tr '/' '\\')" ;;
    esac
    set -- "$@" "$argument"
    shift
done
# wine reports its own start-up noise on stderr; the test's output stays on stdout.
exec wine "$program" "$@" 2>"$WINEPREFIX/last-run-stderr.log"
