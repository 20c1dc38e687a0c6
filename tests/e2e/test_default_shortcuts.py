"""The two shortcuts of the first start do something sensible, or say what is missing."""
import os
import unittest

import desktop
from tavrin import TestCase, item, press, wait_for, write_shortcuts

CONFIG = os.environ["XDG_CONFIG_HOME"]
BROWSER_KEY, TERMINAL_KEY = "super+k", "super+m"
CHROME_IDS = ("google-chrome", "google-chrome-stable", "com.google.Chrome", "chromium", "chromium-browser",
              "org.chromium.Chromium", "chromium_chromium")


class DefaultShortcuts(TestCase):
    def setUp(self):
        # What the first start writes, but for one key: openbox holds the first one's itself.
        write_shortcuts([item("Google Chrome", "k", action="launchApp", value="com.google.Chrome"),
                         item("Terminal", "m", action="launchApp", value="com.apple.Terminal")])

    def browser(self, name):
        """A stand-in browser, and the file of its calls."""
        program, log = desktop.write_recorder(name)
        desktop.write_entry(self, name, f"{program} %u", "MimeType=x-scheme-handler/https;")
        return log

    def default_browser(self, name, file="mimeapps.list"):
        path = desktop.write(f"{CONFIG}/{file}", f"[Default Applications]\nx-scheme-handler/https={name}.desktop\n")
        self.addCleanup(os.remove, path)

    def without_chrome(self):
        """As on a system without it, whatever this one has."""
        for identifier in CHROME_IDS:
            desktop.write_entry(self, identifier, "false", "Hidden=true")

    def test_chrome_where_it_is_installed(self):
        self.default_browser("other-browser")
        self.browser("other-browser")
        program, log = desktop.write_recorder("google-chrome-program")
        desktop.write_entry(self, "google-chrome", f"{program} %U")
        self.start()
        press(BROWSER_KEY)
        self.assertEqual(desktop.calls(log), ["google-chrome-program"])

    def test_default_browser_where_there_is_no_chrome(self):
        self.without_chrome()
        log = self.browser("stand-in-browser")
        self.default_browser("stand-in-browser")
        self.start()
        press(BROWSER_KEY)
        self.assertEqual(desktop.calls(log), ["stand-in-browser"])

    def test_default_browser_of_the_desktop_that_runs(self):
        self.without_chrome()
        self.browser("any-browser")
        log = self.browser("gnome-browser")
        self.default_browser("any-browser")
        self.default_browser("gnome-browser", "gnome-mimeapps.list")
        self.start(XDG_CURRENT_DESKTOP="GNOME")
        press(BROWSER_KEY)
        self.assertEqual(desktop.calls(log), ["gnome-browser"])

    def test_terminal_that_the_user_has(self):
        program, log = desktop.write_recorder("stand-in-terminal")
        self.start(TERMINAL=program)
        press(TERMINAL_KEY)
        self.assertEqual(desktop.calls(log), ["stand-in-terminal"])

    def test_terminal_that_the_system_has(self):
        _, log = desktop.write_recorder("x-terminal-emulator")
        self.start(TERMINAL=None, PATH=f"{desktop.HOME}/bin:/usr/bin:/bin")
        press(TERMINAL_KEY)
        self.assertEqual(desktop.calls(log), ["x-terminal-emulator"])
        os.remove(f"{desktop.HOME}/bin/x-terminal-emulator")

    def test_one_line_a_press_where_there_is_none(self):
        self.without_chrome()
        program = self.start(TERMINAL=None, PATH="/nonexistent")
        expected = []
        for key, line in ((BROWSER_KEY, "Không mở được com.google.Chrome: chưa cài trình duyệt web nào"),
                          (TERMINAL_KEY, "Không mở được com.apple.Terminal: chưa cài trình dòng lệnh nào"),
                          (TERMINAL_KEY, "Không mở được com.apple.Terminal: chưa cài trình dòng lệnh nào")):
            press(key)
            expected.append(line)
            wait_for(lambda: len(program.output()) >= len(expected), "the line")
            self.assertEqual(program.output(), expected)


if __name__ == "__main__":
    unittest.main(verbosity=2)
