"""What the road from a press to an application's first instruction costs over starting it by hand."""
import os
import time
from pathlib import Path

from measuring.daemons import Tavrin, write_shortcut
from measuring.shell import SH
from measuring.table import missing, row, section, spread

COLUMNS = ["median ms", "p95 ms", "lost"]
IDENTIFIER = "org.example.Stamp"


class Opener(Tavrin):
    """Its one combination opens an application, whose entry is looked up and whose windows are looked for."""
    name = "Tavrin, by identifier"

    def command(self):
        folder = Path(os.environ["XDG_DATA_HOME"]) / "applications"
        folder.mkdir(parents=True, exist_ok=True)
        (folder / f"{IDENTIFIER}.desktop").write_text(
            f"[Desktop Entry]\nType=Application\nName=Stamp\nExec={self.script}\n", "utf-8")
        write_shortcut(IDENTIFIER, "launchApp")
        return [str(self.plan.build / "Tavrin")]


def measure(plan):
    stamp = plan.program("stamp")
    with Opener(plan, stamp).wait_live() as opener:
        time.sleep(plan.rest_seconds if not plan.quick else plan.settle_seconds)
        # In turns, so that what the machine does meanwhile falls on all alike.
        found = {"posix_spawn": [], "sh -c exec": [], opener.name: []}
        losses = dict.fromkeys(found, 0)
        share = -(-plan.presses // plan.rounds)
        for _ in range(plan.rounds):
            for name, times in (("posix_spawn", plan.times("spawn_stamp", share, stamp)),
                                ("sh -c exec", plan.times("spawn_stamp", share, SH, "-c", f"exec '{stamp}'")),
                                (opener.name, plan.times("press_keys", "latency", opener.keycode, share))):
                found[name] += times[0]
                losses[name] += times[1]
    rows = [row(name, {"median ms": spread(times)["median"], "p95 ms": spread(times)["p95"], "lost": losses[name]})
            if times else missing(name, f"none of {losses[name]} starts was seen") for name, times in found.items()]
    if all(found.values()):
        rows.append(row("Tavrin − posix_spawn", {
            "median ms": round(spread(found[opener.name])["median"] - spread(found["posix_spawn"])["median"], 3)}))
    return [section(f"Opening an application: press, or start by hand → its first instruction ({share * plan.rounds} "
                    "times each)", COLUMNS, rows)]
