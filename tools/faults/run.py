#!/usr/bin/env python3
"""Fault score of the fast tests.

Applies each fault of a list (faults.txt beside this script) to the source
tree one at a time, builds incrementally and runs the fast tests (everything
but the real-world tier). A fault the tests notice is killed; one they don't
notice survives. Prints one line per fault and the score.

  tools/faults/run.py [--tree DIR] [--build DIR] [--list FILE] [--only NAME]
                      [--matrix FILE] [--exclude REGEX]

--matrix runs the whole fast suite for every fault and writes, per fault,
the tests that noticed it (one line: fault TAB test TAB test ...), to tell
which tests kill faults that no other test kills.

The list is blocks of
  = name of the fault
  @ path/of/file.cpp
  - exact text as it stands (must occur once; several - lines are one text)
  + the text that replaces it (likewise)
The tree is restored after every fault, also when interrupted.
"""
import argparse, os, subprocess, sys, time

HERE = os.path.dirname(os.path.abspath(__file__))


def parse(path):
    faults, cur = [], None
    for raw in open(path, encoding="utf-8"):
        line = raw.rstrip("\n")
        if line.startswith("= "):
            cur = {"name": line[2:].strip()}
            faults.append(cur)
        elif line.startswith("@ ") and cur is not None:
            cur["file"] = line[2:].strip()
        elif line.startswith("- ") and cur is not None:
            cur["find"] = cur["find"] + "\n" + line[2:] if "find" in cur else line[2:]
        elif line.startswith("+ ") and cur is not None:
            cur["replace"] = cur["replace"] + "\n" + line[2:] if "replace" in cur else line[2:]
    for f in faults:
        missing = {"file", "find", "replace"} - f.keys()
        if missing:
            sys.exit(f"fault '{f['name']}': missing {', '.join(sorted(missing))}")
    return faults


def run(cmd, cwd, timeout):
    try:
        r = subprocess.run(cmd, cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=timeout)
        return r.returncode, r.stdout.decode(errors="replace")
    except subprocess.TimeoutExpired:
        return -1, "timed out"


def main():
    ap = argparse.ArgumentParser()
    ap.add_argument("--tree", default=os.path.dirname(os.path.dirname(HERE)))
    ap.add_argument("--build", default=None)
    ap.add_argument("--list", default=os.path.join(HERE, "faults.txt"))
    ap.add_argument("--only", default=None)
    ap.add_argument("--matrix", default=None)
    # Tests to leave out, e.g. ones whose waits time out on a loaded machine
    # and would count as kills.
    ap.add_argument("--exclude", default=None)
    a = ap.parse_args()
    tree = os.path.abspath(a.tree)
    build = os.path.abspath(a.build or os.path.join(tree, "build-faults"))
    faults = parse(a.list)
    if a.only:
        faults = [f for f in faults if a.only in f["name"]]

    if not os.path.exists(os.path.join(build, "build.ninja")):
        rc, out = run(["cmake", "-S", tree, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=RelWithDebInfo",
                       "-DTESSUMA_BUILD_BENCH=OFF", "-DTESSUMA_REAL_TESTS=OFF"], tree, 600)
        if rc != 0:
            sys.exit(out)
    build_cmd = ["cmake", "--build", build]
    skip = "^real/" + ("|" + a.exclude if a.exclude else "")
    test_cmd = ["ctest", "--test-dir", build, "-j", str(os.cpu_count() or 2), "-E", skip, "--timeout", "120"]
    if not a.matrix:
        test_cmd.append("--stop-on-failure")
    matrix = []
    rc, out = run(build_cmd, tree, 3600)
    if rc != 0:
        sys.exit("the tree does not build:\n" + out[-3000:])
    rc, out = run(test_cmd, tree, 1200)
    if rc != 0:
        sys.exit("the tests fail before any fault:\n" + out[-3000:])

    killed, survived, broken = [], [], []
    for f in faults:
        path = os.path.join(tree, f["file"])
        original = open(path, encoding="utf-8").read()
        n = original.count(f["find"])
        if n != 1:
            print(f"STALE     {f['name']}  ({f['file']}: text found {n} times)", flush=True)
            broken.append(f)
            continue
        t0 = time.time()
        try:
            with open(path, "w", encoding="utf-8") as out:
                out.write(original.replace(f["find"], f["replace"]))
            rc, log = run(build_cmd, tree, 1800)
            if rc != 0:
                verdict = "NOBUILD"
                broken.append(f)
            else:
                rc, log = run(test_cmd, tree, 1200)
                verdict = "killed" if rc != 0 else "SURVIVED"
                if a.matrix:
                    failed = log.split("The following tests FAILED:")[-1] if rc != 0 else ""
                    names = [l.split(" - ", 1)[1].split(" (")[0].strip() for l in failed.splitlines() if " - " in l]
                    matrix.append(f["name"] + "\t" + "\t".join(names))
                (killed if rc != 0 else survived).append(f)
        finally:
            with open(path, "w", encoding="utf-8") as out:
                out.write(original)
            os.utime(path)
        print(f"{verdict:9} {f['name']}  ({time.time() - t0:.0f} s)", flush=True)
    run(build_cmd, tree, 3600)
    if a.matrix:
        with open(a.matrix, "w", encoding="utf-8") as out:
            out.write("\n".join(matrix) + "\n")

    scored = len(killed) + len(survived)
    print(f"\nscore: {len(killed)} of {scored} faults killed; "
          f"{len(broken)} not applicable (stale or not building)")
    for f in survived:
        print(f"  survived: {f['name']}  [{f['file']}]")
    for f in broken:
        print(f"  not applied: {f['name']}  [{f['file']}]")
    return 0


if __name__ == "__main__":
    sys.exit(main())
