"""GNOME Shell as a Wayland compositor without a screen, with Files. The program is a client of its XWayland."""
import glob
import os
import re

import whole_desktop
from whole_desktop import SCRIPT, DesktopCase, NotPossible
from gnome import overview, prefers_dark, show_overview
from machine import PATIENCE, RUNTIME, lines, wait_for
from screen import raise_window
from tavrin import TITLE


class GnomeWayland(DesktopCase):
    editor = ("org.gnome.gedit", "gedit", "gedit")

    @classmethod
    def start_desktop(cls):
        machine = cls.machine
        machine.start_system_bus()
        os.environ.pop("DISPLAY", None)
        machine.enter(XDG_CURRENT_DESKTOP="GNOME", XDG_SESSION_DESKTOP="gnome", XDG_SESSION_TYPE="wayland",
                      WAYLAND_DISPLAY="tavrin-gnome")
        shell = machine.start("gnome-shell", "--headless", "--wayland", "--virtual-monitor", "1280x800",
                              "--wayland-display", "tavrin-gnome")
        wait_for(lambda: overview(machine), "the shell with its overview, as it starts", PATIENCE)
        # It keeps the socket of its X server for itself until a client comes.
        with open(f"/proc/{shell.pid}/net/unix") as sockets:
            told = sockets.read()
        cls.enter_xwayland(shell, told)
        show_overview(machine, False)

    @classmethod
    def enter_xwayland(cls, shell, sockets):
        inodes = {re.search(r"\d+", os.readlink(link))[0] for link in glob.glob(f"/proc/{shell.pid}/fd/*")
                  if os.path.islink(link) and os.readlink(link).startswith("socket:")}
        numbers = [line.rpartition("X")[2] for line in sockets.splitlines()
                   if "/tmp/.X11-unix/X" in line and line.split()[6] in inodes]
        authority = glob.glob(f"{RUNTIME}/.mutter-Xwaylandauth.*")
        cls.machine.enter(DISPLAY=f":{numbers[0]}", XAUTHORITY=authority[0])

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

    def power(self):
        return self.machine.read_property("org.gnome.Mutter.DisplayConfig", "/org/gnome/Mutter/DisplayConfig",
                                          "org.gnome.Mutter.DisplayConfig", "PowerSaveMode")

    def test_10_hidden_files(self):
        """Hidden files: the open window of Files shows them, and no longer"""
        self.machine.start("nautilus", self.folder)
        self.check_hidden_files("nautilus")

    def test_11_restart_file_manager(self):
        """Restart of the file manager: another Files than before"""
        self.check_restart("restartFinder", "org.gnome.Nautilus")

    def test_12_dark_mode(self):
        """Dark mode: a libadwaita program that starts now is dark, then light again"""
        self.wait(lambda: prefers_dark() == "False", "the light style")
        for expected in ("True", "False"):
            self.press_action("toggleDarkMode")
            self.wait(lambda: prefers_dark() == expected, f"dark being {expected}")

    def test_14_window_overview(self):
        """Window overview: it opens"""
        show_overview(self.machine, False)
        self.press_action("openMissionControl")
        self.wait(lambda: overview(self.machine), "the overview")
        show_overview(self.machine, False)

    def test_15_restart_panel(self):
        """Restart of the panel: nothing happens, since the shell is the session; the next action does its work"""
        before = self.machine.owner("org.gnome.Shell")
        self.press_action("restartDock")
        self.test_14_window_overview()
        self.assertEqual(self.machine.owner("org.gnome.Shell"), before)

    def test_17_display_off(self):
        """Display off: the compositor's power save mode is off"""
        self.wait(lambda: self.power() == 0, "the display being on")
        self.press_action("sleepDisplay")
        self.wait(lambda: self.power() == 3, "the display being off")

    def test_18_lock(self):
        """Lock: the login manager is asked to lock our session (a stand-in for it)"""
        self.press_action("lockScreen")
        self.wait(lambda: any(" LockSession " in line or line.endswith(" Lock") for line in self.machine.login_calls()), "the call")

    def test_19_sleep(self):
        """Sleep: the login manager is asked to suspend (a stand-in for it)"""
        self.press_action("sleepMac")
        self.wait(lambda: any(" Suspend " in line for line in self.machine.login_calls()), "the call")


if __name__ == "__main__":
    whole_desktop.main()
