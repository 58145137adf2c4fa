#!/usr/bin/env bash
# `cmake --install` into a scratch DESTDIR with prefix /usr: every file in
# its place, and the installed programs run from a foreign working folder.
# Called as: bash install.sh <tessuma-cli> <source dir>
set -u
cli="$1"
src="$2"
build="$(cd "$(dirname "$cli")" && pwd)"
fail=0
check() {  # check DESCRIPTION COMMAND...
    local what="$1"; shift
    if "$@"; then :; else echo "FAIL: $what"; fail=1; fi
}
tmp="$(mktemp -d)"
game_pid=""
cleanup() {
    [ -n "$game_pid" ] && kill -9 "$game_pid" 2>/dev/null
    rm -rf "$tmp"
}
trap cleanup EXIT

DESTDIR="$tmp/root" cmake --install "$build" --prefix /usr >"$tmp/install.log" 2>&1
if [ $? -ne 0 ]; then
    echo "FAIL: cmake --install"
    cat "$tmp/install.log"
    exit 1
fi
usr="$tmp/root/usr"

# Nothing outside the prefix, nothing from the build tree's own layout.
check "everything lands under /usr" test "$(ls -A "$tmp/root")" = "usr"
check "tessuma-cli is installed" test -x "$usr/bin/tessuma-cli"
check "no tests, tools or benchmarks in bin" test "$(ls "$usr/bin" | grep -cv '^tessuma\(-cli\)\?$')" -eq 0
check "the README is installed" test -s "$usr/share/doc/tessuma/README.md"

# The installed companion works from any folder.
puzzle=".7...36..4...961...1.....7.......49....26.......5.8...1.4.....93..4.256..58.....1"
(cd / && printf '%s\n' "$puzzle" | "$usr/bin/tessuma-cli" rate >"$tmp/rate" 2>&1)
check "installed tessuma-cli runs from / ($(cat "$tmp/rate"))" grep -q '^grade ' "$tmp/rate"

if ! grep -q '^TESSUMA_BUILD_GUI:BOOL=ON' "$build/CMakeCache.txt"; then
    echo "SKIP: the game is not built here (TESSUMA_BUILD_GUI is off); only tessuma-cli was checked"
    exit "$fail"
fi

check "the game is installed" test -x "$usr/bin/tessuma"
check "the fonts' licences are installed" test -s "$usr/share/doc/tessuma/fonts/LICENSE-DejaVu.txt"
check "no songs beside the installed program" test ! -e "$usr/bin/Music"
for n in 0 1 2; do
    check "song tess$n.mp3 under share/tessuma/Music" cmp -s "$src/resources/Music/tess$n.mp3" "$usr/share/tessuma/Music/tess$n.mp3"
done
check "the program's data folder is ../share/tessuma from bin" test -d "$usr/bin/../share/tessuma/Music"

check "desktop entry" cmp -s "$src/packaging/tessuma.desktop" "$usr/share/applications/tessuma.desktop"
check "MIME type" cmp -s "$src/packaging/tessuma-mime.xml" "$usr/share/mime/packages/tessuma.xml"
check "metainfo" test -s "$usr/share/metainfo/io.tessuma.Sudoku.metainfo.xml"
check "scalable icon" cmp -s "$src/resources/icons/tessuma.svg" "$usr/share/icons/hicolor/scalable/apps/tessuma.svg"
for size in 16 22 24 32 48 64 128 256; do
    check "icon ${size}x${size}" cmp -s "$src/packaging/icons/${size}x${size}/tessuma.png" \
        "$usr/share/icons/hicolor/${size}x${size}/apps/tessuma.png"
done
shots="$(sed -n 's/.*<image[^>]*>[^<]*\/\([^/<]*\.png\)<\/image>.*/\1/p' "$usr/share/metainfo/io.tessuma.Sudoku.metainfo.xml")"
check "the metainfo names screenshots" test -n "$shots"
for shot in $shots; do
    check "screenshot $shot is installed" test -s "$usr/share/tessuma/screenshots/$shot"
done
for f in $(cd "$tmp/root" && find . -type f); do
    case "$f" in
        ./usr/bin/*) check "$f is executable by all" test "$(stat -c %a "$tmp/root/$f")" = 755 ;;
        *) check "$f is readable by all" test "$(( 0$(stat -c %a "$tmp/root/$f") & 0444 ))" -eq $((0444)) ;;
    esac
done

# The installed game comes up from a foreign folder and writes its settings:
# a first start stores the centred window position. Where strace is at hand
# the start is traced, to see the game look for its first song under
# share/tessuma.
home="$tmp/home"
mkdir -p "$home" "$tmp/runtime" "$tmp/elsewhere"
chmod 700 "$tmp/runtime"
trace=()
if command -v strace >/dev/null && strace -o /dev/null true 2>/dev/null; then
    trace=(strace -f -e trace=%file -o "$tmp/trace")
fi
(
    cd "$tmp/elsewhere" || exit 1
    exec env -u XDG_CONFIG_HOME HOME="$home" XDG_RUNTIME_DIR="$tmp/runtime" \
        QT_QPA_PLATFORM=offscreen "${trace[@]}" "$usr/bin/tessuma" >"$tmp/game.log" 2>&1
) &
launcher=$!
conf="$home/.config/Tessuma"
for _ in $(seq 1 150); do
    grep -rqs '^Left=' "$conf" && break
    kill -0 "$launcher" 2>/dev/null || break
    sleep 0.2
done
game_pid="$launcher"
[ ${#trace[@]} -gt 0 ] && game_pid="$(pgrep -P "$launcher" | head -1)"
check "the installed game is still running" kill -0 "${game_pid:-$launcher}"
check "the installed game wrote its window position into $conf" grep -rqs '^Left=' "$conf"
check "the installed game holds its lock" test -e "$tmp/runtime/tessuma-sudoku.lock"
if [ ${#trace[@]} -gt 0 ]; then
    song="$(realpath "$usr/share/tessuma/Music/tess0.mp3")"
    for _ in $(seq 1 50); do grep -qF "\"$song\"" "$tmp/trace" && break; sleep 0.2; done
    check "the installed game looks for its first song at $song" grep -qF "\"$song\"" "$tmp/trace"
else
    echo "SKIP: strace is not at hand: where the installed game looks for its songs is not checked"
fi
[ -n "$game_pid" ] && kill -9 "$game_pid" 2>/dev/null
wait "$launcher" 2>/dev/null
game_pid=""
if [ "$fail" -ne 0 ]; then
    echo "--- the game said:"
    cat "$tmp/game.log"
fi

[ "$fail" -eq 0 ] && echo "install tree: all checks passed"
exit "$fail"
