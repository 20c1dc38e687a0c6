"""Drives the built program from outside: starts it, presses keys, reads what it prints."""
import json
import os
import re
import signal
import subprocess
import time
import unittest
import uuid

PROGRAM = os.environ["TAVRIN"]
DATA = os.environ["XDG_DATA_HOME"]
SHORTCUTS = f"{DATA}/Tavrin/shortcuts.json"
RUNTIME = os.environ["XDG_RUNTIME_DIR"]
TITLE = "Tavrin - Trình Quản Lý Phím Tắt Toàn Cục"

CMD, SHIFT, OPTION, CONTROL = 0x100, 0x200, 0x800, 0x1000
KEY = {"k": 40, "l": 37, "m": 46, "a": 0, "v": 9, "F5": 96}


def wait_for(condition, what, seconds=15):
    """The condition's first true value; fails if there is none in time."""
    limit = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > limit:
            raise AssertionError(f"{what() if callable(what) else what} did not happen within {seconds} s")
        time.sleep(0.01)


def running(program):
    """Processes that run the program, whichever file that was when they started."""
    found = []
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                path = os.readlink(f"/proc/{entry}/exe").removesuffix(" (deleted)")
            except OSError:
                continue
            if path == program:
                found.append(int(entry))
    return found


def item(name, key, modifiers=CMD, action="shellScript", value="true", enabled=True):
    return {"id": str(uuid.uuid4()).upper(), "name": name, "keyCode": KEY.get(key, key), "modifiers": modifiers,
            "actionType": action, "actionValue": value, "isEnabled": enabled, "createdAt": 800000000.5}


def write_shortcuts(items):
    os.makedirs(os.path.dirname(SHORTCUTS), exist_ok=True)
    with open(SHORTCUTS, "w") as file:
        json.dump(items, file)


def read_shortcuts():
    with open(SHORTCUTS) as file:
        return json.load(file)


def mark(name):
    """A script that leaves a line in a file, and the file."""
    path = f"{RUNTIME}/{name}-{uuid.uuid4()}.mark"
    return f"print -r -- pressed >> '{path}'", path


def lines(path):
    try:
        with open(path) as file:
            return file.read().splitlines()
    except FileNotFoundError:
        return []


def press(*keys):
    subprocess.run(("xdotool", "key", *keys), check=True)


def window_id():
    """Native id of the visible main window, or None."""
    found = subprocess.run(("xdotool", "search", "--onlyvisible", "--name", f"^{TITLE}$"),
                           capture_output=True, text=True).stdout.split()
    return int(found[0]) if found else None


def close_window():
    """Closes the window as a click on its frame's button does. Not by the window manager's own keys: openbox
    lets go of them for a moment whenever the keyboard that was last pressed is another one."""
    subprocess.run(("wmctrl", "-i", "-c", str(window_id())), check=True)
    wait_for(lambda: window_id() is None, "the window hiding")


def property_of(window, name):
    return subprocess.run(("xprop", "-id", str(window), name), capture_output=True, text=True).stdout


def is_free(key, modifiers="mod4"):
    """True if another program can take the combination now."""
    return subprocess.run((os.environ["TAVRIN_BUILD"] + "/tests/can_grab", str(key), modifiers)).returncode == 0


class Program:
    """A running Tavrin; ends with the test."""

    def __init__(self, case, program=PROGRAM, **environment):
        self.log = f"{RUNTIME}/output-{uuid.uuid4()}"
        env = {key: value for key, value in {**os.environ, **environment}.items() if value is not None}
        with open(self.log, "w") as output:
            self.process = subprocess.Popen((program,), env=env, stdout=output, stderr=subprocess.STDOUT)
        case.addCleanup(self.kill)

    def output(self):
        return [line for line in lines(self.log) if not is_noise(line)]

    def wait_ready(self):
        """Hotkeys are live before the window is there."""
        wait_for(window_id, "the window")
        return self

    def end(self, number=signal.SIGTERM):
        self.process.send_signal(number)
        return self.process.wait(10)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()


def is_noise(line):
    # The private desktop has no X input method and no runtime folder of a real session.
    return bool(re.search(r"QStandardPaths: ", line))


class TestCase(unittest.TestCase):
    def setUp(self):
        write_shortcuts([])

    def start(self, **environment):
        return Program(self, **environment).wait_ready()

    def assert_fires(self, path, *keys, times=1):
        before = len(lines(path))
        press(*keys)
        wait_for(lambda: len(lines(path)) >= before + times, f"{keys} running its script")

    def assert_silent(self, path, fence_keys, fence_path, *keys):
        """What must not fire does not: a press after it that does is the proof that it had its chance."""
        before = len(lines(path))
        press(*keys)
        self.assert_fires(fence_path, *fence_keys)
        self.assertEqual(len(lines(path)), before)
