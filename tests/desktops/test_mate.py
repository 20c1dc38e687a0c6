"""MATE: marco, the panel, the settings daemon, Caja."""
import whole_desktop
from whole_desktop import DesktopCase, Everywhere
from machine import PATIENCE, run, wait_for


class Mate(Everywhere, DesktopCase):
    editor = ("pluma", "pluma", "pluma")

    @classmethod
    def start_desktop(cls):
        machine = cls.machine
        machine.enter(XDG_CURRENT_DESKTOP="MATE")
        machine.start("marco", "--replace")
        # The default, Menta, has no dark sibling.
        run("gsettings", "set", "org.mate.interface", "gtk-theme", "Greybird")
        machine.start("mate-settings-daemon")
        machine.start("mate-panel")
        for name in ("org.mate.Panel", "org.mate.SettingsDaemon"):
            wait_for(lambda: machine.owner(name), name, PATIENCE)

    def open_caja(self):
        self.machine.start("caja", "--no-desktop", self.folder)
        self.wait(lambda: self.machine.owner("org.mate.Caja"), "Caja")

    def test_10_hidden_files(self):
        """Hidden files: Caja's open window shows them, and no longer"""
        self.open_caja()
        self.check_hidden_files("caja")

    def test_11_restart_file_manager(self):
        """Restart of the file manager: another Caja than before"""
        self.open_caja()
        self.check_restart("restartFinder", "org.mate.Caja")

    def test_12_dark_mode(self):
        """Dark mode: a GTK program that starts now gets Greybird-dark, then Greybird again"""
        self.check_theme("Greybird", "Greybird-dark")

    def test_13_region(self):
        """Region to the clipboard with maim and the mouse; cancelled with Escape"""
        self.check_region("maim")

    def test_14_window_overview(self):
        """Window overview: rofi lists the windows"""
        self.check_rofi()

    def test_15_restart_panel(self):
        """Restart of the panel: another mate-panel than before"""
        self.check_restart("restartDock", "org.mate.Panel")

    def test_16_tray(self):
        """The icon is in the panel's tray"""
        self.check_tray()


if __name__ == "__main__":
    whole_desktop.main()
