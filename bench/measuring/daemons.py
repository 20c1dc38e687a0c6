"""The three programs that turn a key into the start of a script, each with one combination of its own.

While one is measured, the other two are stopped (SIGSTOP) rather than ended: only one can be scheduled,
yet each is in the state in which it spends its days, long past its start, and no round begins with the
page faults of a fresh process. The combinations differ because two programs cannot hold the same one; the
keys lie side by side and cost the X server the same.
"""
import json
import os
import shutil
import signal
import subprocess
import time
import uuid
from pathlib import Path

from measuring.shell import SH, ZSH, instead

COMMAND_KEY = 0x100


class Daemon:
    """A running hotkey program whose one combination, Super and `keycode`, runs `script`."""
    name = ""
    package = ""
    keycode = 0
    # The shells that it starts scripts with.
    shells = (ZSH,)

    def __init__(self, plan, script, stand_in=None):
        self.plan = plan
        self.script = script
        replacements = {shell: stand_in for shell in self.shells} if stand_in else self.same_shell()
        self.process = subprocess.Popen([*instead(replacements), *self.command()], stdin=subprocess.DEVNULL,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                                        env={**os.environ, "SXHKD_SHELL": ZSH, "SHELL": ZSH})

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.resume()
        self.process.terminate()
        self.process.wait(10)

    @classmethod
    def why_not(cls):
        return None if not cls.package or shutil.which(cls.package) else f"{cls.package} is not installed"

    def same_shell(self):
        return {}

    def command(self):
        raise NotImplementedError

    def wait_live(self):
        """Until a press is answered. Every script here ends in a stamp."""
        limit = time.monotonic() + 15
        while self.plan.times("press_keys", "latency", self.keycode, 1)[1]:
            if time.monotonic() > limit:
                raise RuntimeError(f"{self.name} answers no press")
        return self

    def pause(self):
        self.process.send_signal(signal.SIGSTOP)

    def resume(self):
        self.process.send_signal(signal.SIGCONT)

    def write(self, name, text):
        path = Path(os.environ["XDG_CONFIG_HOME"]) / name
        path.write_text(text, "utf-8")
        return str(path)


class Tavrin(Daemon):
    name = "Tavrin"
    keycode = 71  # F5, virtual key 96

    action = "shellScript"

    def command(self):
        write_shortcut(self.script, self.action)
        return [str(self.plan.build / "Tavrin")]


class VolumeKey(Tavrin):
    """The same program; its combination raises the volume."""
    action = "systemAction"


class QuickText(Tavrin):
    """The same program; its combination pastes a text."""
    action = "quickText"

    def wait_live(self):
        limit = time.monotonic() + 15
        while self.plan.times("time_quick_text", self.keycode, 1)[1]:
            if time.monotonic() > limit:
                raise RuntimeError("no text arrives")
        return self


class Sxhkd(Daemon):
    name = package = "sxhkd"
    keycode = 72  # F6

    def command(self):
        return ["sxhkd", "-c", self.write("sxhkdrc", f"super + F6\n\t{self.script}\n")]


class Xbindkeys(Daemon):
    """Starts every command by system(), which is /bin/sh."""
    name = package = "xbindkeys"
    keycode = 73  # F7
    shells = (ZSH, SH)

    def same_shell(self):
        # Its scripts shall run in the shell that the others use, without a second one around it.
        return {SH: ZSH}

    def command(self):
        return ["xbindkeys", "-n", "-f", self.write("xbindkeysrc", f'"{self.script}"\n  Mod4 + F7\n')]


ALL = (Tavrin, Sxhkd, Xbindkeys)


def write_shortcut(value, action="shellScript"):
    folder = Path(os.environ["XDG_DATA_HOME"]) / "Tavrin"
    folder.mkdir(parents=True, exist_ok=True)
    item = {"id": str(uuid.uuid4()).upper(), "name": "Stamp", "keyCode": 96, "modifiers": COMMAND_KEY,
            "actionType": action, "actionValue": value, "isEnabled": True, "createdAt": 800000000.5}
    (folder / "shortcuts.json").write_text(json.dumps([item]), "utf-8")
