#!/usr/bin/env bash
# Writes docs/screenshots/*.png: the tray menu, the call monitor window with a ringing and a
# connected call, the new-call window, the call list, the online monitor, the answering machine,
# the phone book, the settings and the setup assistant, against the simulated router and a local
# FTP storage, under Xvfb.
set -euo pipefail
cd "$(dirname "$0")/.."

BUILD_DIR="${BUILD_DIR:-build}"
if [ ! -f "$BUILD_DIR/build.ninja" ]; then
  cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
fi
cmake --build "$BUILD_DIR" -j2 --target tondrel-screenshots tondrel-boxsim

OUT="${1:-docs/screenshots}"
mkdir -p "$OUT"
# A session bus of its own so no desktop notification server is asked; the C locale shows the
# English texts.
export LC_ALL=C.UTF-8 LANG=C.UTF-8 QT_QPA_PLATFORM=xcb
dbus-run-session -- xvfb-run -a -s "-screen 0 1280x800x24" \
  "$BUILD_DIR/tests/tondrel-screenshots" "$OUT"
