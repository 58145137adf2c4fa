#!/usr/bin/env bash
# tessuma-cli bank LEVEL: the 1,200 entries of a level in batch and entry
# order, exactly as stored; a bad level is refused with exit status 2.
set -u
cli="$1"
fail=0
check() {  # check DESCRIPTION CONDITION...
    local what="$1"; shift
    if "$@"; then :; else echo "FAIL: $what"; fail=1; fi
}
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT

for level in 0 1 2 3; do
    "$cli" bank "$level" >"$tmp/bank$level" 2>"$tmp/err"
    check "bank $level exits 0" test $? -eq 0
    check "bank $level prints nothing on stderr" test ! -s "$tmp/err"
    check "bank $level has 1200 lines" test "$(wc -l <"$tmp/bank$level")" -eq 1200
    # Every line is an entry: nine groups of nine board characters, the
    # separators after each (the last one missing in batch 2 of level 0).
    bad=$(grep -cvE '^([A-I1-9]{9}\|){8}[A-I1-9]{9}\|?$' "$tmp/bank$level")
    if [ "$level" -eq 0 ]; then
        check "level 0: only the entry with the entered 9 breaks the form" test "$bad" -eq 1
    else
        check "bank $level: every line is an entry" test "$bad" -eq 0
    fi
done

# Handed-down entries at their places: line = (batch - 1) * 100 + entry + 1.
check "level 0 batch 1 entry 0" test "$(sed -n 1p "$tmp/bank0")" = \
    "8E6217C94|B4GI356HA|9136DHGE2|5FD1832G9|C2879416E|7I1562DC8|6HICB1547|AC547IH2F|47B8569A3|"
check "level 0 batch 8 entry 75" test "$(sed -n 776p "$tmp/bank0")" = \
    "591CD6H72|D73AH295F|8B67IEA4C|ICE264781|7DB81C569|1F8I5GC2D|6HG431BI5|B1457I63H|3E96R8417|"
check "level 3 batch 12 entry 99" test "$(sed -n 1200p "$tmp/bank3")" = \
    "HI3712D5F|74A9F528C|B654831G9|514C2I867|3G68549A2|928F7A534|6E729834A|A325D6G98|D8I1376BE|"
# Batch 2 of level 0 (lines 101..200) lacks the last "|", and only it.
check "level 0 batch 2 has 89 characters" test "$(sed -n 101,200p "$tmp/bank0" | awk 'length != 89' | wc -l)" -eq 0
check "level 0 other batches have 90" test "$(sed -e 101,200d "$tmp/bank0" | awk 'length != 90' | wc -l)" -eq 0
# Distinct entries per level.
for pair in 0:1200 1:1115 2:1200 3:1197; do
    level=${pair%%:*}; want=${pair##*:}
    check "level $level has $want distinct entries" test "$(sort -u "$tmp/bank$level" | wc -l)" -eq "$want"
done
check "one entry stands in levels 1 and 3" test "$(sort -u "$tmp/bank1" "$tmp/bank3" | wc -l)" -eq $((1115 + 1197 - 1))

# Bad levels.
for arg in 4 -1 x 01 ""; do
    "$cli" bank "$arg" >"$tmp/out" 2>"$tmp/err"
    check "bank '$arg' exits 2" test $? -eq 2
    check "bank '$arg' prints nothing" test ! -s "$tmp/out"
    check "bank '$arg' says why" grep -q "no level" "$tmp/err"
done
"$cli" bank >"$tmp/out" 2>"$tmp/err"
check "bank without a level exits 2" test $? -eq 2
check "bank without a level says why" grep -q "usage" "$tmp/err"
"$cli" bank 1 2 >"$tmp/out" 2>"$tmp/err"
check "bank with two levels exits 2" test $? -eq 2

if [ "$fail" -eq 0 ]; then echo "bank: all checks passed"; fi
exit "$fail"
