#!/usr/bin/env bash
# Copies the game's free fonts, with their licence texts, out of the Debian
# packages into resources/fonts/. Run it once after changing the font choice;
# the copied files are committed, so neither the build nor make_art.sh needs
# the packages afterwards.
#
#   role in the game        font we ship             Debian package
#   "Japan" (display)       Dosis ExtraBold          fonts-dosis
#   "AmerType Md BT"        Roboto Slab Bold         fonts-roboto-slab
#   "Verdana"               DejaVu Sans (+ Bold)     fonts-dejavu-core
#   "Courier New" bold      Liberation Mono Bold     fonts-liberation2
#   "Arial"                 Liberation Sans (+ Bold) fonts-liberation2
set -euo pipefail
cd "$(dirname "$0")/.."
out=resources/fonts
pkgs=(fonts-dosis fonts-roboto-slab fonts-dejavu-core fonts-liberation2)

missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

mkdir -p "$out"
cp /usr/share/fonts/opentype/dosis/Dosis-ExtraBold.otf "$out/"
cp /usr/share/fonts/opentype/roboto/slab/RobotoSlab-Bold.otf "$out/"
cp /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf "$out/"
cp /usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf "$out/"
cp /usr/share/fonts/truetype/liberation2/LiberationMono-Bold.ttf "$out/"
cp /usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf "$out/"
cp /usr/share/fonts/truetype/liberation2/LiberationSans-Bold.ttf "$out/"

cp /usr/share/doc/fonts-dosis/copyright "$out/LICENSE-Dosis.txt"
cp /usr/share/doc/fonts-dejavu-core/copyright "$out/LICENSE-DejaVu.txt"
cp /usr/share/doc/fonts-liberation2/copyright "$out/LICENSE-Liberation.txt"
{ cat /usr/share/doc/fonts-roboto-slab/copyright; echo; echo "-----"; echo;
  cat /usr/share/common-licenses/Apache-2.0; } > "$out/LICENSE-RobotoSlab.txt"
chmod 644 "$out"/*
echo "fonts copied to $out"
