"""Two of the program's own parts, without the rest: registering hotkeys, and the file of shortcuts."""
import os
import statistics
import subprocess
from pathlib import Path

from measuring.table import at_most, row, section

MOST_FOR_A_HUNDRED = 5.0


def measure(plan):
    return [registrations(plan), stores(plan)]


def registrations(plan):
    rows = []
    for count in (10, 100, 1000):
        times, _ = plan.times("register_hotkeys", count, plan.registrations)
        median = round(statistics.median(times), 3)
        aim = at_most(median, MOST_FOR_A_HUNDRED, "≤ 5 ms") if count == 100 else None
        rows.append(row(f"{count:,} as one batch", {"median ms": median, "rounds": len(times)}, aim))
    times, _ = plan.times("register_hotkeys", "--singly", 1000, plan.single_registrations)
    rows.append(row("1,000 one by one",
                    {"median ms": round(statistics.median(times), 3), "rounds": len(times)}))
    return section("Registering combinations on the X server", ["median ms", "rounds"], rows)


def stores(plan):
    folder = Path(os.environ["TMPDIR"]) / "store"
    folder.mkdir()
    rows = []
    for count in (10, 1000, 10_000):
        pairs = [line.split() for line in plan.run("time_store", folder, count, plan.stores)]
        load, save = (round(statistics.median(int(time) / 1e6 for time in times), 3) for times in zip(*pairs))
        rows.append(row(f"{count:,} shortcuts", {"load ms": load, "save ms": save, "rounds": len(pairs)}))
    return section(f"Loading and saving the file of shortcuts ({kind_of(folder)}; a save includes fsync)",
                   ["load ms", "save ms", "rounds"], rows)


def kind_of(folder):
    """What the folder lies on, so that nobody takes a disk for memory."""
    found = subprocess.run(("stat", "--file-system", "--format", "%T", folder), capture_output=True, text=True)
    return f"file system {found.stdout.strip()}"
