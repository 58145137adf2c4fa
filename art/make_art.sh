#!/usr/bin/env bash
# Re-makes every picture of the game into resources/ (see art/README.md).
#   art/make_art.sh                 all art, then rewrites resources/art.qrc and checks it
#   art/make_art.sh buttons help    only some groups (background frames help buttons controls icon)
#   art/make_art.sh check           only the check
#   art/make_art.sh --mockup        also compose /tmp/mockup*.png from the result
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"

pkgs=(python3 python3-cairo python3-gi python3-gi-cairo gir1.2-pango-1.0 python3-pil python3-numpy)
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  SUDO=""
  if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
  echo "Installing: ${missing[*]}"
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi

# The generators see only the fonts that the game ships (resources/fonts).
export FONTCONFIG_FILE="$here/fonts.conf"
export PYTHONDONTWRITEBYTECODE=1
mockup=0
args=()
for a in "$@"; do
  if [ "$a" = "--mockup" ]; then mockup=1; else args+=("$a"); fi
done
/usr/bin/python3 "$here/make_art.py" "${args[@]+"${args[@]}"}"
if [ "$mockup" = 1 ]; then
  /usr/bin/python3 "$here/mockup.py"
fi
