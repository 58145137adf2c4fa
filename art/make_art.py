#!/usr/bin/env python3
"""Runs the art generators; see art/README.md. Groups: background, frames,
help, buttons, controls, icon. No argument makes them all. Every run rewrites
resources/art.qrc and checks all shipped pictures (sizes, colour modes, the
keyed corner pixel of the buttons)."""
import os
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))

from tessart import gen, manifest  # noqa: E402

GROUPS = ["background", "frames", "help", "buttons", "controls", "icon"]


def main(argv):
    groups = argv or GROUPS
    for g in groups:
        if g not in GROUPS and g != "check":
            sys.exit("unknown group %r; groups: %s, check" % (g, ", ".join(GROUPS)))
    for g in groups:
        if g == "check":
            continue
        t = time.time()
        written = getattr(gen, "make_" + g)()
        print("%-10s %3d files  %.1fs" % (g, len(written), time.time() - t))
    manifest.write_qrc()
    problems = manifest.check()
    for p in problems:
        print("PROBLEM:", p)
    if problems:
        sys.exit(1)
    print("checked %d pictures and %d fonts: all fine" % (len(manifest.ASSETS), len(manifest.FONTS)))


if __name__ == "__main__":
    main(sys.argv[1:])
