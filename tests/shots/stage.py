"""The built program on a private desktop in one look and at one scale, and pictures of its window."""
import contextlib
import ctypes
import os
import shutil
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
sys.path.insert(0, f"{ROOT}/tests/e2e")

import accessibility  # noqa: E402
import tavrin  # noqa: E402
from tavrin import wait_for  # noqa: E402

# In points, as the program opens it.
OPENING_WIDTH = 720

# Applications that keep a fast machine busy for some seconds.
MANY = 100000


def read_picture(window):
    """What is in the window now, as a portable pixmap."""
    return subprocess.run(("import", "-silent", "-window", str(window), "ppm:-"), check=True,
                          capture_output=True).stdout


def warp_pointer(window, x, y):
    """Also where no program may press buttons and keys."""
    x11 = ctypes.CDLL("libX11.so.6")
    x11.XOpenDisplay.restype = ctypes.c_void_p
    display = ctypes.c_void_p(x11.XOpenDisplay(None))
    x11.XWarpPointer(display, ctypes.c_ulong(0), ctypes.c_ulong(window), 0, 0, 0, 0, x, y)
    x11.XCloseDisplay(display)


class Window:
    """The main window of a running program."""

    def __init__(self, stage):
        self.stage = stage
        self.tree = accessibility.application("Tavrin")
        self.frame = self.tree.find("frame", state="active")
        self.number = tavrin.window_id()

    def find(self, role, name=None, state=None):
        return self.tree.find(role, name, state)

    def row(self, name):
        rows = wait_for(lambda: [row for row in self.tree.search("list item")
                                 if row.name.rpartition(" (")[0] == name], f"the row of {name}")
        return rows[0]

    def press(self, *keys):
        subprocess.run(("xdotool", "key", *keys), check=True)

    def type(self, text):
        subprocess.run(("xdotool", "type", "--delay", "5", text), check=True)

    def size(self):
        """In pixels."""
        found = subprocess.run(("xdotool", "getwindowgeometry", "--shell", str(self.number)), check=True,
                               capture_output=True, text=True).stdout
        values = dict(line.split("=") for line in found.split())
        return int(values["WIDTH"]), int(values["HEIGHT"])

    def resize(self, width, height):
        """To this many points."""
        wanted = (width * self.stage.scale, height * self.stage.scale)
        subprocess.run(("xdotool", "windowsize", str(self.number), *map(str, wanted)), check=True)
        wait_for(lambda: self.size() == wanted, f"a size of {wanted}")

    def point_at(self, element=None):
        """Puts the pointer on the middle of the element, or where it is over nothing."""
        if element is None:
            place = (1, 1)
        else:
            left, top, _, _ = self.frame.extents
            x, y, width, height = element.extents
            place = ((x - left + width // 2) * self.stage.scale, (y - top + height // 2) * self.stage.scale)
        warp_pointer(self.number, *place)

    def shoot_moving(self, name):
        """Keeps a picture of the window, in which something never rests."""
        time.sleep(0.1)
        self.stage.keep(name, read_picture(self.number))

    def shoot(self, name, unlike=None):
        """Keeps a picture of the window once it no longer changes and is another one than `unlike`; returns it."""
        def settled():
            before = read_picture(self.number)
            time.sleep(0.05)
            return before not in (b"", unlike) and before == read_picture(self.number) and before
        picture = wait_for(settled, f"the picture of {name}")
        self.stage.keep(name, picture)
        return picture


class Stage:
    """Starts programs and keeps what was taken of them."""

    def __init__(self, look, scale, folder):
        self.look = look
        self.scale = scale
        self.folder = folder
        self.taken = []

    def keep(self, name, picture):
        path = f"{self.folder}/{name}-{self.look}-{self.scale}00.png"
        subprocess.run(("convert", "-define", "png:compression-level=1", "ppm:-", path), input=picture, check=True)
        self.taken.append(os.path.basename(path))

    @contextlib.contextmanager
    def window(self, items, program=tavrin.PROGRAM, is_user_new=False):
        """The program with these shortcuts in its file, for as long as the context lasts."""
        tavrin.write_shortcuts(items)
        # The window opens where it opens the first time, and with the wizard before it only where that is wanted.
        settings = f"{os.environ['XDG_CONFIG_HOME']}/Tavrin"
        os.makedirs(settings, exist_ok=True)
        with open(f"{settings}/Tavrin.conf", "w") as file:
            file.write(f"[General]\nhasCompletedOnboarding={'false' if is_user_new else 'true'}\n")
        with contextlib.ExitStack() as ending:
            ending.addCleanup = ending.callback
            running = tavrin.Program(ending, program, QT_SCALE_FACTOR=str(self.scale), **accessibility.ENVIRONMENT)
            running.wait_ready()
            window = Window(self)
            wait_for(lambda: window.size()[0] == OPENING_WIDTH * self.scale, "the window's opening size")
            window.point_at()
            yield window
            if running.process.poll() is not None or running.output():
                raise AssertionError(f"the program ended or said something: {running.output()}")

    @contextlib.contextmanager
    def many_applications(self):
        """So many of them that reading them takes a while."""
        folder = f"{tavrin.DATA}/applications"
        os.makedirs(folder)
        with open(f"{folder}/first.desktop", "w") as file:
            file.write("[Desktop Entry]\nType=Application\nName=Application\nExec=true\n")
        for number in range(MANY):
            os.symlink("first.desktop", f"{folder}/app{number}.desktop")
        try:
            yield
        finally:
            shutil.rmtree(folder)

    @contextlib.contextmanager
    def program_with_helper(self, name, script):
        """The program, with a script in the place of one of its helpers."""
        build = os.path.dirname(tavrin.PROGRAM)
        folder = f"{tavrin.RUNTIME}/with-{name}"
        os.makedirs(folder)
        for entry in os.listdir(build):
            if entry.endswith(".so") or entry.startswith("tavrin-"):
                os.symlink(f"{build}/{entry}", f"{folder}/{entry}")
        # The program finds what belongs to it beside itself, wherever a link leads.
        shutil.copy(tavrin.PROGRAM, folder)
        os.remove(f"{folder}/{name}")
        with open(f"{folder}/{name}", "w") as file:
            file.write(script)
        os.chmod(f"{folder}/{name}", 0o700)
        try:
            yield f"{folder}/Tavrin"
        finally:
            shutil.rmtree(folder)
