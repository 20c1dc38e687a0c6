"""From a press on a volume shortcut to the changed level, on a PulseAudio whose only output is nobody's: the
whole program, and the helper program by itself."""
import os
import shutil
import subprocess
import time

from measuring.daemons import VolumeKey
from measuring.memory import COLUMNS, sample, wait_for, window
from measuring.table import at_most, missing, row, section, spread

TIMES = ["median ms", "p95 ms", "steps a second"]
# From silence to the full level.
PRESSES = 10
BURST = 20
SINK = "bench"

# Milliseconds: fingers drum no faster than twenty times a second.
MOST_FOR_A_STEP = 50


class SoundServer:
    def __enter__(self):
        self.process = subprocess.Popen(
            ("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--high-priority=no", "--realtime=no",
             f"--load=module-null-sink sink_name={SINK}", "--load=module-native-protocol-unix"),
            stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        wait_for(lambda: pactl("info"), "the sound server's start")
        return self

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(10)


class Helper:
    """A running tavrin-sound."""

    def __init__(self, plan):
        self.process = subprocess.Popen(plan.build / "tavrin-sound", stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, bufsize=0)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.process.stdin.close()
        self.process.wait(10)
        self.process.stdout.close()

    def change(self, steps):
        """Asks for all steps at once and waits for all answers: the server has changed the level by then."""
        self.process.stdin.write(steps)
        answers = b""
        while answers.count(b"\n") < len(steps):
            piece = os.read(self.process.stdout.fileno(), 4096)
            if not piece or (answers + piece).strip():
                raise RuntimeError(f"tavrin-sound failed: {(answers + piece).decode()}")
            answers += piece


def pactl(*words):
    return subprocess.run(("pactl", *words), capture_output=True).returncode == 0


def timed(action):
    start = time.perf_counter_ns()
    action()
    return (time.perf_counter_ns() - start) / 1e6


def measure(plan):
    title = "Changing the volume, from asking the helper to the changed level (PulseAudio)"
    if not shutil.which("pulseaudio") or not shutil.which("pactl"):
        return [section(title, TIMES, [missing("all steps", "PulseAudio is not installed")])]
    with SoundServer():
        pactl("set-sink-volume", SINK, "50%")
        started = [first_step(plan, step) for _ in range(plan.starts) for step in (b"-", b"+")]
        with Helper(plan) as helper:
            steps = [timed(lambda: helper.change(step)) for _ in range(plan.presses) for step in (b"-", b"+")]
            bursts = [burst(helper, step) for _ in range(plan.starts) for step in (b"-", b"+")]
            memory = row("after these steps", sample(helper.process.pid))
        pressed = whole_program(plan)
    keys = section(f"Changing the volume, from the first of {PRESSES} presses to the last one's level (PulseAudio, asked "
                   "by pactl every few ms)", TIMES, [result("the whole program", pressed, PRESSES)])
    rows = [result("first step, the helper's start included", started, 1),
            result("each step that follows", steps, 1, at_most(spread(steps)["p95"], MOST_FOR_A_STEP,
                                                               f"p95 ≤ {MOST_FOR_A_STEP} ms")),
            result(f"{BURST} steps at once", bursts, BURST)]
    return [keys, section(title, TIMES, rows), section("Memory of tavrin-sound, while it runs", COLUMNS, [memory])]


def level():
    return subprocess.run(("pactl", "get-sink-volume", SINK), capture_output=True, text=True).stdout


def whole_program(plan):
    times = []
    with VolumeKey(plan, "volumeUp") as program:
        wait_for(window, "the window")
        for _ in range(plan.starts):
            pactl("set-sink-volume", SINK, "0%")
            start = int(plan.run("press_keys", "taps", program.keycode, PRESSES)[0])
            wait_for(lambda: "100%" in level(), "the full level")
            times.append((time.monotonic_ns() - start) / 1e6)
    return times


def first_step(plan, step):
    start = time.perf_counter_ns()
    with Helper(plan) as helper:
        helper.change(step)
        return (time.perf_counter_ns() - start) / 1e6


def burst(helper, step):
    """From one end of the scale to the other, and on."""
    return timed(lambda: helper.change(step * BURST))


def result(label, values, count, aim=None):
    found = spread(values)
    return row(label, {"median ms": found["median"], "p95 ms": found["p95"],
                       "steps a second": round(1000 * count / found["median"])}, aim)
