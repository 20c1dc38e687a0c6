"""A key pressed anywhere carries out a system action: through the whole program, with stand-ins for the tools."""
import os
import shutil
import subprocess
import unittest
import uuid

from tavrin import RUNTIME, TestCase, item, lines, mark, press, wait_for, write_shortcuts

REAL = ("gdbus", "gsettings", "setsid", "sleep", "timeout", "grep")


def action(name, key):
    return item(name, key, action="systemAction", value=name)


class SystemActions(TestCase):
    def setUp(self):
        super().setUp()
        self.folder = f"{RUNTIME}/tools-{uuid.uuid4()}"
        self.log = f"{self.folder}.log"
        os.mkdir(self.folder)
        self.addCleanup(shutil.rmtree, self.folder)
        for name in REAL:
            os.symlink(shutil.which(name, path="/usr/bin:/bin"), f"{self.folder}/{name}")

    def stand_in(self, name, more=""):
        with open(f"{self.folder}/{name}", "w") as script:
            script.write(f"#!/bin/sh\nprintf '%s\\n' \"{name} $*\" >> '{self.log}'\n{more}\n")
        os.chmod(f"{self.folder}/{name}", 0o755)

    def start_with_tools(self, **environment):
        return self.start(PATH=self.folder, **environment)

    def wait_called(self, *calls):
        wait_for(lambda: lines(self.log) == list(calls), f"{calls} instead of {lines(self.log)}")

    def test_press_starts_the_desktops_tool(self):
        self.stand_in("rofi")
        write_shortcuts([action("openMissionControl", "k")])
        program = self.start_with_tools()
        press("super+k")
        self.wait_called("rofi -show window")
        self.assertEqual(program.output(), [])

    def test_toggle_pressed_twice_quickly_ends_where_it_began(self):
        write_shortcuts([action("toggleDarkMode", "k")])
        # What the program's tools read and write, and what the test does.
        program = self.start_with_tools(GSETTINGS_BACKEND=None)
        environment = {key: value for key, value in os.environ.items() if key != "GSETTINGS_BACKEND"}
        scheme = lambda: subprocess.run(("gsettings", "get", "org.gnome.desktop.interface", "color-scheme"),
                                        env=environment, capture_output=True, text=True, check=True).stdout.strip()
        self.assertEqual(scheme(), "'default'")
        press("super+k")
        wait_for(lambda: scheme() == "'prefer-dark'", "dark mode")
        press("super+k", "super+k", "super+k")
        wait_for(lambda: scheme() == "'default'", "light mode")
        self.assertEqual(program.output(), [])

    def test_missing_tool_is_said_where_scripts_fail_aloud_and_swallowed_where_programs_do(self):
        write_shortcuts([action("openMissionControl", "k"), action("emptyTrash", "l")])
        program = self.start_with_tools()
        press("super+k")
        press("super+l")
        wait_for(lambda: program.output() == ["AppleScript error: Máy này không có: gio"], "the line")

    def test_action_that_differs_in_letter_case_does_nothing(self):
        fence, path = mark("fence")
        self.stand_in("rofi")
        write_shortcuts([item("typo", "k", action="systemAction", value="OpenMissionControl"),
                         item("fence", "l", value=fence)])
        program = self.start_with_tools()
        self.assert_silent(self.log, ("super+l",), path, "super+k")
        self.assertEqual(program.output(), [])

    def test_hung_tool_holds_neither_another_action_nor_the_end_up(self):
        self.stand_in("swaymsg", "exec sleep 1000")
        self.stand_in("rofi")
        write_shortcuts([action("sleepDisplay", "k"), action("openMissionControl", "l")])
        program = self.start_with_tools(SWAYSOCK="socket")
        press("super+k")
        self.wait_called("swaymsg output * dpms off")
        press("super+l")
        self.wait_called("swaymsg output * dpms off", "rofi -show window")
        self.assertEqual(program.end(), 0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
