"""An application that the session bus starts: shows one window, and writes down each request's startup id.

usage: bus_application.py LOG
"""
import sys

import gi
from gi.repository import GLib

# Read once by GTK, for the class of the windows.
GLib.set_prgname("service")
gi.require_version("Gtk", "3.0")
from gi.repository import Gtk  # noqa: E402


class Application(Gtk.Application):
    window = None

    def do_before_emit(self, platform_data):
        Gtk.Application.do_before_emit(self, platform_data)
        with open(sys.argv[1], "a") as log:
            log.write(platform_data.lookup_value("desktop-startup-id", GLib.VariantType("s")).get_string() + "\n")

    def do_activate(self):
        if not self.window:
            self.window = Gtk.ApplicationWindow(application=self, title="service")
            self.window.set_default_size(300, 200)
            self.window.show_all()
        self.window.present()


sys.exit(Application(application_id="org.example.Service").run(["service", "--gapplication-service"]))
