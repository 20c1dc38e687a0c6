"""What is the same on KDE Plasma under X11 and under Wayland."""
from machine import PATIENCE, run, wait_for


class PlasmaChecks:
    editor = ("org.kde.kwrite", "kwrite", "kwrite")

    @classmethod
    def enter_plasma(cls, **environment):
        cls.machine.enter(XDG_CURRENT_DESKTOP="KDE", XDG_SESSION_DESKTOP="KDE", KDE_FULL_SESSION="true",
                          KDE_SESSION_VERSION="5", **environment)

    @classmethod
    def start_plasma(cls):
        """Everything but the window manager, which is there."""
        cls.machine.start("kded5")
        cls.machine.start("plasmashell")
        for name in ("org.kde.KWin", "org.kde.kglobalaccel", "org.kde.plasmashell"):
            wait_for(lambda: cls.machine.owner(name), name, PATIENCE)

    @staticmethod
    def color_scheme():
        # BreezeLight is what no entry means.
        return run("kreadconfig5", "--file", "kdeglobals", "--group", "General", "--key", "ColorScheme", "--default",
                   "BreezeLight")

    def dolphin(self):
        return next((name for name in self.machine.names() if name.startswith("org.kde.dolphin-")), None)

    def open_dolphin(self):
        self.machine.start("dolphin", "--new-window", self.folder)
        name = self.wait(self.dolphin, "Dolphin")
        self.wait(lambda: self.machine.read_property(name, "/dolphin/Dolphin_1", "org.qtproject.Qt.QWidget",
                                                     "isActiveWindow"), "Dolphin's window having the focus")
        return name

    def end_dolphin(self):
        run("gdbus", "call", "--session", "--dest", self.dolphin(), "--object-path", "/MainApplication", "--method",
            "org.qtproject.Qt.QCoreApplication.quit")
        self.wait(lambda: not self.dolphin(), "Dolphin ending")

    def test_11_restart_file_manager(self):
        """Restart of the file manager: another Dolphin than before"""
        before = self.open_dolphin()
        self.press_action("restartFinder")
        self.wait(lambda: self.dolphin() not in (None, before), "another Dolphin")
        self.end_dolphin()

    def effects(self):
        return self.machine.read_property("org.kde.KWin", "/Effects", "org.kde.kwin.Effects", "activeEffects") or []

    def test_14_window_overview(self):
        """Window overview: KWin's opens"""
        self.press_action("openMissionControl")
        self.wait(lambda: "overview" in self.effects(), "the overview")
        self.close_overview()
        self.wait(lambda: "overview" not in self.effects(), "the overview closing")

    def close_overview(self):
        # It holds the keyboard while it is open.
        run("xdotool", "key", "Escape")

    def test_15_restart_panel(self):
        """Restart of the panel: another plasmashell than before"""
        self.check_restart("restartDock", "org.kde.plasmashell")

    def test_16_tray(self):
        """The icon is in the panel's tray"""
        self.check_tray()
