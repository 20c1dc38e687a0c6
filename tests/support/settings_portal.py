#!/usr/bin/python3
"""A desktop's portal for tests, which knows one setting: whether windows are to be dark. Prints READY once it is
there; each line of its input, dark, light or none, is the user's next choice.

usage: settings_portal.py dark|light|none
"""
import sys

from gi.repository import Gio, GLib

NAME = "org.freedesktop.portal.Desktop"
PATH = "/org/freedesktop/portal/desktop"
SETTINGS = "org.freedesktop.portal.Settings"
INTERFACE = f"""<node><interface name="{SETTINGS}">
  <method name="Read">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/>
  </method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""
SETTING = ("org.freedesktop.appearance", "color-scheme")
SCHEMES = {"none": 0, "dark": 1, "light": 2}


class Portal:
    def __init__(self, scheme):
        self.scheme = scheme
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        self.bus.register_object(PATH, interface, self.called, None, None)
        Gio.bus_own_name_on_connection(self.bus, NAME, Gio.BusNameOwnerFlags.NONE,
                                       lambda *_: print("READY", flush=True), None)

    def value(self):
        return GLib.Variant("u", SCHEMES[self.scheme])

    def called(self, _bus, _sender, _path, _interface, _method, arguments, invocation):
        if arguments.unpack() == SETTING:
            invocation.return_value(GLib.Variant("(v)", (GLib.Variant("v", self.value()),)))
        else:
            invocation.return_dbus_error("org.freedesktop.portal.Error.NotFound", "no such setting")

    def choose(self, scheme):
        self.scheme = scheme
        self.bus.emit_signal(None, PATH, SETTINGS, "SettingChanged", GLib.Variant("(ssv)", (*SETTING, self.value())))


def read_choice(channel, _condition, portal, loop):
    line = channel.readline()
    if not line:
        loop.quit()
        return False
    portal.choose(line.strip())
    return True


portal = Portal(sys.argv[1])
loop = GLib.MainLoop()
GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, read_choice, portal, loop)
loop.run()
