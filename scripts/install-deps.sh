#!/usr/bin/env bash
# Installs what a fresh Debian 12 lacks to build, test and play Korvath.
# Safe to run again: it only calls apt-get when a package is missing.
set -euo pipefail

PACKAGES=(
  build-essential cmake pkg-config clang ccache
  libsdl2-dev libsdl2-mixer-dev libfluidsynth-dev
  libfreetype-dev libfontconfig-dev fontconfig
  fonts-liberation2 fonts-dejavu-core
  timgm6mb-soundfont
  libgl-dev libgl1-mesa-dri
  libcairo2-dev libpng-dev
  libyaml-cpp-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  xvfb xauth
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
SUDO=""
if [ "$(id -u)" -ne 0 ]; then
  SUDO="sudo"
fi
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -qq
$SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
