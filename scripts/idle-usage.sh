#!/usr/bin/env bash
# Idle CPU time and resident memory of the tray application on the simulated router: start-up,
# then 30 s without events. Run under a display, e.g.
#   dbus-run-session -- xvfb-run -a scripts/idle-usage.sh
set -euo pipefail
B="$(cd "$(dirname "$0")/.." && pwd)/${BUILD_DIR:-build}"
D="$(mktemp -d -t tondrel-idle.XXXXXX)"; mkdir -p "$D/cfg" "$D/data"
$B/src/boxsim/tondrel-boxsim --web-port 0 --monitor-port 0 --tr064-port 0 > $D/sim.out 2> $D/sim.err &
SIM=$!
trap 'kill $SIM 2>/dev/null || true; [ -n "${APP:-}" ] && kill $APP 2>/dev/null || true' EXIT
for _ in $(seq 50); do [ -s $D/sim.out ] && break; sleep 0.1; done
P="$(head -n1 $D/sim.out)"
port() { python3 -c "import json,sys; print(json.loads(sys.argv[1])[sys.argv[2]])" "$P" "$1"; }
python3 - "$(port web)" "$(port tr064)" "$(port monitor)" "$D" <<'PY'
import json, sys
web, tr, mon = map(int, sys.argv[1:4])
loc = {"Name": "Home", "Host": "127.0.0.1", "Profile": 1, "CallMonitor": True, "CallMonitorPort": mon,
       "WebPort": web, "TR064Port": tr, "showUserNC": True,
       "Extensions": [{"Intern": "1", "Title": "Kitchen", "Typ": "FON", "Show": True}]}
json.dump({"Locations": {"L1": loc}, "CurrentLocation": "L1", "MENU_DOCK_STATE": 0}, open(sys.argv[4] + "/cfg/settings.json", "w"))
json.dump({"Tondrel.Profile.L1": {"Fritz!Box Pass": "secret"}}, open(sys.argv[4] + "/cfg/secrets.json", "w"))
PY
chmod 600 $D/cfg/secrets.json
export TONDREL_CONFIG_DIR=$D/cfg TONDREL_DATA_DIR=$D/data TONDREL_SECRETS=file QT_QPA_PLATFORM=xcb
$B/src/gui/tondrel > $D/app.log 2>&1 &
APP=$!
sleep 8   # start-up, login, status check, call monitor connected
tick() { awk '{print $14+$15}' /proc/$APP/stat; }
t0=$(tick); sleep 30; t1=$(tick)
echo "clients: $(curl -s http://127.0.0.1:$(port web)/_sim/monitor/clients)"
echo "CPU ticks in 30 s idle: $((t1-t0)) (CLK_TCK $(getconf CLK_TCK))"
grep -E "VmRSS|VmHWM|Threads" /proc/$APP/status
