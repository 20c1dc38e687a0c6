"""What GNOME Shell tells of itself on its bus name, under X11 and under Wayland."""
from gi.repository import GLib

from machine import PATIENCE, run, wait_for

SHELL, PATH = "org.gnome.Shell", "/org/gnome/Shell"


def overview(machine):
    """True while the overview is open; None while the shell does not answer."""
    return machine.read_property(SHELL, PATH, SHELL, "OverviewActive")


def show_overview(machine, shown):
    machine.call(SHELL, PATH, "org.freedesktop.DBus.Properties", "Set",
                 GLib.Variant("(ssv)", (SHELL, "OverviewActive", GLib.Variant("b", shown))))
    wait_for(lambda: overview(machine) is shown, f"the overview's state being {shown}", PATIENCE)


def prefers_dark():
    """Whether a libadwaita program that starts now is dark: True or False, as text."""
    return run("/usr/bin/python3", "-c", "import gi; gi.require_version('Adw', '1'); from gi.repository import Adw\n"
               "Adw.init(); print(Adw.StyleManager.get_default().props.dark)")
