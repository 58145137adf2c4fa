#!/usr/bin/env bash
# Installs the Debian packages the game needs to build, run and test.
# Quiet and quick when everything is already there.
set -euo pipefail

PKGS=(
  build-essential cmake ninja-build pkg-config git
  qt6-base-dev qt6-base-dev-tools qt6-multimedia-dev libqt6svg6-dev qt6-tools-dev
  libgl-dev libgtest-dev libgmock-dev googletest libbenchmark-dev
  libmpg123-dev libpulse-dev
  fonts-dejavu-core
  xvfb xauth imagemagick poppler-utils
  libcups2-dev
  # The real-world tests: a window manager and real input, the two sound
  # servers (PulseAudio, and PipeWire with its session manager on a private
  # session bus) and numpy to listen to their recordings, a print queue that
  # writes PDFs, a German locale for the number checks.
  openbox xdotool x11-utils wmctrl pulseaudio pulseaudio-utils
  pipewire pipewire-bin pipewire-pulse wireplumber dbus python3-numpy
  cups cups-client cups-bsd printer-driver-cups-pdf
  locales python3
)
# Extras asked for by the caller (e.g. clang for the sanitizer build).
PKGS+=("$@")

missing=()
for p in "${PKGS[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
# A locale with a decimal comma, for the checks that numbers ignore it.
if ! locale -a 2>/dev/null | grep -qi '^de_DE\.utf-\?8$'; then
  $SUDO localedef -i de_DE -f UTF-8 de_DE.UTF-8 || echo "de_DE.UTF-8 could not be made; its checks will be skipped"
fi
