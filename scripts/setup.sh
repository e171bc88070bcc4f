#!/usr/bin/env bash
# Installs every Debian package Tarnwell needs to build, run, test and benchmark.
# Safe to run again: it does nothing when everything is already there.
set -euo pipefail

packages=(
  build-essential cmake ninja-build pkg-config git ccache
  qt6-base-dev qt6-base-dev-tools libqt6sql6-sqlite
  qt6-declarative-dev qml6-module-qtquick qml6-module-qtquick-controls
  qml6-module-qtquick-layouts qml6-module-qtquick-window qml6-module-qtquick-templates
  qml6-module-qtqml-workerscript
  qt6-svg-dev qt6-multimedia-dev qt6-tools-dev qt6-tools-dev-tools qt6-l10n-tools
  libsystemd-dev libgl-dev libx11-dev libxss-dev libwayland-dev wayland-protocols libxcb1-dev libxcb-keysyms1-dev libical-dev
  libbenchmark-dev
  radicale python3-caldav qtkeychain-qt6-dev libqt6keychain1 gnome-keyring
  xvfb dbus xdotool sqlite3 libsqlite3-dev at-spi2-core
  sway grim qt6-wayland
  clang libclang-rt-14-dev
  clang-format clang-tidy qt6-declarative-dev-tools qml6-module-qtqml qml6-module-qtqml-models
  desktop-file-utils appstream xdg-utils librsvg2-bin lintian fakeroot dpkg-dev
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
if [ "$(id -u)" -eq 0 ]; then
  sudo_cmd=()
elif command -v sudo >/dev/null 2>&1; then
  sudo_cmd=(sudo)
else
  echo "Missing packages and no sudo available: ${missing[*]}" >&2
  exit 1
fi

export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -q
"${sudo_cmd[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
