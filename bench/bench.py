#!/usr/bin/python3
"""Measures Tavrin beside its peers on private desktops and prints one table with the aims beside the
figures. It never fails because of a figure: a slow machine is no defect.

usage: bench.py BUILD [--quick] [--presses N] [--json FILE]
"""
import argparse
import fcntl
import json
import os
import platform
import subprocess
import sys
import time
from pathlib import Path

from measuring import latency, libraries, memory, opening, quick_text, sound, start, window
from measuring.plan import Plan
from measuring.table import render

PRIVATE_DESKTOP = Path(__file__).parent.parent / "tests/support/private-desktop"

# The parts that time the window's mapping or count grabs want an X server without a window manager.
DESKTOPS = {
    "pressing": ((), (latency.measure, quick_text.measure, memory.measure, opening.measure, window.measure)),
    "starting": (("--no-wm",), (start.measure, libraries.measure, sound.measure)),
}


def parse(arguments):
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("build", type=lambda text: Path(text).resolve(), help="folder of the build")
    parser.add_argument("--quick", action="store_true", help="every row once, figures without weight")
    parser.add_argument("--presses", type=int, help="presses of each program, 200 or more for a real run")
    parser.add_argument("--json", type=Path, help="where the figures go (default: bench.json in BUILD)")
    parser.add_argument("--inside", choices=DESKTOPS, help=argparse.SUPPRESS)
    parser.add_argument("--result", type=Path, help=argparse.SUPPRESS)
    return parser.parse_args(arguments)


def measure_inside(desktop, plan, result):
    """Runs on the private desktop; the outer process waits for the file."""
    sections = [section for measure in DESKTOPS[desktop][1] for section in measure(plan)]
    result.write_text(json.dumps(sections), "utf-8")


def measure_on(desktop, options):
    result = options.build / f"bench/{desktop}.json"
    result.unlink(missing_ok=True)
    command = [PRIVATE_DESKTOP, *DESKTOPS[desktop][0], "--", "/usr/bin/python3", "-B", __file__,
               *sys.argv[1:], "--inside", desktop, "--result", result]
    subprocess.run([str(word) for word in command], check=True)
    return json.loads(result.read_text("utf-8"))


def machine():
    names = [line.partition(":")[2].strip() for line in Path("/proc/cpuinfo").read_text().splitlines()
             if line.startswith("model name")]
    return {"processor": names[0] if names else platform.machine(), "processors": os.cpu_count(),
            "kernel": platform.release(), "load": [round(value, 2) for value in os.getloadavg()]}


def main():
    options = parse(sys.argv[1:])
    plan = Plan.of(options)
    if options.inside:
        return measure_inside(options.inside, plan, options.result)
    # One at a time: two would write into each other's fifo and into each other's figures.
    with open(options.build / "bench/lock", "w") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        began = time.monotonic()
        report = {"quick": plan.quick, "machine": machine()}
        report["sections"] = [section for desktop in DESKTOPS for section in measure_on(desktop, options)]
        report["seconds"] = round(time.monotonic() - began, 1)
        report["machine"]["load after"] = [round(value, 2) for value in os.getloadavg()]
    file = options.json or options.build / "bench.json"
    file.write_text(json.dumps(report, indent=2, ensure_ascii=False) + "\n", "utf-8")
    print(render(report))
    print(f"\nAll figures: {file}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
