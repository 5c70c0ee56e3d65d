#!/bin/sh
# The single-instance example end to end, on an X server of the caller's: the first start
# listens, a second start wakes it and quits, and the first window is then in front.
set -u
program=$1
work=$(mktemp -d "${TMPDIR:-/tmp}/qt_halvo-single.XXXXXX") || exit 1
trap 'kill "$first" 2>/dev/null; rm -rf "$work"' EXIT
# A temporary folder of its own, so that the lock file is this run's.
export TMPDIR="$work"

# Another window over the first one would be the real case; here the first one is alone.
"$program" --report --quit-after 2 >"$work/first.out" 2>"$work/first.err" &
first=$!
tries=0
until grep -q '^listening' "$work/first.out"; do
    tries=$((tries + 1))
    if [ $tries -ge 200 ] || ! kill -0 "$first" 2>/dev/null; then
        echo "the first instance did not start" >&2
        cat "$work/first.err" >&2
        exit 1
    fi
    sleep 0.05
done
for second in 1 2; do
    timeout 20 "$program" || { echo "start $second did not hand over and quit" >&2; exit 1; }
    tries=0
    until grep -q "^woken $second" "$work/first.out"; do
        tries=$((tries + 1))
        [ $tries -lt 200 ] || { echo "the first instance was not woken" >&2; exit 1; }
        sleep 0.05
    done
done
wait "$first" || { echo "the first instance did not quit" >&2; exit 1; }
cat "$work/first.out"
if grep -q 'in front: no' "$work/first.out"; then
    echo "the window was not brought to the front" >&2
    exit 1
fi
