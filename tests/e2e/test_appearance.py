"""The running program is light or dark with the desktop, from the first moment that its window is on screen."""
import os
import signal
import subprocess
import time
import unittest

import gi

from tavrin import RUNTIME, Program, TestCase, close_window, wait_for, window_id

gi.require_version("Gdk", "3.0")
from gi.repository import Gdk  # noqa: E402

SUPPORT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support")
MIDDLE_GRAY = 128
# On the screen of the private desktop, in the middle of which the window opens.
HEADER = (290, 140)


def brightness():
    """Of the screen where the header of the window opens, 0 to 255; that of an empty desktop is 0."""
    return Gdk.pixbuf_get_from_window(Gdk.get_default_root_window(), *HEADER, 1, 1).get_pixels()[0]


class Appearance(TestCase):
    def start_portal(self, scheme):
        portal = subprocess.Popen((f"{SUPPORT}/settings_portal.py", scheme), stdin=subprocess.PIPE,
                                  stdout=subprocess.PIPE, text=True)
        self.addCleanup(portal.wait)
        self.addCleanup(portal.stdout.close)
        self.addCleanup(portal.stdin.close)
        self.assertEqual(portal.stdout.readline(), "READY\n")
        return portal

    def choose(self, portal, scheme):
        portal.stdin.write(scheme + "\n")
        portal.stdin.flush()

    def wait_dark(self, is_dark):
        wait_for(lambda: (brightness() < MIDDLE_GRAY) == is_dark, f"a window that is dark: {is_dark}")

    def test_follows_the_portal(self):
        portal = self.start_portal("dark")
        program = self.start()
        self.wait_dark(True)
        self.choose(portal, "light")
        self.wait_dark(False)
        self.choose(portal, "dark")
        self.wait_dark(True)
        # Also while it is hidden.
        close_window()
        self.choose(portal, "none")
        subprocess.run((os.environ["TAVRIN"],), check=True, timeout=10)
        wait_for(window_id, "the window")
        self.wait_dark(False)
        self.assertEqual(program.output(), [])

    def start_settings_manager(self, theme):
        config = f"{RUNTIME}/xsettingsd"
        manager = None

        def choose(name):
            with open(config, "w") as file:
                file.write(f'Net/ThemeName "{name}"\n')
            if manager:
                manager.send_signal(signal.SIGHUP)
        choose(theme)
        manager = subprocess.Popen(("xsettingsd", "--config", config), stderr=subprocess.DEVNULL)
        self.addCleanup(manager.wait)
        self.addCleanup(manager.terminate)
        wait_for(lambda: theme in subprocess.run("dump_xsettings", capture_output=True, text=True).stdout,
                 "the settings manager")
        return choose

    def test_is_never_light_with_a_dark_theme(self):
        choose = self.start_settings_manager("Greybird-dark")
        self.assertEqual(brightness(), 0)
        for _ in range(3):
            program = Program(self)
            wait_for(brightness, "the window")
            limit = time.monotonic() + 0.2
            while time.monotonic() < limit:
                self.assertLess(brightness(), MIDDLE_GRAY)
            self.assertEqual(program.end(), 0)
            wait_for(lambda: brightness() == 0, "an empty desktop")
        program = self.start()
        choose("Greybird")
        self.wait_dark(False)
        choose("Greybird-dark")
        self.wait_dark(True)
        self.assertEqual(program.output(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
