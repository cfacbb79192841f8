#!/usr/bin/env bash
# Installs what building, running and testing need and what is missing. Debian 12 or later; asks for no password
# when run as root, else uses sudo. Further packages may be named.
set -euo pipefail

packages=(
  g++ cmake ninja-build ccache pkg-config
  qt6-base-dev qt6-declarative-dev qt6-webengine-dev qt6-svg-dev libxcb1-dev libgl1-mesa-dev qt6-wayland libasound2-dev
  libpng-dev libexpat1-dev libasio-dev libcli11-dev
  nlohmann-json3-dev libpugixml-dev libsqlite3-dev libgtest-dev libgmock-dev libbenchmark-dev libdeflate-dev
  libboost-dev libgeos-dev libnanoflann-dev
  dbus-daemon xvfb xauth openbox x11-utils xdotool imagemagick fonts-dejavu-core
  "$@"
)
# The map page's libraries come through npm. A Node.js that is there already is taken, wherever it came from.
command -v node >/dev/null || packages+=(nodejs)
command -v npm >/dev/null || packages+=(npm)

missing=()
for package in "${packages[@]}"; do
  [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

echo "installing: ${missing[*]}"
as_root() { if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi; }
as_root apt-get update -q
as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
