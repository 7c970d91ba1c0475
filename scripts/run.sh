#!/usr/bin/env bash
# Builds Ketrel and starts it.
#
#   ./scripts/run.sh           Ketrel beside a simulated car: ketrel-sim runs on a pseudo-terminal
#                              and Ketrel opens with a demo settings profile of its own that
#                              points at it. Press Connect. Closing Ketrel stops the simulator.
#   ./scripts/run.sh --converter br3
#                              The same demo on the simulated count-byte converter (dorvane,
#                              the text converter, is the default).
#   ./scripts/run.sh --converter kesh|tactrix
#                              The demo on a plain K-line cable: the car runs inside Ketrel on
#                              the port sim:FILE (a pseudo-terminal can't carry the break of
#                              the wake-up), so no ketrel-sim is started.
#   ./scripts/run.sh --real    Ketrel with your own settings, for a real link device.
#
# The demo profile lives under $XDG_RUNTIME_DIR (or ~/.cache)/ketrel-demo, so your own
# configuration (~/.config/Ketrel/Ketrel.ini) is never read or written by the demo.
set -euo pipefail
cd "$(dirname "$0")/.."

mode=demo
converter=dorvane
while [ $# -gt 0 ]; do
    case "$1" in
        --real) mode=real; shift ;;
        --converter)
            [ $# -ge 2 ] || { echo "--converter wants dorvane, br3, kesh or tactrix" >&2; exit 2; }
            converter=$2; shift 2 ;;
        *) break ;;
    esac
done
case "$converter" in
    dorvane) hardware="DORVANE PROTOCOL CONVERTER"; vehicle=data/sim/idle_then_drive.vehicle ;;
    br3) hardware="BR3 PROTOCOL CONVERTER"; vehicle=data/sim/vpw.vehicle ;;
    kesh) hardware="KESH PROTOCOL CONVERTER"; vehicle=data/sim/iso9141.vehicle ;;
    tactrix) hardware="TACTRIX CABLE"; vehicle=data/sim/iso14230.vehicle ;;
    *) echo "unknown converter \"$converter\": dorvane, br3, kesh or tactrix" >&2; exit 2 ;;
esac

bash scripts/bootstrap.sh
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null

if [ "$mode" = real ]; then
    cmake --build build -j "$jobs" --target ketrel
    exec build/bin/ketrel "$@"
fi

cmake --build build -j "$jobs" --target ketrel ketrel-sim

# Sets Key=Value in [Section] of an INI file, adding the section or the key where missing and
# keeping every other line as it is.
ini_set() {
    local file=$1 section=$2 key=$3 value=$4 tmp
    tmp=$(mktemp "$file.XXXXXX")
    awk -v section="$section" -v key="$key" -v value="$value" '
        function flush() { if (inside && !done) { print key "=" value; done = 1 } }
        /^\[.*\]$/ {
            flush()
            inside = (substr($0, 2, length($0) - 2) == section)
            if (inside) seen = 1
            print; next
        }
        inside && index($0, key "=") == 1 { if (!done) print key "=" value; done = 1; next }
        { print }
        END {
            flush()
            if (!seen) print "[" section "]\n" key "=" value
        }' "$file" >"$tmp"
    mv "$tmp" "$file"
}

base=${XDG_RUNTIME_DIR:-}
if [ -z "$base" ] || [ ! -w "$base" ]; then
    base=${XDG_CACHE_HOME:-$HOME/.cache}
fi
demo="$base/ketrel-demo"
link="$demo/ketrel-car"
config="$demo/config"
mkdir -p "$config/Ketrel"
chmod 700 "$demo"

# The demo profile: the chosen converter on port 1, and port 1 is the simulator's terminal.
ini="$config/Ketrel/Ketrel.ini"
touch "$ini"
ini_set "$ini" Settings OBDIIHardware "$hardware"
ini_set "$ini" Settings ConnectPort 1

# The K-line cables: the car runs inside Ketrel behind a sim: port.
if [ "$converter" = kesh ] || [ "$converter" = tactrix ]; then
    ini_set "$ini" Ports 1 "sim:$PWD/$vehicle"
    echo "Simulated car inside Ketrel on port sim:$vehicle. Press Connect in Ketrel." >&2
    XDG_CONFIG_HOME="$config" exec build/bin/ketrel "$@"
fi
ini_set "$ini" Ports 1 "$link"

# A link left by a simulator that did not end cleanly is stale.
if [ -L "$link" ]; then
    rm -f "$link"
fi
build/bin/ketrel-sim --converter "$converter" --vehicle "$vehicle" \
    --link "$link" >"$demo/ketrel-sim.log" 2>&1 &
sim=$!
stop_sim() {
    kill "$sim" 2>/dev/null || true
    wait "$sim" 2>/dev/null || true
}
trap stop_sim EXIT

for _ in $(seq 1 50); do
    [ -e "$link" ] && break
    if ! kill -0 "$sim" 2>/dev/null; then
        echo "ketrel-sim did not start:" >&2
        cat "$demo/ketrel-sim.log" >&2
        exit 1
    fi
    sleep 0.1
done
if [ ! -e "$link" ]; then
    echo "ketrel-sim made no link at $link; see $demo/ketrel-sim.log" >&2
    exit 1
fi

echo "Simulated car on $(readlink "$link") ($link). Press Connect in Ketrel." >&2
XDG_CONFIG_HOME="$config" build/bin/ketrel "$@"
