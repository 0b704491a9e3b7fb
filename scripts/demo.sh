#!/usr/bin/env bash
# Builds Tondrel and starts the simulated router. With a display, the tray application runs on a
# demo location and the simulated router keeps ringing it; without one (or with --terminal) the
# command line is shown working against the router.
# Nothing touches your own settings: the demo keeps its files in a temporary folder.
# --keep leaves the simulator running until Ctrl-C (terminal demo).
set -euo pipefail
cd "$(dirname "$0")/.."

KEEP=0
DISPLAY_MODE=0
[ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && DISPLAY_MODE=1
for arg in "$@"; do
  case "$arg" in
    --keep) KEEP=1 ;;
    --terminal) DISPLAY_MODE=0 ;;
    --help|-h) sed -n '2,7p' "$0" | sed 's/^# \{0,1\}//'; exit 0 ;;
    *) echo "demo.sh: unknown option $arg (try --help)" >&2; exit 2 ;;
  esac
done

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
cleanup() {
  [ -n "${TRAY_PID:-}" ] && kill "$TRAY_PID" 2>/dev/null || true
  kill "$SIM_PID" 2>/dev/null || true
  wait 2>/dev/null || true
}
trap cleanup EXIT
TRAY_PID=""

for _ in $(seq 50); do [ -s "$SIM_OUT" ] && break; sleep 0.1; done
PORTS="$(head -n1 "$SIM_OUT")"
echo "== simulated router on 127.0.0.1: $PORTS"
port() { python3 -c "import json,sys; print(json.loads(sys.argv[1])[sys.argv[2]])" "$PORTS" "$1"; }
WEB="$(port web)"; MON="$(port monitor)"; TR="$(port tr064)"

echo "== adding the demo location"
printf 'secret\n' | "$CLI" location add --name "Demo box" --host 127.0.0.1 --password-stdin \
  --web-port "$WEB" --monitor-port "$MON" --tr064-port "$TR" --prefixes 00,49,0,30
# A small address book so that callers have names.
cat >"$DEMO_DIR/contacts.vcf" <<'VCF'
BEGIN:VCARD
VERSION:3.0
UID:demo-anna
N:Schmidt;Anna;;;
FN:Anna Schmidt
TEL;TYPE=CELL:+49 30 1234567
END:VCARD
VCF
"$CLI" settings set AddressBook "$DEMO_DIR/contacts.vcf" >/dev/null
# The demo's made-up numbers are not sent to real web directories.
"$CLI" location set reverseSearch false >/dev/null
sim() { curl -s -o /dev/null -X POST "http://127.0.0.1:$WEB/_sim/monitor/$1" -d "$2"; }
wait_for_monitor_client() {
  for _ in $(seq 100); do
    curl -s "http://127.0.0.1:$WEB/_sim/monitor/clients" | grep -q '"clients":[1-9]' && return 0; sleep 0.1
  done
  return 1
}

if [ "$DISPLAY_MODE" = 1 ]; then
  "$CLI" extensions refresh >/dev/null || true
  echo "== starting the tray application on the demo location (quit it from its menu to end the demo)"
  "$BUILD_DIR/src/gui/tondrel" &
  TRAY_PID=$!
  wait_for_monitor_client || { echo "demo.sh: the tray application did not connect to the router" >&2; exit 1; }
  echo "== the simulated router now rings every few seconds: Anna from the address book, an unknown"
  echo "   caller who hangs up, and an outgoing call from the kitchen telephone"
  # The calls repeat for as long as the tray application runs.
  while kill -0 "$TRAY_PID" 2>/dev/null; do
    sim ring '{"caller":"0301234567","called":"5551234","trunk":"SIP0"}'; sleep 3
    sim connect '{"connID":0,"extension":"11"}'; sleep 5
    sim disconnect '{"connID":0}'; sleep 4
    sim ring '{"caller":"01761234567","called":"5551234","trunk":"SIP0"}'; sleep 4
    sim disconnect '{"connID":0}'; sleep 4
    sim call '{"extension":"1","caller":"5551234","called":"0401112233","trunk":"SIP0"}'; sleep 2
    sim connect '{"connID":0,"extension":"1"}'; sleep 4
    sim disconnect '{"connID":0}'; sleep 8
  done
  exit 0
fi

echo "== locations"
"$CLI" location list
echo "== the demo location"
"$CLI" location show
echo "== the router's start page"
curl -s "http://127.0.0.1:$WEB/" | head -n 5

echo "== logging in, reading the router's state"
"$CLI" login
"$CLI" status
echo "== the router's extensions, merged into the location"
"$CLI" extensions refresh >/dev/null && "$CLI" extensions list
echo "== dialling through the router (click-to-dial), then what the router was asked to do"
"$CLI" dial 0301234567
curl -s "http://127.0.0.1:$WEB/_sim/actions"; echo

echo "== live calls on the call monitor (tondrel-cli monitor)"
"$CLI" monitor --count 10 --timeout 60 &
MON_PID=$!
wait_for_monitor_client || true
# An answered call, a missed call, an outgoing call from a telephone and a withheld caller.
sim ring '{"caller":"0301234567","called":"5551234","trunk":"SIP0"}'; sleep 1
sim connect '{"connID":0,"extension":"11"}'; sleep 2
sim disconnect '{"connID":0}'; sleep 0.5
sim ring '{"caller":"01761234567","called":"5551234","trunk":"SIP0"}'; sleep 2
sim disconnect '{"connID":0}'; sleep 0.5
sim call '{"extension":"1","caller":"5551234","called":"0401112233","trunk":"SIP0"}'; sleep 1
sim connect '{"connID":0,"extension":"1"}'; sleep 1
sim disconnect '{"connID":0}'; sleep 0.5
sim ring '{"caller":"","called":"5551234","trunk":"SIP0"}'; sleep 1
sim disconnect '{"connID":0}'
wait "$MON_PID"

if [ "$KEEP" = 1 ]; then
  echo "== simulator keeps running (Ctrl-C ends it); settings in $DEMO_DIR"
  wait "$SIM_PID"
fi
