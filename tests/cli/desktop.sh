#!/usr/bin/env bash
# The desktop files: the .desktop entry, the saved-game MIME type and the
# AppStream metainfo (as configured into the build folder) agree with each
# other and pass the freedesktop tools. A missing tool skips its check with
# a message; the agreement checks always run.
# Called as: bash desktop.sh <tessuma-cli> <source dir>
set -u
cli="$1"
src="$2"
build="$(cd "$(dirname "$cli")" && pwd)"
fail=0
check() {  # check DESCRIPTION COMMAND...
    local what="$1"; shift
    if "$@"; then :; else echo "FAIL: $what"; fail=1; fi
}
skip() { echo "SKIP: $*"; }
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT

desktop="$src/packaging/tessuma.desktop"
mimexml="$src/packaging/tessuma-mime.xml"
metainfo="$build/packaging/io.tessuma.Sudoku.metainfo.xml"
value() { sed -n "s/^$1=//p" "$desktop"; }

# --- The .desktop entry -------------------------------------------------------
if command -v desktop-file-validate >/dev/null; then
    desktop-file-validate "$desktop" >"$tmp/out" 2>&1
    check "desktop-file-validate passes: $(cat "$tmp/out")" test $? -eq 0 -a ! -s "$tmp/out"
else
    skip "desktop-file-validate is not installed (Debian package desktop-file-utils)"
fi
check "Exec starts the game with the file" test "$(value Exec)" = "tessuma %f"
check "a game in the Game and LogicGame menus" test "$(value Categories)" = "Game;LogicGame;"
check "the icon is the hicolor icon" test "$(value Icon)" = "tessuma"
check "a scalable icon exists" test -s "$src/resources/icons/tessuma.svg"
for size in 16 22 24 32 48 64 128 256; do
    png="$src/packaging/icons/${size}x${size}/tessuma.png"
    # Width and height are the big-endian words at bytes 16 and 20 of a PNG.
    dims="$(od -An -tx1 -j16 -N8 "$png" 2>/dev/null | tr -d ' \n')"
    check "icon ${size}x${size} is a PNG of that size" \
        test "$dims" = "$(printf '%08x%08x' "$size" "$size")"
done

# --- The MIME type ------------------------------------------------------------
mimetype="$(sed -n 's/.*<mime-type type="\([^"]*\)".*/\1/p' "$mimexml")"
check "one MIME type is defined" test "$mimetype" = "application/x-tessuma-game"
check "the desktop entry opens that type" test "$(value MimeType)" = "$mimetype;"
if command -v update-mime-database >/dev/null; then
    mkdir -p "$tmp/mime/packages"
    cp "$mimexml" "$tmp/mime/packages/tessuma.xml"
    XDG_DATA_HOME="$tmp" update-mime-database "$tmp/mime" >"$tmp/out" 2>&1
    check "update-mime-database takes the type: $(cat "$tmp/out")" test $? -eq 0 -a ! -s "$tmp/out"
    check "*.tsm files are of the type" grep -qx "[0-9]*:$mimetype:\*\.tsm" "$tmp/mime/globs2"
    check "the type has its comment" grep -q "<comment>Tessuma Sudoku saved game</comment>" \
        "$tmp/mime/application/x-tessuma-game.xml"
    check "the type shows the game's icon" grep -qx "$mimetype:tessuma" "$tmp/mime/icons"
    check "the type is text underneath" grep -qx "$mimetype text/plain" "$tmp/mime/subclasses"
else
    skip "update-mime-database is not installed (Debian package shared-mime-info)"
fi

# --- The AppStream metainfo ---------------------------------------------------
if [ ! -f "$metainfo" ]; then
    echo "FAIL: $metainfo was not configured (is the game built in $build?)"
    exit 1
fi
if command -v appstreamcli >/dev/null; then
    appstreamcli validate --no-net --pedantic "$metainfo" >"$tmp/out" 2>&1
    check "appstreamcli validate passes: $(cat "$tmp/out")" test $? -eq 0
else
    skip "appstreamcli is not installed (Debian package appstream)"
fi
check "every placeholder is filled in" test -z "$(grep -o '@[A-Z_]*@' "$metainfo")"
check "the metainfo launches the desktop entry" grep -q '<launchable type="desktop-id">tessuma.desktop</launchable>' "$metainfo"
check "the metainfo names the MIME type" grep -q "<mediatype>$mimetype</mediatype>" "$metainfo"
version="$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")"
check "the release is the program's version ($version)" grep -q "<release version=\"$version\"" "$metainfo"
shots="$(sed -n 's/.*<image[^>]*>[^<]*\/\([^/<]*\.png\)<\/image>.*/\1/p' "$metainfo")"
check "the metainfo shows screenshots" test -n "$shots"
for shot in $shots; do
    check "screenshot $shot is in docs/screenshots" test -s "$src/docs/screenshots/$shot"
done

[ "$fail" -eq 0 ] && echo "desktop files: all checks passed"
exit "$fail"
