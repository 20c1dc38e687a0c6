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
    answers = {"press": [], "window": []}
    # The first pair only warms the files up.
    for turn in range(plan.starts + 1):
        for what, words in (("press", ("press", Tavrin.keycode)), ("window", ("window", "Tavrin"))):
            lines = plan.run("time_start", *words, plan.build / "Tavrin", prefix=prefix)
            answers[what] += lines if turn else []
            time.sleep(PAUSE_SECONDS)
    presses = [[int(number) / 1e6 for number in line.split()] for line in answers["press"]]
    rows = [
        result("first press that is not lost", [pair[0] for pair in presses], plan.starts),
        result("hotkeys live (its script has begun)", [pair[1] for pair in presses], plan.starts, 25),
        result("window mapped", [int(line) / 1e6 for line in answers["window"]], plan.starts, 60),
    ]
    title = f"Start of the program ({plan.starts} starts each, its files in the page cache, no window manager)"
    return [section(title, ["median ms", "p95 ms", "failed"], rows)]


def result(label, values, starts, limit=None):
    if not values:
        return missing(label, "it never came so far within 10 s")
    found = spread(values)
    return row(label, {"median ms": found["median"], "p95 ms": found["p95"], "failed": starts - len(values)},
               limit and at_most(found["median"], limit, f"median ≤ {limit} ms"))
