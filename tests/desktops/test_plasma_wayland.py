"""KWin as a Wayland compositor without a screen, with plasmashell and Dolphin. The program is a client of its
XWayland."""
import os
import shutil

from gi.repository import GLib

import whole_desktop
from whole_desktop import SCRIPT, DesktopCase, NotPossible
from machine import HOME, PATIENCE, lines, processes, wait_for
from plasma import PlasmaChecks
from screen import raise_window
from tavrin import TITLE


class PlasmaWayland(PlasmaChecks, DesktopCase):
    @classmethod
    def start_desktop(cls):
        machine = cls.machine
        machine.start_system_bus()
        os.environ.pop("DISPLAY", None)
        cls.enter_plasma(XDG_SESSION_TYPE="wayland", WAYLAND_DISPLAY="tavrin-kwin")
        # A copy has no file capabilities, which keep root in a container from starting the original.
        compositor = shutil.copy(shutil.which("kwin_wayland"), f"{HOME}/kwin_wayland")
        machine.start(compositor, "--virtual", "--width", "1280", "--height", "800", "--no-lockscreen", "--xwayland",
                      "--socket", "tavrin-kwin")
        server = wait_for(lambda: processes("Xwayland"), "XWayland", PATIENCE)[0]
        machine.enter(DISPLAY=server[1])
        cls.start_plasma()

    def press(self, letter):
        """XWayland takes keys for its clients only while one of them has the focus."""
        raise_window(TITLE)
        super().press(letter)

    def test_01_script(self):
        """A press while a window of XWayland has the focus runs a script"""
        self.press(SCRIPT[0])
        self.wait(lambda: lines(self.script_log), "the script")

    def test_02_press_elsewhere(self):
        """A press while a Wayland window has the focus"""
        raise NotPossible("the program takes its keys from the X server, which sees only its own clients' keys")

    def shows_hidden(self):
        return self.machine.read_property(self.dolphin(), "/dolphin/Dolphin_1/actions/show_hidden_files",
                                          "org.qtproject.Qt.QAction", "checked")

    def test_10_hidden_files(self):
        """Hidden files: the choice in the menu of Dolphin's open window is on, and off again"""
        # Its list cannot be asked: a window that is covered draws nothing here.
        self.open_dolphin()
        self.wait(lambda: self.shows_hidden() is False, "the choice being off")
        for expected in (True, False):
            self.press_action("toggleHiddenFiles")
            self.wait(lambda: self.shows_hidden() is expected, f"the choice being {expected}")
        self.end_dolphin()

    def test_12_dark_mode(self):
        """Dark mode: the color scheme is the dark one, then the light one again"""
        for scheme in ("BreezeDark", "BreezeLight"):
            self.press_action("toggleDarkMode")
            self.wait(lambda: self.color_scheme() == scheme, f"the scheme {scheme}")

    def close_overview(self):
        # It holds the keyboard of every client, and no key gets there from XWayland.
        self.machine.call("org.kde.kglobalaccel", "/component/kwin", "org.kde.kglobalaccel.Component", "invokeShortcut",
                          GLib.Variant("(s)", ("Overview",)))

    def test_17_display_off(self):
        """Display off"""
        raise NotPossible("kscreen-doctor --dpms off does not end on the screen of a KWin without hardware")


if __name__ == "__main__":
    whole_desktop.main()
