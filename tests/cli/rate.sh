#!/usr/bin/env bash
# tessuma-cli rate: grades puzzles from standard input, one a line.
set -u
cli="$1"
fail=0
check() {
    local what="$1"; shift
    if "$@"; then :; else echo "FAIL: $what"; fail=1; fi
}
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT

singles='.7...36..4...961...1.....7.......49....26.......5.8...1.4.....93..4.256..58.....1'
pair='7........2...8.....4...532.3.85.7.......6...5....4.83.4.....78...1..4..6.5.12.4..'
xywing='.4.12..8....7.53...9.6.87....23..5..8.....9.6.5...7.3.9.4.8.......5............47'
trial='.9..34.5...4......8...9..1.....45..6.6.3.....5........98.2..5.7.2.6...9..3......1'

# Dots and zeros both stand for empty cells; "|" is dropped.
zeros=$(echo "$pair" | tr . 0)
bars=$(echo "$singles" | sed -E 's/(.{9})/\1|/g')
printf '%s\n' "$singles" "$zeros" "$xywing" "$trial" "$bars" >"$tmp/in"
"$cli" rate <"$tmp/in" >"$tmp/out" 2>"$tmp/err"
check "good input exits 0" test $? -eq 0
check "nothing on stderr" test ! -s "$tmp/err"
check "one line per puzzle" test "$(wc -l <"$tmp/out")" -eq 5
check "singles" test "$(sed -n 1p "$tmp/out")" = "grade 1 (beginner), hardest technique: hidden single"
check "naked pair" test "$(sed -n 2p "$tmp/out")" = "grade 4 (advanced), hardest technique: naked pair"
check "XY-wing" test "$(sed -n 3p "$tmp/out")" = "grade 13 (genius), hardest technique: XY-wing"
check "trial" test "$(sed -n 4p "$tmp/out")" = "grade 19 (beyond genius), hardest technique: trial and error"
check "with separators" test "$(sed -n 5p "$tmp/out")" = "$(sed -n 1p "$tmp/out")"

# No solution, several solutions.
clash="77${singles:2}"
empty=$(printf '%081d' 0)
printf '%s\n' "$clash" "$empty" | "$cli" rate >"$tmp/out" 2>"$tmp/err"
check "unsolvable puzzles are no error" test $? -eq 0
check "no solution" test "$(sed -n 1p "$tmp/out")" = "no solution"
check "several solutions" test "$(sed -n 2p "$tmp/out")" = "several solutions"

# Bad lines are named on stderr; the others are still rated; exit 1.
printf '%s\n' "$singles" "${singles:1}" "x${singles:1}" "$pair" >"$tmp/in"
"$cli" rate <"$tmp/in" >"$tmp/out" 2>"$tmp/err"
check "bad lines exit 1" test $? -eq 1
check "good lines still rated" test "$(wc -l <"$tmp/out")" -eq 2
check "line 2 named" grep -q "line 2:" "$tmp/err"
check "line 3 named" grep -q "line 3:" "$tmp/err"
check "good lines not named" test "$(grep -c "line [14]:" "$tmp/err")" -eq 0

# --givens reads the game's board code: a bank entry grades as its level.
"$cli" bank 2 | head -3 | "$cli" rate --givens >"$tmp/out" 2>"$tmp/err"
check "--givens exits 0" test $? -eq 0
check "--givens: advanced entries grade advanced" test "$(grep -c '(advanced)' "$tmp/out")" -eq 3
# Without --givens the letters are no digits.
"$cli" bank 2 | head -1 | "$cli" rate >"$tmp/out" 2>"$tmp/err"
check "letters without --givens are refused" test $? -eq 1

"$cli" rate --fast </dev/null >"$tmp/out" 2>"$tmp/err"
check "unknown option exits 2" test $? -eq 2
check "unknown option named" grep -q -- "--fast" "$tmp/err"

if [ "$fail" -eq 0 ]; then echo "rate: all checks passed"; fi
exit "$fail"
