"""The Debian package on a system that is thrown away: installing, using, upgrading and removing it."""
import os
import shlex
import unittest

import gi

import accessibility
from packages import ENTRY, NEXT_PACKAGE, PACKAGE, PackageCase, end, install, is_installed, told, version
from tavrin import PROGRAM, SHORTCUTS, Program, property_of, read_shortcuts, wait_for, window_id

gi.require_version("Gio", "2.0")
gi.require_version("Gtk", "3.0")
from gi.repository import Gio, Gtk  # noqa: E402

CONFIGURATION = os.environ["XDG_CONFIG_HOME"]
# Where packages put files and where the system remembers them.
SYSTEM_FOLDERS = ("/usr", "/etc", "/opt", "/var/lib")


def all_files(*folders):
    return {os.path.join(parent, name) for folder in folders for parent, folders_in, names in os.walk(folder)
            for name in names + folders_in}


class InstalledPackage(PackageCase):
    def test_the_menu_starts_it(self):
        install(PACKAGE)
        self.assertEqual(told("dpkg", "--verify", "tavrin"), "")
        self.assertEqual(told("sh", "-c", "command -v Tavrin"), PROGRAM)
        entry = Gio.DesktopAppInfo.new(ENTRY)
        self.assertIsNotNone(entry, "the menu has no entry")
        self.assertTrue(entry.should_show())
        self.start_installed("gtk-launch", ENTRY)
        self.assert_fires(self.mark, "super+k")
        names = property_of(window_id(), "WM_CLASS").partition("=")[2]
        self.assertIn(f'"{entry.get_startup_wm_class()}"', names)
        self.window.find("label", f"v{version(PACKAGE)}")

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
        self.assertIn("keyboard shortcuts of your own", told("man", "Tavrin"))

    def test_login_starts_what_is_installed(self):
        install(PACKAGE)
        self.start_installed("gtk-launch", ENTRY)
        self.window.find("check box", "Khởi động cùng máy tính").press()
        path = f"{CONFIGURATION}/autostart/{ENTRY}"
        wait_for(lambda: os.path.exists(path), "the autostart entry")
        self.addCleanup(os.remove, path)
        command = shlex.split(Gio.DesktopAppInfo.new_from_filename(path).get_commandline())
        self.assertEqual(command, [PROGRAM])
        end(PROGRAM)
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
        self.window.find("label", f"v{version(NEXT_PACKAGE)}")
        self.row("Ghi")
        self.assertEqual(read_shortcuts(), shortcuts)
        self.assert_fires(self.mark, "super+k")

    def test_removing_leaves_the_users_own_files_only(self):
        before = all_files(*SYSTEM_FOLDERS)
        install(PACKAGE)
        self.assertIn(PROGRAM, all_files(*SYSTEM_FOLDERS) - before)
        self.start_installed("gtk-launch", ENTRY)
        self.assert_fires(self.mark, "super+k")
        end(PROGRAM)
        shortcuts = read_shortcuts()

        told("dpkg", "--remove", "tavrin")
        self.assertFalse(is_installed(), "it has no configuration of the system that could stay")
        self.assertEqual(sorted(all_files(*SYSTEM_FOLDERS) - before), [])
        self.assertEqual(read_shortcuts(), shortcuts)
        self.assertTrue(os.path.exists(SHORTCUTS))
        self.assertTrue(os.path.exists(f"{CONFIGURATION}/Tavrin/Tavrin.conf"))

    def test_the_checker_of_packages_has_nothing_to_say(self):
        self.assertEqual(told("lintian", "--allow-root", "--fail-on", "error,warning", PACKAGE), "")


if __name__ == "__main__":
    unittest.main(verbosity=2)
