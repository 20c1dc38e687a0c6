#!/usr/bin/python3
"""A StatusNotifierWatcher for tests. Prints a line for everything that happens: READY, ITEM <service>, GONE
<service>, REPLACED. A watcher that is started while another runs takes the name over.

usage: status_notifier_watcher.py [--without-host]
"""
import sys

from gi.repository import Gio, GLib

NAME = "org.kde.StatusNotifierWatcher"
PATH = "/StatusNotifierWatcher"
INTERFACE = f"""<node><interface name="{NAME}">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierItemUnregistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>"""


class Watcher:
    def __init__(self, has_host):
        self.has_host = has_host
        self.items = []
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
        self.bus.register_object(PATH, interface, self.called, self.read, None)
        flags = Gio.BusNameOwnerFlags.ALLOW_REPLACEMENT | Gio.BusNameOwnerFlags.REPLACE
        Gio.bus_own_name_on_connection(self.bus, NAME, flags, lambda *_: self.say("READY"),
                                       lambda *_: self.say("REPLACED"))

    @staticmethod
    def say(text):
        print(text, flush=True)

    def signal(self, name, *arguments):
        value = GLib.Variant("(s)", arguments) if arguments else None
        self.bus.emit_signal(None, PATH, NAME, name, value)

    def called(self, _bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierHost":
            self.has_host = True
            self.signal("StatusNotifierHostRegistered")
        elif sender not in self.items:
            self.items.append(sender)
            Gio.bus_watch_name_on_connection(self.bus, sender, Gio.BusNameWatcherFlags.NONE, None,
                                             lambda _bus, name: self.gone(name))
            self.say(f"ITEM {sender}")
            self.signal("StatusNotifierItemRegistered", arguments.unpack()[0])
        invocation.return_value(None)

    def gone(self, name):
        if name in self.items:
            self.items.remove(name)
            self.say(f"GONE {name}")
            self.signal("StatusNotifierItemUnregistered", name)

    def read(self, _bus, _sender, _path, _interface, name):
        return {
            "RegisteredStatusNotifierItems": GLib.Variant("as", self.items),
            "IsStatusNotifierHostRegistered": GLib.Variant("b", self.has_host),
            "ProtocolVersion": GLib.Variant("i", 0),
        }[name]


watcher = Watcher("--without-host" not in sys.argv)
GLib.MainLoop().run()
