"""What the main window costs the main thread, also where there are thousands of shortcuts."""
import statistics

from measuring.table import at_most, row, section

COLUMNS = ["median ms", "worst ms", "passed ms", "times"]
MANY = 10_000
MOST = 16.0

STEPS = {
    "first-open": "built and shown, the first time",
    "open": "built and shown again",
    "show": "shown again",
    "scroll": "scrolled by a page",
    "letter": "a letter typed into the search",
}


def measure(plan):
    rows = [step_row(count, name, steps) for count in (10, MANY)
            for name, steps in taken(plan.run("time_window", count, plan.windows)).items()]
    return [section("Main window: main thread's processor time until the frame is drawn (passed: with what the thread "
                    "waited for)", COLUMNS, rows)]


def taken(lines):
    """Milliseconds of each step by its name: (processor time, passed)."""
    steps = {}
    for line in lines:
        name, *times = line.split()
        steps.setdefault(name, []).append([int(time) / 1e6 for time in times])
    return steps


def step_row(count, name, steps):
    processor, passed = zip(*steps)
    worst = round(max(processor), 3)
    aim = at_most(worst, MOST, f"worst ≤ {MOST:.0f} ms") if count == MANY else None
    return row(f"{count:,}: {STEPS[name]}", {
        "median ms": round(statistics.median(processor), 3), "worst ms": worst,
        "passed ms": round(statistics.median(passed), 3), "times": len(steps)}, aim)
