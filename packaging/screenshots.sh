#!/usr/bin/env bash
# Takes the screenshots that the README and the AppStream metainfo show:
# the built game in a virtual X screen (Xvfb) with a fresh home folder,
# opened on packaging/screenshot-game.tsm and driven with xdotool; each
# picture is `import -window root`, cropped to the game's window, written to
# docs/screenshots/.
#
# Usage: packaging/screenshots.sh [BUILD DIR]     (default: build)
# Needs the Debian packages xvfb, xauth, xdotool and imagemagick.
set -euo pipefail

here="$(cd "$(dirname "$0")" && pwd)"
src="$(cd "$here/.." && pwd)"
build="$(cd "${1:-$src/build}" && pwd)"
game="$build/tessuma"
out="$src/docs/screenshots"
for tool in Xvfb xdotool import convert; do
    command -v "$tool" >/dev/null || { echo "screenshots: $tool is missing (apt-get install xvfb xdotool imagemagick)" >&2; exit 2; }
done
[ -x "$game" ] || { echo "screenshots: no game at $game (build it first)" >&2; exit 2; }

tmp="$(mktemp -d)"
pids=()
cleanup() {
    for p in "${pids[@]}"; do kill "$p" 2>/dev/null || true; done
    rm -rf "$tmp"
}
trap cleanup EXIT

# A screen of its own, larger than the window, so the window sits whole on it.
export DISPLAY=:79
Xvfb "$DISPLAY" -screen 0 1024x768x24 -nolisten tcp >"$tmp/xvfb.log" 2>&1 &
pids+=($!)
for _ in $(seq 1 50); do xdotool getdisplaygeometry >/dev/null 2>&1 && break; sleep 0.1; done

# A fresh player with a few names on the high score table. Values with a
# comma are quoted, as QSettings writes them.
export HOME="$tmp/home" XDG_RUNTIME_DIR="$tmp/run"
unset XDG_CONFIG_HOME
mkdir -p "$HOME/.config/Tessuma" "$XDG_RUNTIME_DIR"
chmod 700 "$XDG_RUNTIME_DIR"
cat >"$HOME/.config/Tessuma/settings.ini" <<'EOF'
[Data]
0="1250,bombastic"
1="12000,funkalicious"
2="4500,shikamoo"
3="48211,Juma"
4="44730,Neema"
5="161882,Baraka"
6="23904,Amani"
EOF

"$game" "$here/screenshot-game.tsm" >"$tmp/game.log" 2>&1 &
pids+=($!)
win="$(xdotool search --sync --onlyvisible --name '^Tessuma Sudoku$' | head -1)"
sleep 3   # the loading banner goes
eval "$(xdotool getwindowgeometry --shell "$win")"   # X, Y, WIDTH, HEIGHT
xdotool windowfocus --sync "$win" 2>/dev/null || true

shot() {  # shot NAME: the window as it is now, into docs/screenshots/NAME.png
    sleep 0.7
    import -window root "$tmp/screen.png"
    mkdir -p "$out"
    convert "$tmp/screen.png" -crop "${WIDTH}x${HEIGHT}+${X}+${Y}" +repage -strip \
        -define png:exclude-chunks=date,time "$out/$1.png"
    echo "$out/$1.png"
}
key() { xdotool key --clearmodifiers "$@"; sleep 0.4; }
# The middle of cell (row, col) on the window, as the board lays them out.
cell() {
    local row=$1 col=$2
    echo $((X + 120 + 8 * (col / 3) + 41 * col + 20)) $((Y + 64 + 8 * (row / 3) + 41 * row + 20))
}
click() {  # click BUTTON X Y
    xdotool mousemove "$2" "$3" click "$1"
    sleep 0.4
}

# The saved game, under way: givens, the player's digits, pencil marks.
# A click on the empty foot of the right panel: the game's timers start with
# the first input event.
click 1 $((X + 560)) $((Y + 472))
xdotool mousemove $((X + 630)) $((Y + 470))
sleep 1.5
shot game

# The ring of digits around an empty cell (row 4, column 4 holds nothing).
read -r cx cy < <(cell 4 4)
click 1 "$cx" "$cy"
shot ring

# A wrong digit from the keyboard: Alt+A puts the caret on the first empty
# cell (row 0, column 1), which wants a 4; the player types 9.
key alt+a
key 9
shot whoops
key Return

# "auto-mark" (Alt+M): the possible digits of every empty cell.
key alt+m
xdotool mousemove $((X + 630)) $((Y + 470))
shot possibles

# The high score table (Alt+G), then the help pages (Alt+H, one page on).
key alt+g
shot highs
key alt+h
key Right
shot help

echo "screenshots: done"
