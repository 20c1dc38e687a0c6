"""GNOME Shell as the window manager of an X server, with Files."""
import whole_desktop
from whole_desktop import DesktopCase, Everywhere, NotPossible
from gnome import overview, prefers_dark, show_overview
from machine import PATIENCE, wait_for


class Gnome(Everywhere, DesktopCase):
    editor = ("org.gnome.gedit", "gedit", "gedit")

    @classmethod
    def start_desktop(cls):
        machine = cls.machine
        machine.start_system_bus()
        machine.enter(XDG_CURRENT_DESKTOP="GNOME", XDG_SESSION_DESKTOP="gnome")
        machine.start("gnome-shell", "--x11")
        wait_for(lambda: overview(machine), "the shell with its overview, as it starts", PATIENCE)
        show_overview(machine, False)

    def open_files(self):
        self.machine.start("nautilus", self.folder)
        self.wait(lambda: self.machine.owner("org.gnome.Nautilus"), "Files")

    def test_10_hidden_files(self):
        """Hidden files: the open window of Files shows them, and no longer"""
        self.open_files()
        self.check_hidden_files("nautilus")

    def test_11_restart_file_manager(self):
        """Restart of the file manager: another Files than before"""
        self.open_files()
        self.check_restart("restartFinder", "org.gnome.Nautilus")

    def test_12_dark_mode(self):
        """Dark mode: a libadwaita program that starts now is dark, then light again"""
        self.wait(lambda: prefers_dark() == "False", "the light style")
        for expected in ("True", "False"):
            self.press_action("toggleDarkMode")
            self.wait(lambda: prefers_dark() == expected, f"dark being {expected}")

    def test_13_region(self):
        """Region to the clipboard with gnome-screenshot and the mouse; cancelled with Escape"""
        self.check_region("gnome-screenshot")

    def test_14_window_overview(self):
        """Window overview: it opens"""
        show_overview(self.machine, False)
        self.press_action("openMissionControl")
        self.wait(lambda: overview(self.machine), "the overview")
        show_overview(self.machine, False)

    def test_15_restart_panel(self):
        """Restart of the panel: another GNOME Shell than before, and the shortcuts go on"""
        self.check_restart("restartDock", "org.gnome.Shell")
        wait_for(lambda: overview(self.machine), "the new shell with its overview, as it starts", PATIENCE)
        show_overview(self.machine, False)
        self.test_01_script()

    def test_16_tray(self):
        """The icon is in the panel's tray"""
        raise NotPossible("GNOME Shell has no tray without an extension; starting the program again opens its window")

    def test_17_display_off(self):
        """Display off"""
        raise NotPossible("no X server without hardware can turn its display off; proven on Wayland")


if __name__ == "__main__":
    whole_desktop.main()
