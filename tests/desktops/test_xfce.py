"""Xfce: xfwm4, the panel, the settings daemon, Thunar."""

import whole_desktop
from whole_desktop import DesktopCase, Everywhere
from machine import PATIENCE, run, wait_for


class Xfce(Everywhere, DesktopCase):
    editor = ("org.xfce.mousepad", "mousepad", "mousepad")

    @classmethod
    def start_desktop(cls):
        machine = cls.machine
        machine.enter(XDG_CURRENT_DESKTOP="XFCE")
        machine.start("xfwm4", "--replace")
        cls.set("xsettings", "/Net/ThemeName", "string", "Greybird")
        # Shows names to a screen reader, which its view with icons does not.
        cls.set("thunar", "/last-view", "string", "ThunarDetailsView")
        machine.start("xfsettingsd", "--no-daemon", "--disable-wm-check")
        machine.start("xfce4-panel", "--disable-wm-check")
        for name in ("org.xfce.Panel", "org.xfce.SettingsDaemon"):
            wait_for(lambda: machine.owner(name), name, PATIENCE)

    @staticmethod
    def set(channel, key, kind, value):
        run("xfconf-query", "-c", channel, "-p", key, "-n", "-t", kind, "-s", value)

    def open_thunar(self):
        """Anew: windows that are open keep what they showed."""
        run("thunar", "-q")
        self.wait(lambda: not self.machine.owner("org.xfce.Thunar"), "Thunar ending")
        self.machine.start("thunar", self.folder)

    def test_10_hidden_files(self):
        """Hidden files: Thunar shows them in windows opened afterwards, and no longer"""
        self.check_hidden_files_later(
            "thunar", lambda: run("xfconf-query", "-c", "thunar", "-p", "/last-show-hidden"), self.open_thunar)

    def test_11_restart_file_manager(self):
        """Restart of the file manager: another Thunar than before"""
        self.open_thunar()
        self.check_restart("restartFinder", "org.xfce.Thunar")

    def test_12_dark_mode(self):
        """Dark mode: a GTK program that starts now gets Greybird-dark, then Greybird again"""
        self.check_theme("Greybird", "Greybird-dark")

    def test_13_region(self):
        """Region to the clipboard with xfce4-screenshooter and the mouse; cancelled with Escape"""
        self.check_region("xfce4-screenshooter")

    def test_14_window_overview(self):
        """Window overview: rofi lists the windows"""
        self.check_rofi()

    def test_15_restart_panel(self):
        """Restart of the panel: another xfce4-panel than before, three times"""
        for _ in range(3):
            self.check_restart("restartDock", "org.xfce.Panel")

    def test_16_tray(self):
        """The icon is in the panel's tray"""
        self.check_tray()


if __name__ == "__main__":
    whole_desktop.main()
