#!/usr/bin/env bash
# Installs the Debian packages the game needs to build, run and test.
# Quiet and quick when everything is already there.
set -euo pipefail

PKGS=(
  build-essential cmake ninja-build pkg-config git
  qt6-base-dev qt6-base-dev-tools qt6-multimedia-dev libqt6svg6-dev qt6-tools-dev
  libgl-dev libgtest-dev libgmock-dev googletest libbenchmark-dev
  gstreamer1.0-plugins-base gstreamer1.0-plugins-good
  fonts-dejavu-core
  xvfb xauth imagemagick poppler-utils
)
# Extras asked for by the caller (e.g. clang for the sanitizer build).
PKGS+=("$@")

missing=()
for p in "${PKGS[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "Installing: ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
