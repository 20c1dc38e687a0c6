"""From the press of a key to the first instruction of what it starts, and a key that is held."""
import time
from contextlib import ExitStack

from measuring.daemons import ALL, Sxhkd, Tavrin, Xbindkeys
from measuring.memory import context_rows
from measuring.shell import SH, ZSH, why_not
from measuring.table import at_most, missing, row, section, spread

TIMES = ["median ms", "p95 ms", "lost"]
RATIO = "Tavrin ÷ sxhkd"
CATCH_UP_SECONDS = 0.15


def measure(plan):
    stamp = plan.program("stamp")
    shell_title = "Key press → first instruction of the shell"
    reason = why_not({ZSH: stamp, SH: stamp})
    if reason:
        shell_part = section(shell_title, TIMES, [missing("all programs", reason)])
    else:
        shell_part, _ = press_all(plan, shell_title, "true", stamp)
    script = f"exec '{stamp}'"
    script_part, others = press_all(plan, "Key press → first instruction of a program that a zsh script execs",
                                    script, None, and_then=lambda daemons: held_and_resting(plan, daemons))
    return [shell_part, script_part, *others]


def press_all(plan, title, script, stand_in, and_then=lambda daemons: []):
    """One section of times, and what `and_then` makes of the running programs."""
    with ExitStack() as stack:
        daemons, absent = start_all(plan, script, stand_in, stack)
        times = {daemon.name: [] for daemon in daemons}
        losses = dict.fromkeys(times, 0)
        for turn in range(plan.rounds):
            # Each round begins with another program, so that none is always the one after a change.
            for daemon in daemons[turn % len(daemons):] + daemons[:turn % len(daemons)]:
                found, lost = alone(daemon, lambda: plan.times(
                    "press_keys", "latency", daemon.keycode, -(-plan.presses // plan.rounds)))
                times[daemon.name] += found
                losses[daemon.name] += lost
        more = and_then(daemons)
    presses = -(-plan.presses // plan.rounds) * plan.rounds
    title = f"{title} ({presses} presses each, in {plan.rounds} interleaved rounds)"
    return section(title, TIMES, time_rows(times, losses) + absent), more


def start_all(plan, script, stand_in, stack):
    """The programs that are there, rested and stopped; and a row for each that is not."""
    daemons, absent = [], []
    for kind in ALL:
        reason = kind.why_not()
        if kind is Xbindkeys and not stand_in and not reason:
            reason = why_not({SH: ZSH})
        if reason:
            absent.append(missing(kind.name, reason))
        else:
            daemons.append(stack.enter_context(kind(plan, script, stand_in)).wait_live())
    time.sleep(plan.rest_seconds if not plan.quick else plan.settle_seconds)
    for daemon in daemons:
        daemon.pause()
    return daemons, absent


def alone(daemon, measurement):
    daemon.resume()
    # What the others' presses have left in its queue is handled first.
    time.sleep(CATCH_UP_SECONDS)
    result = measurement()
    daemon.pause()
    return result


def time_rows(times, losses):
    rows, found = [], {}
    for name, values in times.items():
        if not values:
            rows.append(missing(name, f"none of {losses[name]} presses was answered"))
            continue
        found[name] = spread(values)
        rows.append(row(name, {"median ms": found[name]["median"], "p95 ms": found[name]["p95"],
                               "lost": losses[name]}))
    if Tavrin.name not in found or Sxhkd.name not in found:
        return [*rows, missing(RATIO, "one of the two has no figure")]
    ratios = {key: round(found[Tavrin.name][key] / found[Sxhkd.name][key], 3) for key in ("median", "p95")}
    return [*rows, row(RATIO, {"median ms": ratios["median"], "p95 ms": ratios["p95"]},
                       at_most(ratios["median"], 0.5, "median ≤ 0.50"),
                       at_most(ratios["p95"], 0.5, "p95 ≤ 0.50"))]


def held_and_resting(plan, daemons):
    return [held(plan, daemons), section("Memory of the other programs, after all these presses",
                                         *context_rows([daemon for daemon in daemons
                                                        if not isinstance(daemon, Tavrin)]))]


def held(plan, daemons):
    rows = []
    for daemon in daemons:
        count = int(alone(daemon, lambda: plan.run(
            "press_keys", "hold", daemon.keycode, plan.hold_milliseconds))[0])
        aim = {"text": "once", "reached": count == 1} if isinstance(daemon, Tavrin) else None
        rows.append(row(daemon.name, {"fires": count}, aim))
    title = f"A key held for {plan.hold_milliseconds / 1000} s, with auto-repeat"
    return section(title, ["fires"], rows)
