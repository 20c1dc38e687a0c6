"""What the X server and the accessibility bus tell of the programs on the screen."""
import re
import struct
import subprocess
import types

from machine import HERE, PATIENCE, run, soon, wait_for


def texts_in(application):
    """What a screen reader finds in the application's windows."""
    return set(run("/usr/bin/python3", "-B", f"{HERE}/accessible_texts.py", application).splitlines())


def gtk_theme():
    """The theme that a GTK program which starts now gets from the desktop's settings daemon."""
    return run("/usr/bin/python3", "-c", "import gi; gi.require_version('Gtk', '3.0')\n"
               "from gi.repository import Gtk; print(Gtk.Settings.get_default().props.gtk_theme_name)")


def windows(class_name):
    """Visible windows whose class is exactly this."""
    return run("xdotool", "search", "--onlyvisible", "--class", f"^{class_name}$").split()


def active_window():
    """The window that the window manager calls active: number, class and title; None if there is none."""
    found = re.search(r"0x[0-9a-f]+", run("xprop", "-root", "_NET_ACTIVE_WINDOW"))
    if not found or int(found[0], 16) == 0:
        return None
    text = run("xprop", "-id", found[0], "WM_CLASS", "_NET_WM_NAME")
    return types.SimpleNamespace(id=int(found[0], 16), text=text)


def is_active(text):
    active = active_window()
    return active is not None and text.lower() in active.text.lower()


def managed_windows():
    """Every window of the window manager's list whose class or title can be read: (number, text)."""
    numbers = re.findall(r"0x[0-9a-f]+", run("xprop", "-root", "_NET_CLIENT_LIST"))
    return [(number, run("xprop", "-id", number, "WM_CLASS", "_NET_WM_NAME")) for number in numbers]


def raise_window(text):
    """As a click in a task bar does; again where a window that opens meanwhile takes the focus."""
    def raised():
        found = next((number for number, told in managed_windows() if text.lower() in told.lower()), None)
        if found and not is_active(text):
            run("wmctrl", "-i", "-a", found)
        return found and soon(lambda: is_active(text), 2)
    wait_for(raised, f"{text} becoming active", PATIENCE)


def has_input_focus(text):
    """Keys typed now arrive in a window below the active one with this text."""
    active = active_window()
    if not active or text.lower() not in active.text.lower():
        return False
    focus = run("xdotool", "getwindowfocus")
    tree = run("xwininfo", "-children", "-tree", "-id", str(active.id))
    return focus.isdigit() and (int(focus) == active.id or f"0x{int(focus):x} " in tree)


def drag(from_x, from_y, to_x, to_y):
    run("xdotool", "mousemove", str(from_x), str(from_y), "sleep", "0.1", "mousedown", "1", "sleep", "0.2",
        "mousemove", str((from_x + to_x) // 2), str((from_y + to_y) // 2), "sleep", "0.1",
        "mousemove", str(to_x), str(to_y), "sleep", "0.2", "mouseup", "1")


def clipboard_picture():
    """Width and height of the picture on the clipboard; None if there is none."""
    try:
        told = subprocess.run(("xclip", "-selection", "clipboard", "-t", "image/png", "-o"), capture_output=True,
                              timeout=5).stdout
    except subprocess.TimeoutExpired:
        return None
    return struct.unpack(">II", told[16:24]) if told.startswith(b"\x89PNG") else None
