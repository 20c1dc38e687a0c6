"""What a program keeps in memory, and whether 10,000 presses leave anything behind."""
import os
import re
import subprocess
import time

from measuring.daemons import Tavrin
from measuring.shell import ZSH, why_not
from measuring.table import at_most, missing, row, section

COLUMNS = ["resident MB", "proportional MB", "private dirty MB", "threads", "descriptors"]
LARGEST_PRIVATE_DIRTY = 8.0

# Scripts are started by up to sixteen threads that stay, each with a descriptor; what a press leaves
# behind would grow with the presses.
MOST_KEPT = 16


def sample(pid):
    """Megabytes (of 10⁶ bytes) by smaps_rollup, and what is open."""
    with open(f"/proc/{pid}/smaps_rollup") as file:
        kibibytes = dict(re.findall(r"^(\w+): +(\d+) kB$", file.read(), re.MULTILINE))
    sizes = [round(int(kibibytes[name]) * 1024 / 1e6, 2) for name in ("Rss", "Pss", "Private_Dirty")]
    counts = [len(os.listdir(f"/proc/{pid}/{folder}")) for folder in ("task", "fd")]
    return dict(zip(COLUMNS, [*sizes, *counts]))


def context_rows(daemons):
    rows = [row(daemon.name, sample(daemon.process.pid)) for daemon in daemons]
    return COLUMNS, rows or [missing("sxhkd, xbindkeys", "neither is installed")]


def window(title="Tavrin"):
    """Id of the program's visible window, or nothing."""
    found = subprocess.run(("xdotool", "search", "--onlyvisible", "--name", f"^{title}"),
                           capture_output=True, text=True).stdout.split()
    return found[0] if found else None


def wait_for(condition, what, seconds=15):
    limit = time.monotonic() + seconds
    while not (value := condition()):
        if time.monotonic() > limit:
            raise RuntimeError(f"{what} did not happen")
        time.sleep(0.02)
    return value


def measure(plan):
    stamp = plan.program("stamp")
    # The shell's own start would only make 10,000 presses long; to Tavrin the child is the same.
    reason = why_not({ZSH: stamp})
    script, stand_in = (f"exec '{stamp}'", None) if reason else ("true", stamp)
    with Tavrin(plan, script, stand_in) as program:
        shown = wait_for(window, "the window")
        rows = window_rows(plan, program)
        plan.run("close_window", shown)
        wait_for(lambda: not window(), "hiding")
        time.sleep(plan.rest_seconds - plan.settle_seconds)
        rows.append(row("window hidden, and at rest", sample(program.process.pid)))
        rows += flood_rows(plan, program)
    return [section("Memory of Tavrin", COLUMNS, rows)]


def window_rows(plan, program):
    rows = []
    waited = 0
    for seconds in (plan.settle_seconds, plan.rest_seconds):
        time.sleep(seconds - waited)
        waited = seconds
        values = sample(program.process.pid)
        aim = at_most(values["private dirty MB"], LARGEST_PRIVATE_DIRTY, "private dirty ≤ 8 MB")
        rows.append(row(f"window open for {seconds} s", values, aim))
    return rows


def flood_rows(plan, program):
    """The first press ever makes what the rest then uses, so the comparison starts after it."""
    program.wait_live()
    before = sample(program.process.pid)
    answered = int(plan.run("press_keys", "flood", program.keycode, plan.flood_presses)[0])
    time.sleep(1)
    after = sample(program.process.pid)
    grown = max(after[column] - before[column] for column in ("threads", "descriptors"))
    aim = at_most(grown, MOST_KEPT, f"≤ {MOST_KEPT} more: no leak")
    return [row("before the presses (one done)", before),
            row(f"after {plan.flood_presses:,} presses ({answered:,} answered)", after, aim)]
