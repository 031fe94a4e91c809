# SPDX-License-Identifier: GPL-3.0-or-later
"""The row of the texts: what looking one up costs."""
import json
import statistics
import subprocess

from rows import Row


def lookup(options):
    program = options.build / "benchmarks/language/bench_translation"
    runs = [json.loads(subprocess.run([program], check=True, capture_output=True, text=True).stdout) for _ in range(options.runs)]
    first, plain, filled = (statistics.median(run[name] for run in runs) for name in ("first", "plain", "filled"))
    return Row("Lookup of a text", f"{plain:.0f} ns, with two arguments {filled:.0f} ns", "", f"the first {first / 1e6:.2f} ms", "", True)


ALL = {"lookup": lookup}
