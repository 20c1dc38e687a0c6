"""The Debian package on a system that is thrown away: installing, using, upgrading and removing it."""
import glob
import os
import shlex
import signal
import subprocess
import unittest

import gi

import accessibility
from tavrin import (
    PROGRAM, SHORTCUTS, Program, item, mark, property_of, read_shortcuts, wait_for, window_id, write_shortcuts)
from window import WindowCase

gi.require_version("Gtk", "3.0")
from gi.repository import Gio, Gtk  # noqa: E402

ENTRY = "app.tavrin.Tavrin.desktop"
CONFIGURATION = os.environ["XDG_CONFIG_HOME"]
# Where packages put files and where the system remembers them.
SYSTEM_FOLDERS = ("/usr", "/etc", "/opt", "/var/lib")


def only_file(variable, pattern):
    found = glob.glob(f"{os.environ[variable]}/{pattern}")
    if len(found) != 1:
        raise AssertionError(f"{pattern} in ${variable}: {found}")
    return found[0]


PACKAGE = only_file("TAVRIN_PACKAGES", "*.deb")
NEXT_PACKAGE = only_file("TAVRIN_NEXT_PACKAGES", "*.deb")


def told(*command):
    result = subprocess.run(command, capture_output=True, text=True)
    if result.returncode:
        raise AssertionError(f"{command} ended with {result.returncode}: {result.stdout}{result.stderr}")
    return result.stdout.strip()


def field(package, name):
    return told("dpkg-deb", "--field", package, name)


def install(package):
    told("dpkg", "--install", package)


def remove():
    subprocess.run(("dpkg", "--purge", "tavrin"), check=True, capture_output=True)


def is_installed():
    return subprocess.run(("dpkg", "--status", "tavrin"), capture_output=True).returncode == 0


def installed_programs():
    """Processes that run the package's program, whichever file that was when they started."""
    found = []
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                path = os.readlink(f"/proc/{entry}/exe").removesuffix(" (deleted)")
            except OSError:
                continue
            if path == PROGRAM:
                found.append(int(entry))
    return found


def all_files(*folders):
    return {os.path.join(parent, name) for folder in folders for parent, folders_in, names in os.walk(folder)
            for name in names + folders_in}


class InstalledPackage(WindowCase):
    def setUp(self):
        super().setUp()
        self.addCleanup(lambda: is_installed() and remove())
        script, self.mark = mark("live")
        write_shortcuts([item("Ghi", "k", value=script)])

    def start_installed(self, *command):
        """The program as the command starts it, with its window shown."""
        # What starts it goes by the search path, as a desktop does.
        self.assertEqual(told("sh", "-c", "command -v Tavrin"), PROGRAM)
        subprocess.Popen(command, env={**os.environ, **accessibility.ENVIRONMENT}, stdout=subprocess.DEVNULL,
                         stderr=subprocess.DEVNULL).wait()
        self.addCleanup(self.end_installed)
        wait_for(window_id, "the window")
        self.window = accessibility.application("Tavrin")

    def end_installed(self):
        for pid in installed_programs():
            os.kill(pid, signal.SIGTERM)
        wait_for(lambda: not installed_programs(), "the program ending")

    def test_the_menu_starts_it(self):
        install(PACKAGE)
        self.assertEqual(told("dpkg", "--verify", "tavrin"), "")
        entry = Gio.DesktopAppInfo.new(ENTRY)
        self.assertIsNotNone(entry, "the menu has no entry")
        self.assertTrue(entry.should_show())
        self.start_installed("gtk-launch", ENTRY)
        self.assert_fires(self.mark, "super+k")
        names = property_of(window_id(), "WM_CLASS").partition("=")[2]
        self.assertIn(f'"{entry.get_startup_wm_class()}"', names)
        self.window.find("label", f"v{field(PACKAGE, 'Version')}")

    def test_the_icon_is_in_the_theme(self):
        install(PACKAGE)
        theme = Gtk.IconTheme.new()
        theme.set_custom_theme("hicolor")
        name = Gio.DesktopAppInfo.new(ENTRY).get_icon().to_string()
        for size in (16, 22, 24, 32, 48, 64, 128, 256, 512):
            found = theme.lookup_icon(name, size, 0)
            self.assertEqual(found.get_filename(), f"/usr/share/icons/hicolor/{size}x{size}/apps/{name}.png")
            picture = found.load_icon()
            self.assertEqual((picture.get_width(), picture.get_height()), (size, size))
        scalable = theme.lookup_icon(name, 100, Gtk.IconLookupFlags.FORCE_SVG)
        self.assertEqual(scalable.get_filename(), f"/usr/share/icons/hicolor/scalable/apps/{name}.svg")

    def test_the_manual_is_there(self):
        install(PACKAGE)
        page = subprocess.run(("man", "Tavrin"), env={**os.environ, "MANPAGER": "cat"}, capture_output=True, text=True)
        self.assertEqual(page.stderr, "")
        self.assertIn("keyboard shortcuts of your own", page.stdout)

    def test_login_starts_what_is_installed(self):
        install(PACKAGE)
        self.start_installed("gtk-launch", ENTRY)
        self.window.find("check box", "Khởi động cùng máy tính").press()
        path = f"{CONFIGURATION}/autostart/{ENTRY}"
        wait_for(lambda: os.path.exists(path), "the autostart entry")
        self.addCleanup(os.remove, path)
        command = shlex.split(Gio.DesktopAppInfo.new_from_filename(path).get_commandline())
        self.assertEqual(command, [PROGRAM])
        self.end_installed()
        self.start_installed("gio", "launch", path)
        self.assert_fires(self.mark, "super+k")

    def test_an_upgrade_keeps_the_shortcuts_and_the_running_program(self):
        install(PACKAGE)
        program = Program(self, **accessibility.ENVIRONMENT).wait_ready()
        self.assert_fires(self.mark, "super+k")
        shortcuts = read_shortcuts()

        install(NEXT_PACKAGE)
        self.assertIsNone(program.process.poll())
        self.assert_fires(self.mark, "super+k")
        self.assertEqual(program.end(), 0)

        Program(self, **accessibility.ENVIRONMENT).wait_ready()
        self.window = accessibility.application("Tavrin")
        self.window.find("label", f"v{field(NEXT_PACKAGE, 'Version')}")
        self.row("Ghi")
        self.assertEqual(read_shortcuts(), shortcuts)
        self.assert_fires(self.mark, "super+k")

    def test_removing_leaves_the_users_own_files_only(self):
        before = all_files(*SYSTEM_FOLDERS)
        install(PACKAGE)
        self.assertIn(PROGRAM, all_files(*SYSTEM_FOLDERS) - before)
        self.start_installed("gtk-launch", ENTRY)
        self.assert_fires(self.mark, "super+k")
        self.end_installed()
        shortcuts = read_shortcuts()

        told("dpkg", "--remove", "tavrin")
        self.assertFalse(is_installed(), "it has no configuration of the system that could stay")
        self.assertEqual(sorted(all_files(*SYSTEM_FOLDERS) - before), [])
        self.assertEqual(read_shortcuts(), shortcuts)
        self.assertTrue(os.path.exists(SHORTCUTS))
        self.assertTrue(os.path.exists(f"{CONFIGURATION}/Tavrin/Tavrin.conf"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
