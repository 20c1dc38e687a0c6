"""From the start of the program to hotkeys that work, and to a window on the screen."""
import time

from measuring.daemons import Tavrin, write_shortcut
from measuring.shell import ZSH, instead, why_not
from measuring.table import at_most, missing, row, section, spread

# The old process's connection and bus name are gone before the next one starts.
PAUSE_SECONDS = 0.15


def measure(plan):
    stamp = plan.program("stamp")
    # With the stamp in the shell's place the shell's own start is not part of the figure.
    prefix = [] if why_not({ZSH: stamp}) else instead({ZSH: stamp})
    write_shortcut(f"exec '{stamp}'")
    measurements = {
        "hotkeys live (a press has started something)": (
            ["press", Tavrin.keycode], 25, "median ≤ 25 ms"),
        "window mapped (no window manager)": (["window", "Tavrin"], 60, "median ≤ 60 ms"),
    }
    times = {label: [] for label in measurements}
    # The first pair only warms the files up.
    for turn in range(plan.starts + 1):
        for label, (what, _, _) in measurements.items():
            found, _ = plan.times("time_start", *what, plan.build / "Tavrin", prefix=prefix)
            times[label] += found if turn else []
            time.sleep(PAUSE_SECONDS)
    rows = [result(label, times[label], plan.starts, *aim) for label, (_, *aim) in measurements.items()]
    return [section(f"Start of the program ({plan.starts} starts each, its files in the page cache)",
                    ["median ms", "p95 ms", "failed"], rows)]


def result(label, values, starts, limit, text):
    if not values:
        return missing(label, "it never came so far within 10 s")
    found = spread(values)
    return row(label, {"median ms": found["median"], "p95 ms": found["p95"], "failed": starts - len(values)},
               at_most(found["median"], limit, text))
