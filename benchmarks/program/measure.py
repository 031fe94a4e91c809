#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Measures Quelto beside public tools and prints one table. Started by ./bench on a private desktop."""
import argparse
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sys.path.append(str(ROOT / "tests/system"))

import language_rows  # noqa: E402
import library_rows  # noqa: E402
import library_screen_rows  # noqa: E402
import moment_rows  # noqa: E402
import rows  # noqa: E402
import start_rows  # noqa: E402
import thumbnail_rows  # noqa: E402

ALL = {**rows.ALL, **moment_rows.ALL, **language_rows.ALL, **thumbnail_rows.ALL, **library_rows.ALL,
       **library_screen_rows.ALL, **start_rows.ALL}


def parse():
    parser = argparse.ArgumentParser(prog="./bench", description=__doc__)
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build/release", help=argparse.SUPPRESS)
    parser.add_argument("--runs", type=int, default=3, help="alternating runs a row, of which the medians count")
    parser.add_argument("--seconds", type=int, default=15, help="length of each capture run")
    parser.add_argument("--long", dest="sync_minutes", action="store_const", const=30, default=1,
                        help="watch sound against picture for 30 minutes instead of one")
    parser.add_argument("rows", nargs="*", metavar="ROW", help="of " + ", ".join(ALL))
    options = parser.parse_args()
    unknown = set(options.rows) - set(ALL)
    if unknown:
        parser.error("no such row: " + ", ".join(unknown))
    return options


def line(cells):
    return "| " + " | ".join(cells) + " |"


def main():
    options = parse()
    print(line(("Work", "Quelto", "Beside it", "Figure", "Budget", "")))
    print(line(["---"] * 6), flush=True)
    is_short = False
    for name in options.rows or ALL:
        row = ALL[name](options)
        is_short |= not row.is_within
        print(line((row.work, row.ours, row.peer, row.figure, row.budget, "pass" if row.is_within else "short")), flush=True)
    return 1 if is_short else 0


if __name__ == "__main__":
    sys.exit(main())
