#!/usr/bin/env bash
# Installs every Debian package Tondrel needs to build, test and run. Safe to run again.
set -euo pipefail

PACKAGES=(
  build-essential cmake ninja-build pkg-config git
  qt6-base-dev qt6-base-dev-tools qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
  qt6-svg-dev qt6-charts-dev qt6-multimedia-dev libgl-dev
  libcurl4-openssl-dev libsqlite3-dev libsqlitecpp-dev libssl-dev
  qtkeychain-qt6-dev libplist-dev libpcre2-dev libspeex-dev
  libcli11-dev libcpp-httplib-dev libbenchmark-dev
  python3 python3-pyftpdlib python3-openssl
  xvfb dbus dbus-x11 curl clang-format
)

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  SUDO="sudo"
fi

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ "${#missing[@]}" -eq 0 ]; then
  echo "install-deps: all packages present"
  exit 0
fi

echo "install-deps: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
