#!/usr/bin/env bash
# Takes the game's free fonts, with their licence texts, out of the Debian
# packages into resources/fonts/. DejaVu Sans and Roboto Slab are cut down to
# the characters the game and its art use (Latin letters for typed names, the
# arrows and signs of the help pages), which their licences allow under the
# same names; characters outside the subsets still show, from the desktop's
# own fonts. Dosis and Liberation reserve their names for the unmodified
# fonts, so they are shipped whole. Run it once after changing the font choice; the files made are
# committed, so neither the build nor make_art.sh needs the packages
# afterwards.
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
pkgs=(fonts-dosis fonts-roboto-slab fonts-dejavu-core fonts-liberation2 python3-fonttools)

missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

mkdir -p "$out"
# Basic Latin, Latin-1, Latin Extended-A, general punctuation, the euro and
# trade marks, arrows, the vertical ellipsis and the replacement character.
unicodes="U+0020-007E,U+00A0-017F,U+2010-2027,U+2030-203A,U+20AC,U+2122,U+2190-2193,U+22EE,U+FFFD"
subset() {  # subset SOURCE
  /usr/bin/python3 -m fontTools.subset "$1" --unicodes="$unicodes" --layout-features='kern,liga' \
    --no-hinting --desubroutinize --name-IDs='*' --name-languages='*' --output-file="$out/$(basename "$1")"
}
subset /usr/share/fonts/opentype/roboto/slab/RobotoSlab-Bold.otf
subset /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
subset /usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf
cp /usr/share/fonts/opentype/dosis/Dosis-ExtraBold.otf "$out/"
cp /usr/share/fonts/truetype/liberation2/LiberationMono-Bold.ttf "$out/"
cp /usr/share/fonts/truetype/liberation2/LiberationSans-Regular.ttf "$out/"
cp /usr/share/fonts/truetype/liberation2/LiberationSans-Bold.ttf "$out/"

cp /usr/share/doc/fonts-dosis/copyright "$out/LICENSE-Dosis.txt"
{ cat /usr/share/doc/fonts-dejavu-core/copyright; echo; echo "-----"; echo;
  echo "The DejaVu Sans files here are subsets of the originals, made by art/fonts.sh."; } > "$out/LICENSE-DejaVu.txt"
cp /usr/share/doc/fonts-liberation2/copyright "$out/LICENSE-Liberation.txt"
{ cat /usr/share/doc/fonts-roboto-slab/copyright; echo; echo "-----"; echo;
  cat /usr/share/common-licenses/Apache-2.0; echo; echo "-----"; echo;
  echo "The Roboto Slab file here is a subset of the original, made by art/fonts.sh."; } > "$out/LICENSE-RobotoSlab.txt"
chmod 644 "$out"/*
echo "fonts subset into $out"
