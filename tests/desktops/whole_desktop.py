"""A whole desktop around the program: starts it, presses keys on it, and asks its programs what came of it.

Every test_*.py here is one desktop. It runs inside tests/support/private-desktop, which gives it a home, a bus and
an X server of its own and ends whatever is left; run.py runs them all and writes down what they found.
"""
import json
import os
import shutil
import signal
import sys
import time
import types
import unittest

from machine import HOME, PATIENCE, RUNTIME, Machine, is_running, run, soon
from screen import (active_window, clipboard_picture, drag, gtk_theme, has_input_focus, managed_windows, raise_window,
                    texts_in, windows)

import tavrin
from tavrin import CMD, CONTROL, OPTION, item, lines, mark, wait_for

# No desktop has letters with these three.
MODIFIERS = CONTROL | OPTION | CMD
# Key of each action: the letter, and its code in the shortcuts file.
SYSTEM_ACTIONS = {"toggleHiddenFiles": ("h", 4), "restartFinder": ("f", 3), "restartDock": ("d", 2),
                  "openMissionControl": ("m", 46), "toggleDarkMode": ("t", 17), "screenshotToClipboard": ("s", 1),
                  "sleepDisplay": ("e", 14), "lockScreen": ("l", 37), "sleepMac": ("z", 6), "emptyTrash": ("b", 11)}
SCRIPT, LAUNCH, TEXT = ("k", 40), ("o", 31), ("p", 35)
QUICK_TEXT = "Xin chào, đây là Tavrin."


class NotPossible(unittest.SkipTest):
    """What this desktop, or this machine, cannot do; the message is the reason."""


