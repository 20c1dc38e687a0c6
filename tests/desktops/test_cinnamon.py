"""Cinnamon: its shell, which is the window manager and the panel, its settings daemon, Nemo."""
import whole_desktop
from whole_desktop import DesktopCase, Everywhere
from machine import PATIENCE, run, wait_for


class Cinnamon(Everywhere, DesktopCase):
    editor = ("org.gnome.gedit", "gedit", "gedit")

    @classmethod
    def start_desktop(cls):
        machine = cls.machine
        machine.start_system_bus()
        machine.enter(XDG_CURRENT_DESKTOP="X-Cinnamon")
        run("gsettings", "set", "org.cinnamon.desktop.interface", "gtk-theme", "Greybird")
        machine.start("csd-xsettings")
        # What its session starts, for trays by StatusNotifierItem.
        machine.start("/usr/libexec/xapps/sn-watcher/xapp-sn-watcher")
        machine.start("cinnamon")
        wait_for(lambda: machine.owner("org.Cinnamon"), "Cinnamon", PATIENCE)

    def open_nemo(self):
        """Anew: windows that are open keep what they showed."""
        run("nemo", "-q")
        self.wait(lambda: not self.machine.owner("org.Nemo"), "Nemo ending")
        self.machine.start("nemo", self.folder)
        self.wait(lambda: self.machine.owner("org.Nemo"), "Nemo")

    def test_10_hidden_files(self):
        """Hidden files: Nemo shows them in windows opened afterwards, and no longer"""
        self.check_hidden_files_later(
            "nemo", lambda: run("gsettings", "get", "org.nemo.preferences", "show-hidden-files"), self.open_nemo)

    def test_11_restart_file_manager(self):
        """Restart of the file manager: another Nemo than before"""
        self.open_nemo()
        self.check_restart("restartFinder", "org.Nemo")

    def test_12_dark_mode(self):
        """Dark mode: a GTK program that starts now gets Greybird-dark, then Greybird again"""
        self.check_theme("Greybird", "Greybird-dark")

    def test_13_region(self):
        """Region to the clipboard with maim and the mouse; cancelled with Escape"""
        self.check_region("maim")

    def expo(self):
        return self.machine.read_property("org.Cinnamon", "/org/Cinnamon", "org.Cinnamon", "ExpoActive")

    def test_14_window_overview(self):
        """Window overview: Expo opens"""
        self.wait(lambda: self.expo() is False, "Expo being closed")
        self.press_action("openMissionControl")
        self.wait(self.expo, "Expo")
        run("xdotool", "key", "Escape")
        self.wait(lambda: self.expo() is False, "Expo being closed again")

    def test_15_restart_panel(self):
        """Restart of the panel: another Cinnamon than before, and the shortcuts go on"""
        self.check_restart("restartDock", "org.Cinnamon")
        self.test_01_script()

    def test_16_tray(self):
        """The icon is in the panel's tray"""
        self.check_tray()


if __name__ == "__main__":
    whole_desktop.main()
