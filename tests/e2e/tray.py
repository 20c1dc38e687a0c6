"""The tray of the desktop, with the program's item and its menu."""
import os
import subprocess

from gi.repository import Gio, GLib

HERE = os.path.dirname(os.path.abspath(__file__))


class Tray:
    """The panel's side: a watcher, and the one item that registers with it."""

    def __init__(self, case):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.watcher = subprocess.Popen(("/usr/bin/python3", "-B", f"{HERE}/../support/status_notifier_watcher.py"),
                                        stdout=subprocess.PIPE, text=True)
        case.addCleanup(self.end)
        assert self.watcher.stdout.readline() == "READY\n"

    def end(self):
        self.watcher.kill()
        self.watcher.wait()
        self.watcher.stdout.close()

    def wait_item(self):
        while True:
            words = self.watcher.stdout.readline().split()
            if words[0] == "ITEM":
                self.name = words[1].split("/")[0]
                return

    def call(self, path, interface, method, arguments):
        return self.bus.call_sync(self.name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 5000, None)

    def menu_path(self):
        return self.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                         GLib.Variant("(ss)", ("org.kde.StatusNotifierItem", "Menu"))).unpack()[0]

    def open(self):
        """What the menu shows when it is opened: (id, title, check state, enabled)."""
        path = self.menu_path()
        self.call(path, "com.canonical.dbusmenu", "AboutToShow", GLib.Variant("(i)", (0,)))
        _, (_, _, children) = self.call(path, "com.canonical.dbusmenu", "GetLayout",
                                        GLib.Variant("(iias)", (0, -1, []))).unpack()
        return [(identity, "---" if properties.get("type") == "separator" else properties["label"],
                 properties.get("toggle-state"), properties.get("enabled", True)) for identity, properties, _ in children]

    def titles(self):
        return [title for _, title, _, _ in self.open()]

    def state(self, title):
        return next(state for _, other, state, _ in self.open() if other == title)

    def choose(self, title):
        identity = next(identity for identity, other, _, _ in self.open() if other == title)
        self.call(self.menu_path(), "com.canonical.dbusmenu", "Event",
                  GLib.Variant("(isvu)", (identity, "clicked", GLib.Variant("i", 0), 0)))

    def click(self):
        self.call("/StatusNotifierItem", "org.kde.StatusNotifierItem", "Activate", GLib.Variant("(ii)", (0, 0)))
