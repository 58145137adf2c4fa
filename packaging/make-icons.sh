#!/usr/bin/env bash
# Renders the hicolor PNG icons from resources/icons/tessuma.svg into
# packaging/icons/<size>x<size>/tessuma.png. The PNGs are committed, so a
# build needs no SVG renderer; run this again after the SVG changes.
# Needs rsvg-convert (Debian package librsvg2-bin).
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"
svg="$here/../resources/icons/tessuma.svg"
command -v rsvg-convert >/dev/null || { echo "make-icons: rsvg-convert is missing (apt-get install librsvg2-bin)" >&2; exit 1; }
for size in 16 22 24 32 48 64 128 256; do
  out="$here/icons/${size}x${size}/tessuma.png"
  mkdir -p "$(dirname "$out")"
  rsvg-convert --width "$size" --height "$size" --keep-aspect-ratio --format png "$svg" > "$out.tmp"
  mv "$out.tmp" "$out"
  echo "$out"
done
