#!/usr/bin/env bash
# Builds Tondrel, starts the simulated router and shows the command line working against it.
# Nothing touches your own settings: the demo keeps its files in a temporary folder.
# --keep leaves the simulator running until Ctrl-C.
set -euo pipefail
cd "$(dirname "$0")/.."

KEEP=0
[ "${1:-}" = "--keep" ] && KEEP=1

scripts/install-deps.sh
BUILD_DIR="${BUILD_DIR:-build}"
cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$BUILD_DIR" -j "$(nproc)"

CLI="$BUILD_DIR/src/cli/tondrel-cli"
SIM="$BUILD_DIR/src/boxsim/tondrel-boxsim"
DEMO_DIR="$(mktemp -d -t tondrel-demo.XXXXXX)"
export TONDREL_CONFIG_DIR="$DEMO_DIR/config" TONDREL_DATA_DIR="$DEMO_DIR/data" TONDREL_SECRETS=file

SIM_OUT="$DEMO_DIR/boxsim.out"
"$SIM" --web-port 0 --monitor-port 0 --tr064-port 0 >"$SIM_OUT" 2>"$DEMO_DIR/boxsim.err" &
SIM_PID=$!
cleanup() { kill "$SIM_PID" 2>/dev/null || true; wait "$SIM_PID" 2>/dev/null || true; }
trap cleanup EXIT

for _ in $(seq 50); do [ -s "$SIM_OUT" ] && break; sleep 0.1; done
PORTS="$(head -n1 "$SIM_OUT")"
echo "== simulated router on 127.0.0.1: $PORTS"
port() { python3 -c "import json,sys; print(json.loads(sys.argv[1])[sys.argv[2]])" "$PORTS" "$1"; }
WEB="$(port web)"; MON="$(port monitor)"; TR="$(port tr064)"

echo "== adding the demo location"
printf 'secret\n' | "$CLI" location add --name "Demo box" --host 127.0.0.1 --password-stdin \
  --web-port "$WEB" --monitor-port "$MON" --tr064-port "$TR" --prefixes 00,49,0,30
echo "== locations"
"$CLI" location list
echo "== the demo location"
"$CLI" location show
echo "== the router's start page"
curl -s "http://127.0.0.1:$WEB/" | head -n 5

if [ "$KEEP" = 1 ]; then
  echo "== simulator keeps running (Ctrl-C ends it); settings in $DEMO_DIR"
  wait "$SIM_PID"
fi
