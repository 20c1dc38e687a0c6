"""What a desktop's programs share: buses, settings, processes."""
import os
import subprocess
import sys
import time

from gi.repository import Gio, GLib

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.append(f"{HERE}/../e2e")

from tavrin import lines, wait_for  # noqa: E402 (found by the path above)

HOME = os.environ["HOME"]
RUNTIME = os.environ["XDG_RUNTIME_DIR"]
# Seconds that a person waits for at most; a desktop on two loaded processors takes its time.
PATIENCE = 40


class Machine:
    """The buses, the settings and the processes that a desktop's programs share."""

    def __init__(self, cleanup):
        self.cleanup = cleanup
        self.bus = None

    def enter(self, **environment):
        """What every program that starts from now on sees, also those that the bus starts."""
        # private-desktop keeps these off for tests that must not load what a desktop's programs load.
        common = {"NO_AT_BRIDGE": "0", "GSETTINGS_BACKEND": "dconf", "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1",
                  "QT_ACCESSIBILITY": "1"}
        os.environ.pop("GIO_USE_VFS", None)
        os.environ.update(common | environment)
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        shared = {name: value for name, value in os.environ.items()
                  if name in common | environment or name.startswith(("XDG_", "HOME", "DISPLAY", "DBUS_", "LANG"))}
        shared["GIO_USE_VFS"] = ""
        self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "UpdateActivationEnvironment",
                  GLib.Variant("(a{ss})", (shared,)))

    def start(self, *command, log=None):
        """Starts a program of the desktop; what it prints goes to a file that is named after it."""
        name = log or os.path.basename(command[0])
        output = open(f"{RUNTIME}/{name}.log", "a")
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=output, stderr=subprocess.STDOUT)
        output.close()

        def end():
            process.kill()
            process.wait()
        self.cleanup(end)
        return process

    def start_system_bus(self):
        """A private system bus with a stand-in for the login manager: session c1 on seat0. Its log tells the calls."""
        folder = f"{RUNTIME}/system-bus"
        os.makedirs(folder)
        address = f"unix:path={folder}/bus"
        with open(f"{folder}/bus.conf", "w") as configuration:
            configuration.write(
                '<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"'
                ' "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">'
                f"<busconfig><type>system</type><listen>{address}</listen><policy context='default'>"
                "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/><allow own='*'/>"
                "<allow user='*'/></policy></busconfig>")
        self.start("dbus-daemon", "--nofork", "--nopidfile", f"--config-file={folder}/bus.conf", log="system-bus")
        wait_for(lambda: os.path.exists(f"{folder}/bus"), "the system bus")
        os.environ["DBUS_SYSTEM_BUS_ADDRESS"] = address
        for template in ("logind", "upower", "polkitd"):
            self.start("/usr/bin/python3", "-m", "dbusmock", "--system", "-t", template, log=template)
        system = Gio.DBusConnection.new_for_address_sync(
            address, Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None, None)
        wait_for(lambda: self.owner("org.freedesktop.login1", system), "the login manager", PATIENCE)
        user = os.getuid()
        for method, arguments in (("AddSeat", ("(s)", ("seat0",))), ("AddUser", ("(usb)", (user, "tester", True))),
                                  ("AddSession", ("(ssusb)", ("c1", "seat0", user, "tester", True)))):
            self.call("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.DBus.Mock", method,
                      GLib.Variant(*arguments), system)
        os.environ.update(XDG_SESSION_ID="c1", XDG_SEAT="seat0")

    def login_calls(self):
        return lines(f"{RUNTIME}/logind.log")

    def call(self, name, path, interface, method, arguments=None, bus=None):
        return (bus or self.bus).call_sync(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE,
                                           8000, None).unpack()

    def read_property(self, name, path, interface, key):
        """The property; None while nobody answers."""
        try:
            return self.call(name, path, "org.freedesktop.DBus.Properties", "Get",
                             GLib.Variant("(ss)", (interface, key)))[0]
        except GLib.Error:
            return None

    def names(self):
        return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "ListNames")[0]

    def owner(self, name, bus=None):
        """Connection that owns the name, or None."""
        try:
            return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "GetNameOwner",
                             GLib.Variant("(s)", (name,)), bus)[0]
        except GLib.Error:
            return None

    def process(self, name):
        """Id of the process that owns the bus name, or None."""
        try:
            return self.call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                             "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))[0]
        except GLib.Error:
            return None


def run(*command, seconds=20):
    """What the command prints; empty if it fails or takes longer."""
    try:
        return subprocess.run(command, capture_output=True, text=True, timeout=seconds).stdout.strip()
    except subprocess.TimeoutExpired:
        return ""


def soon(condition, seconds=4):
    """The condition's first true value, or its last one when there is none in time."""
    limit = time.monotonic() + seconds
    while not (value := condition()) and time.monotonic() < limit:
        time.sleep(0.05)
    return value


def processes(name):
    """The arguments of every process of ours that has this name and has not ended."""
    found = []
    for entry in os.listdir("/proc"):
        try:
            with open(f"/proc/{entry}/stat") as file:
                stat = file.read()
            # The kernel keeps fifteen characters of a name.
            if stat[stat.index("(") + 1:stat.rindex(")")] != name[:15] or stat.rpartition(")")[2].split()[0] == "Z":
                continue
            with open(f"/proc/{entry}/environ", "rb") as file:
                ours = f"XDG_RUNTIME_DIR={RUNTIME}\0".encode() in file.read()
            with open(f"/proc/{entry}/cmdline") as file:
                arguments = file.read().split("\0")
        except (OSError, ValueError):
            continue
        if ours:
            found.append(arguments)
    return found


def is_running(name):
    return bool(processes(name))
