"""The desktop around the program: entries of applications, their windows, the one that is active."""
import os
import subprocess
import uuid

from tavrin import RUNTIME, lines, property_of, wait_for

SUPPORT = f"{os.path.dirname(os.path.abspath(__file__))}/../support"
HOME = os.environ["HOME"]
APPLICATIONS = f"{os.environ['XDG_DATA_HOME']}/applications"
FLATPAK_EXPORTS = f"{os.environ['XDG_DATA_HOME']}/flatpak/exports/share/applications"


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w") as file:
        file.write(text)
    return path


def write_script(path, text):
    write(path, f"#!/bin/sh\n{text}\n")
    os.chmod(path, 0o755)
    return path


def write_entry(case, identifier, command, *more, folder=APPLICATIONS):
    path = f"{folder}/{identifier}.desktop"
    text = "\n".join(["[Desktop Entry]", "Type=Application", f"Name={identifier}", f"Exec={command}", *more])
    case.addCleanup(os.remove, path)
    return write(path, text + "\n")


def write_recorder(name):
    """A program that writes its arguments down, one a line, behind its own name; and the file."""
    log = f"{RUNTIME}/{name}.calls"
    if os.path.exists(log):
        os.remove(log)
    script = write_script(f"{HOME}/bin/{name}", f"printf '%s\\n' {name} \"$@\" > '{log}.part'; mv '{log}.part' '{log}'")
    return script, log


def calls(log):
    return wait_for(lambda: lines(log), "the program's start")


def windows(class_name):
    """The windows of the class that the window manager has."""
    found = subprocess.run(("wmctrl", "-lx"), capture_output=True, text=True).stdout.splitlines()
    return [int(line.split()[0], 16) for line in found if line.split()[2].endswith(f".{class_name}")]


def end_windows(class_name):
    """Ends the programs that the windows belong to, and waits until the window manager has noticed."""
    def none_left():
        left = windows(class_name)
        for window in left:
            subprocess.run(("xdotool", "windowkill", str(window)), capture_output=True)
        return not left
    wait_for(none_left, f"{class_name} ending")


def active():
    words = subprocess.run(("xprop", "-root", "_NET_ACTIVE_WINDOW"), capture_output=True, text=True).stdout.split()
    return int(words[4].rstrip(","), 16) if len(words) > 4 else 0


def wait_active(window, what):
    wait_for(lambda: active() == window, what)


def wait_window(class_name):
    """The one window of the class, once it is active."""
    window = wait_for(lambda: windows(class_name), f"a window of {class_name}")[0]
    wait_active(window, f"{class_name} in front")
    return window


def is_minimised(window):
    return "_NET_WM_STATE_HIDDEN" in property_of(window, "_NET_WM_STATE")


def desktop_of(window):
    return property_of(window, "_NET_WM_DESKTOP").split()[-1]


def wait_title(title):
    """Until the window of this title has the focus."""
    def name():
        return subprocess.run(("xdotool", "getactivewindow", "getwindowname"), capture_output=True, text=True).stdout.strip()
    wait_for(lambda: name() == title, f"{title} having the focus")


def open_field(case, **environment):
    """A text field of another program, in front; the function tells what it holds."""
    path = f"{RUNTIME}/field-{uuid.uuid4()}"
    with open(path, "w") as output:
        field = subprocess.Popen(("/usr/bin/python3", "-B", f"{SUPPORT}/gtk_field.py"), stdout=output,
                                 env={**os.environ, **environment})
    case.addCleanup(field.wait)
    case.addCleanup(field.kill)
    wait_title("gtk field")
    return lambda: (lines(path) or [""])[-1]
