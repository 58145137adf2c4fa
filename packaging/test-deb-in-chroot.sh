#!/usr/bin/env bash
# Installs the Debian package into a fresh Debian 12 root and plays the part
# of a player there: the game starts as a normal user under Xvfb, from a
# folder of no importance, comes up, writes its settings, refuses a second
# copy, and starts again after the first was killed hard.
#
# Not part of the test suite: it needs root and Debian's package registry,
# and takes several minutes (most of it in debootstrap and apt-get).
#
# Usage: packaging/test-deb-in-chroot.sh PACKAGE.deb [ROOT]
#   ROOT  the folder for the Debian root; made by debootstrap when it holds
#         no Debian yet, so a second run can reuse it. Default: a new folder
#         under /tmp, removed at the end (KEEP_ROOT=1 keeps it).
#   A screenshot of the screen inside the root is left in
#   /tmp/tessuma-chroot-screen.png when ImageMagick is on the host.
set -euo pipefail

if [ "$(id -u)" -ne 0 ]; then
    echo "test-deb-in-chroot: needs root (debootstrap, chroot, mount)" >&2
    exit 2
fi
if [ $# -lt 1 ] || [ ! -f "$1" ]; then
    echo "usage: $0 PACKAGE.deb [ROOT]" >&2
    exit 2
fi
command -v debootstrap >/dev/null || { echo "test-deb-in-chroot: apt-get install debootstrap" >&2; exit 2; }

started=$(date +%s)
deb="$(realpath "$1")"
if [ $# -ge 2 ]; then
    root="$(realpath -m "$2")"
    remove_root=0
else
    root="$(mktemp -d /tmp/tessuma-chroot.XXXXXX)"
    remove_root=$([ "${KEEP_ROOT:-0}" = 1 ] && echo 0 || echo 1)
fi
display=:77
step() { echo "== $(($(date +%s) - started))s: $*"; }
in_root() { chroot "$root" /usr/bin/env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin HOME=/root LANG=C.UTF-8 "$@"; }
as_player() {
    in_root /usr/sbin/runuser -u player -- /usr/bin/env HOME=/home/player \
        XDG_RUNTIME_DIR=/run/user/player DISPLAY="$display" LANG=C.UTF-8 "$@"
}

mounted=()
cleanup() {
    set +e
    if [ -d "$root/proc" ]; then
        # Everything started inside the root ends with it.
        for p in /proc/[0-9]*; do
            [ "$(readlink "$p/root" 2>/dev/null)" = "$root" ] && kill -9 "${p#/proc/}" 2>/dev/null
        done
        sleep 1
    fi
    for ((i = ${#mounted[@]} - 1; i >= 0; i--)); do umount -l "${mounted[i]}"; done
    if [ "$remove_root" = 1 ]; then rm -rf --one-file-system "$root"; fi
}
trap cleanup EXIT

failures=0
check() {  # check DESCRIPTION COMMAND...
    local what="$1"; shift
    if "$@"; then echo "ok: $what"; else echo "FAIL: $what"; failures=$((failures + 1)); fi
}

# --- A clean Debian 12 ----------------------------------------------------------
if [ ! -x "$root/usr/bin/apt-get" ]; then
    step "debootstrap bookworm into $root"
    debootstrap --variant=minbase bookworm "$root" >"$root.debootstrap.log" 2>&1 ||
        { tail -20 "$root.debootstrap.log"; exit 1; }
    rm -f "$root.debootstrap.log"
fi
for m in proc sys dev dev/pts; do
    mkdir -p "$root/$m"
    case $m in
        proc) mount -t proc proc "$root/proc" ;;
        sys) mount -t sysfs sys "$root/sys" ;;
        *) mount --bind "/$m" "$root/$m" ;;
    esac
    mounted+=("$root/$m")
done
cp /etc/resolv.conf "$root/etc/resolv.conf"

# --- Install the package as a user would: apt resolves what it depends on ------
step "apt-get install $(basename "$deb") (without recommends: Depends must be enough)"
cp "$deb" "$root/tmp/"
in_root apt-get update -qq
in_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
    "/tmp/$(basename "$deb")" xvfb xauth x11-utils x11-apps strace >"$root/tmp/apt.log" 2>&1 ||
    { tail -30 "$root/tmp/apt.log"; exit 1; }
in_root dpkg -s tessuma | sed -n 's/^\(Version\|Depends\|Recommends\): /  \1: /p'

check "the game is on the PATH" in_root test -x /usr/bin/tessuma
check "the songs are under /usr/share/tessuma/Music" in_root test -f /usr/share/tessuma/Music/tess0.mp3
check "the desktop entry is installed" in_root test -f /usr/share/applications/tessuma.desktop
check "the icon is installed" in_root test -f /usr/share/icons/hicolor/48x48/apps/tessuma.png

# --- A player and a screen --------------------------------------------------------
in_root id player >/dev/null 2>&1 || in_root useradd --create-home player
in_root install -d -o player -m 700 /run/user/player
in_root rm -rf /home/player/.config /run/user/player/tessuma-sudoku.lock
chroot "$root" /usr/bin/Xvfb "$display" -screen 0 1024x768x24 -nolisten tcp >/dev/null 2>&1 &
disown $!
for _ in $(seq 1 50); do [ -e "$root/tmp/.X11-unix/X${display#:}" ] && break; sleep 0.2; done

game_pid() {  # the pid, seen from outside, of the Nth game running in the root
    local n=0 p
    for p in /proc/[0-9]*; do
        [ "$(readlink "$p/root" 2>/dev/null)" = "$root" ] || continue
        [ "$(readlink "$p/exe" 2>/dev/null)" = "$root/usr/bin/tessuma" ] || continue
        n=$((n + 1))
        [ "$n" = "$1" ] && { echo "${p#/proc/}"; return 0; }
    done
    return 1
}
windows() { as_player xwininfo -root -tree | grep -c "\"$1\"" || true; }
start_game() { (as_player sh -c "cd /var/tmp && exec $* tessuma" >>"$root/tmp/game.log" 2>&1 &); }

step "start the installed game as a player under Xvfb (traced, to see where it looks for songs)"
rm -f "$root/tmp/trace"
start_game strace -f -e trace=%file -o /tmp/trace
conf="$root/home/player/.config/Tessuma"
for _ in $(seq 1 150); do grep -rqs '^Left=' "$conf" && break; sleep 0.2; done
sleep 5
first="$(game_pid 1 || true)"
check "the game is running after five seconds" test -n "$first"
check "it wrote its settings (the first start stores the centred position)" grep -rqs '^Left=' "$conf"
check "its window is on the screen" test "$(windows "Tessuma Sudoku")" -ge 1
check "it holds the session's lock" test -e "$root/run/user/player/tessuma-sudoku.lock"
check "it looks for its first song at /usr/share/tessuma/Music/tess0.mp3" \
    grep -q '"/usr/share/tessuma/Music/tess0.mp3"' "$root/tmp/trace"
if command -v import >/dev/null && [ -x "$root/usr/bin/xwd" ]; then
    chroot "$root" /usr/bin/xwd -root -silent -display "$display" >"$root/tmp/screen.xwd" &&
        convert "xwd:$root/tmp/screen.xwd" /tmp/tessuma-chroot-screen.png &&
        echo "   screenshot: /tmp/tessuma-chroot-screen.png"
fi

step "a second start in the same session"
start_game
sleep 5
second="$(game_pid 2 || true)"
check "the first game is untouched" kill -0 "$first"
check "the second start stops at its notice" test -n "$second"
check "its notice is up beside the game's window" test "$(windows "Tessuma Sudoku")" -ge 2
check "the lock is still the first game's" test "$(head -1 "$root/run/user/player/tessuma-sudoku.lock")" = "$first"
[ -n "$second" ] && kill -9 "$second"

step "kill -9 the game, then start it again"
kill -9 "$first"
sleep 1
check "the killed game left its lock file behind" test -e "$root/run/user/player/tessuma-sudoku.lock"
: >"$root/tmp/game.log"
start_game
sleep 8
again="$(game_pid 1 || true)"
check "the game starts again over the stale lock" test -n "$again"
check "and shows its window" test "$(windows "Tessuma Sudoku")" -ge 1

if [ "$failures" -ne 0 ]; then
    echo "--- the game said:"
    cat "$root/tmp/game.log"
fi
step "done: $failures failure(s)"
exit $((failures != 0))