class DesktopCase(unittest.TestCase):
    """One desktop, and the program on it from the first test to the last."""

    #: Desktop file, window class (part of it) and program of the editor.
    editor = ("", "", "")

    @classmethod
    def setUpClass(cls):
        cls.machine = Machine(cls.addClassCleanup)
        cls.folder = f"{HOME}/thu-muc"
        os.makedirs(cls.folder)
        for name in ("thay.txt", ".an.txt"):
            with open(f"{cls.folder}/{name}", "w"):
                pass
        cls.script, cls.script_log = mark("desktop")
        cls.start_desktop()
        cls.start_program()

    @classmethod
    def start_desktop(cls):
        raise NotImplementedError

    @classmethod
    def start_program(cls):
        combinations = [item(action, code, MODIFIERS, "systemAction", action)
                        for action, (_, code) in SYSTEM_ACTIONS.items()]
        payload = json.dumps({"text": QUICK_TEXT, "mode": "paste", "restoreClipboard": True})
        combinations += [item("script", SCRIPT[1], MODIFIERS, value=cls.script),
                         item("launch", LAUNCH[1], MODIFIERS, "launchApp", cls.editor[0]),
                         item("text", TEXT[1], MODIFIERS, "quickText", payload)]
        tavrin.write_shortcuts(combinations)
        cls.program = tavrin.Program(types.SimpleNamespace(addCleanup=cls.addClassCleanup)).wait_ready()

    def press(self, letter):
        tavrin.press(f"ctrl+alt+super+{letter}")

    def press_action(self, action):
        """Presses when what was pressed before has done its work: meanwhile a press for the same action may count
        as one with it."""
        self.wait(lambda: not is_running("zsh"), "the shell of the action before ending")
        self.press(SYSTEM_ACTIONS[action][0])

    def wait(self, condition, what, seconds=PATIENCE):
        """What the program printed belongs to the reason why nothing happened."""
        before = len(self.program.output())
        try:
            return wait_for(condition, what, seconds)
        except AssertionError as error:
            told = self.program.output()[before:] or self.program.output()
            raise AssertionError(f"{error}; the program printed: {told}") from None

    # Checks that desktops have in common; a test says which of its programs is asked.

    def check_restart(self, action, name):
        """The owner of the bus name is another one after the press than before."""
        before = self.wait(lambda: self.machine.owner(name), f"{name} being there")
        self.press_action(action)
        self.wait(lambda: self.machine.owner(name) not in (None, before), f"{name} being there anew")

    def check_hidden_files(self, application):
        """Hidden files appear in the open window at the first press and go at the second."""
        def shown():
            return {"thay.txt", ".an.txt"} & texts_in(application)
        self.wait(lambda: shown() == {"thay.txt"}, f"the visible file in {application}")
        for expected in ({"thay.txt", ".an.txt"}, {"thay.txt"}):
            self.press_action("toggleHiddenFiles")
            self.wait(lambda: shown() == expected, f"{application} showing {sorted(expected)}")

    def check_hidden_files_later(self, application, setting, open_window):
        """The same where windows keep what they showed: setting() tells when the change can be seen in a new one."""
        for hidden in (True, False):
            self.press_action("toggleHiddenFiles")
            self.wait(lambda: setting() == str(hidden).lower(), f"the setting being {hidden}")
            open_window()
            expected = {"thay.txt", ".an.txt"} if hidden else {"thay.txt"}
            self.wait(lambda: {"thay.txt", ".an.txt"} & texts_in(application) == expected,
                      f"{application} showing {sorted(expected)}")

    def check_theme(self, light, dark):
        """A GTK program that starts now gets the dark theme after a press, and the light one after the next."""
        self.wait(lambda: gtk_theme() == light, "the light theme")
        for theme in (dark, light):
            self.press_action("toggleDarkMode")
            self.wait(lambda: gtk_theme() == theme, f"the theme {theme}")

    def check_tray(self):
        """The program's icon is an item of the StatusNotifierItem tray, or a window inside the XEmbed tray: where a
        panel has both, the one that was there first."""
        watcher = "org.kde.StatusNotifierWatcher"

        def registered():
            items = self.machine.read_property(watcher, "/StatusNotifierWatcher", watcher, "RegisteredStatusNotifierItems")
            # Each one is a connection's name, with or without a path behind it.
            return any(self.machine.process(entry.split("/")[0]) == self.program.process.pid for entry in items or ())

        def embedded():
            # The toolkit gives this type to its icon and to no other window of ours that can be seen.
            return any("_KDE_NET_WM_WINDOW_TYPE_OVERRIDE" in run("xprop", "-id", number, "_NET_WM_WINDOW_TYPE")
                       for number in windows("Tavrin"))
        self.wait(lambda: registered() or embedded(), "the program's icon in the tray")

    def check_region(self, tool, confirm=None):
        """A region drawn with the mouse is on the clipboard; one that is cancelled leaves it alone."""
        def drawn():
            size = clipboard_picture()
            # The frame that the tool draws may be in the picture or not.
            return size if size and 198 <= size[0] <= 204 and 98 <= size[1] <= 104 else None
        for seconds in (0.3, 1, 2, 4):
            # Nothing tells when a tool is ready for the mouse; to one that was not, the end of the drag is a click,
            # which cancels it or chooses a window. The hand takes longer each time.
            self.start_region_tool(tool)
            time.sleep(seconds)
            drag(100, 100, 300, 200)
            if confirm:
                run("xdotool", "key", confirm)
            size = soon(drawn)
            if size:
                break
            self.cancel_region_tool(tool)
        self.assertIsNotNone(size, f"on the clipboard: {clipboard_picture()}; the program printed: {self.program.output()}")
        self.wait(lambda: not is_running(tool), f"{tool} ending")
        self.start_region_tool(tool)
        self.cancel_region_tool(tool)
        self.assertEqual(clipboard_picture(), size, "a cancelled selection leaves the clipboard alone")

    def start_region_tool(self, tool):
        self.press_action("screenshotToClipboard")
        self.wait(lambda: is_running(tool), f"{tool} starting")

    def cancel_region_tool(self, tool):
        def cancelled():
            run("xdotool", "key", "Escape")
            return soon(lambda: not is_running(tool), 0.5)
        self.wait(cancelled, f"{tool} being cancelled")

    def check_rofi(self):
        self.press_action("openMissionControl")
        self.wait(lambda: windows("Rofi"), "rofi's list of windows")
        run("xdotool", "key", "Escape")
        self.wait(lambda: not windows("Rofi"), "rofi going")


