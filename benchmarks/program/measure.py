#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Compares Quelto with public tools and prints one table. ./bench starts it on a private desktop."""
import argparse
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests/system"))

import export_rows  # noqa: E402
import language_rows  # noqa: E402
import library_rows  # noqa: E402
import library_screen_rows  # noqa: E402
import match_rows  # noqa: E402
import moment_rows  # noqa: E402
import playback_rows  # noqa: E402
import rows  # noqa: E402
import start_rows  # noqa: E402
import thumbnail_rows  # noqa: E402
import wayland_rows  # noqa: E402

ALL = {**rows.ALL, **moment_rows.ALL, **language_rows.ALL, **thumbnail_rows.ALL, **library_rows.ALL,
       **library_screen_rows.ALL, **start_rows.ALL, **export_rows.ALL, **playback_rows.ALL, **match_rows.ALL,
       **wayland_rows.ALL}


def parse():
    parser = argparse.ArgumentParser(prog="./bench", description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build/release", help=argparse.SUPPRESS)
    parser.add_argument("--runs", type=int, default=3, help="number of alternating runs per row; the table shows medians")
    parser.add_argument("--seconds", type=int, default=15, help="length of each capture run")
    parser.add_argument("--long", action="store_true",
                        help="measure audio sync for 30 minutes instead of one, and shrink 100 clips instead of 12")
    parser.add_argument("rows", nargs="*", metavar="ROW", help="one of " + ", ".join(ALL))
    options = parser.parse_args()
    unknown = set(options.rows) - set(ALL)
    if unknown:
        parser.error("unknown row: " + ", ".join(unknown))
    return options


def line(cells):
    return "| " + " | ".join(cells) + " |"


def main():
    options = parse()
    print(line(("Work", "Quelto", "Comparison", "Figure", "Budget", "")))
    print(line(["---"] * 6), flush=True)
    has_failed = False
    for name in options.rows or ALL:
        measured = ALL[name](options)
        for row in measured if isinstance(measured, list) else [measured]:
            has_failed |= not row.is_within
            print(line((row.work, row.ours, row.peer, row.figure, row.budget, "pass" if row.is_within else "fail")),
                  flush=True)
    return 1 if has_failed else 0


if __name__ == "__main__":
    sys.exit(main())
