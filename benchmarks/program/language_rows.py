# SPDX-License-Identifier: GPL-3.0-or-later
"""The row for translations: the time of a text lookup."""
import json
import statistics
import subprocess

from rows import Row


def lookup(options):
    program = options.build / "benchmarks/language/bench_translation"
    runs = [json.loads(subprocess.run([program], check=True, capture_output=True, text=True).stdout) for _ in range(options.runs)]
    first, plain, filled = (statistics.median(run[name] for run in runs) for name in ("first", "plain", "filled"))
    return Row("Text lookup", f"{plain:.0f} ns, with two arguments {filled:.0f} ns", "", f"first lookup {first / 1e6:.2f} ms", "", True)


ALL = {"lookup": lookup}