class Everywhere:
    """What holds on every desktop with an X server."""

    def test_01_script(self):
        """A press runs a script while a program of the desktop has the focus"""
        self.open_editor("script.txt")
        tavrin.press("a")
        before = len(lines(self.script_log))
        self.press(SCRIPT[0])
        self.wait(lambda: len(lines(self.script_log)) == before + 1, "the script")

    def test_02_launch_and_raise(self):
        """An application is launched with the focus, and brought to the front again"""
        _, name, program = self.editor
        self.close_editor()
        raise_window(tavrin.TITLE)
        self.press(LAUNCH[0])
        self.wait(lambda: has_input_focus(name), f"{program} opening with the focus")
        first = active_window().id
        raise_window(tavrin.TITLE)
        self.press(LAUNCH[0])
        self.wait(lambda: has_input_focus(name), f"{program} coming to the front")
        self.assertEqual(active_window().id, first, "no second window")
        self.close_editor()

    def test_03_quick_text(self):
        """A quick text is pasted into the desktop's editor"""
        path = self.open_editor("text.txt")
        self.press(TEXT[0])

        def saved():
            run("xdotool", "key", "ctrl+s")
            time.sleep(0.5)
            return "".join(lines(path)) == QUICK_TEXT
        self.wait(saved, "the text in the saved file")
        self.close_editor()

    def test_04_empty_trash(self):
        """The trash is emptied"""
        path = f"{HOME}/bo-di.txt"
        with open(path, "w"):
            pass
        run("gio", "trash", path)
        trash = f"{os.environ['XDG_DATA_HOME']}/Trash/files"
        self.assertEqual(os.listdir(trash), ["bo-di.txt"])
        self.press_action("emptyTrash")
        self.wait(lambda: os.listdir(trash) == [], "the trash being empty")

    def open_editor(self, name):
        """The editor with an empty file of this name has the focus; returns the file's path."""
        path = f"{HOME}/{name}"
        with open(path, "w"):
            pass
        self.close_editor()
        for _ in range(3):
            self.machine.start(self.editor[2], path, log="editor")
            # One that is just ending may have taken the request with it.
            if soon(lambda: any(name in text for _, text in managed_windows()), 15):
                break
        raise_window(name)
        self.wait(lambda: has_input_focus(name), "the editor having the focus")
        return path

    def close_editor(self):
        """Ends every editor. One that only lost its window would still answer for the next one, and go."""
        def gone():
            for number, text in managed_windows():
                if self.editor[1].lower() in text.lower():
                    run("xdotool", "windowkill", number)
            return not is_running(self.editor[2])
        self.wait(gone, "the editor ending")


class Recorder(unittest.TextTestResult):
    """Leaves a line for each check in the file that $TAVRIN_DESKTOPS_RESULTS names."""

    def record(self, test, outcome, detail=""):
        path = os.environ.get("TAVRIN_DESKTOPS_RESULTS")
        if not path:
            return
        title = (test.shortDescription() if hasattr(test, "shortDescription") else None) or str(test)
        with open(path, "a") as file:
            file.write(json.dumps({"check": title, "outcome": outcome, "detail": detail}) + "\n")

    @staticmethod
    def last_line(error):
        return str(error[1]).strip().splitlines()[0] if str(error[1]).strip() else error[0].__name__

    def addSuccess(self, test):
        super().addSuccess(test)
        self.record(test, "passed")

    def addFailure(self, test, err):
        super().addFailure(test, err)
        self.record(test, "failed", self.last_line(err))

    def addError(self, test, err):
        super().addError(test, err)
        self.record(test, "failed", self.last_line(err))

    def addSkip(self, test, reason):
        super().addSkip(test, reason)
        self.record(test, "not possible", reason)


def main():
    # Each check waits by itself; this is for what nobody thought of.
    signal.signal(signal.SIGALRM, lambda *_: sys.exit("this desktop took longer than nine minutes"))
    signal.alarm(540)
    status = unittest.main(verbosity=2, exit=False,
                           testRunner=unittest.TextTestRunner(resultclass=Recorder, verbosity=2)).result
    if not status.wasSuccessful():
        # The folder goes when private-desktop ends.
        keep = os.environ.get("TAVRIN_DESKTOPS_LOGS")
        if keep:
            for name in os.listdir(RUNTIME):
                if name.endswith(".log") or name.startswith("output-"):
                    shutil.copy(f"{RUNTIME}/{name}", keep)
    sys.exit(not status.wasSuccessful())
