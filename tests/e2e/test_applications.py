"""Applications open in front of the window in use, and come back to the front, on whichever window manager runs."""
import os
import subprocess
import unittest

import desktop
from tavrin import RUNTIME, TestCase, item, lines, press, wait_for, write_shortcuts

HERE = os.path.dirname(os.path.abspath(__file__))
SERVICES = f"{os.environ['XDG_DATA_HOME']}/dbus-1/services"


class Applications(TestCase):
    def tearDown(self):
        # What the program has started outlives it.
        for class_name in ("First", "Second", "Packed", "Snapped_snapped", "Service"):
            desktop.end_windows(class_name)

    def start_with(self, *identifiers):
        keys = "klm"
        write_shortcuts([item(name, key, action="launchApp", value=name) for key, name in zip(keys, identifiers)])
        return self.start()

    def window_entry(self, class_name):
        desktop.write_entry(self, f"org.example.{class_name}", f"xterm -class {class_name} -e sleep 1000",
                            f"StartupWMClass={class_name}")
        return f"org.example.{class_name}"

    def open_two(self):
        """Two windows, the second opened while the user was typing in the first."""
        program = self.start_with(self.window_entry("First"), self.window_entry("Second"))
        press("super+k")
        first = desktop.wait_window("First")
        press("a", "b")
        press("super+l")
        second = desktop.wait_window("Second")
        press("a", "b")
        return program, first, second

    def test_open_and_come_back_over_the_window_that_is_typed_in(self):
        program, first, second = self.open_two()
        for key, window in (("super+k", first), ("super+l", second), ("super+k", first)):
            press(key)
            desktop.wait_active(window, "coming forward")
            press("x")
        self.assertEqual((desktop.windows("First"), desktop.windows("Second")), ([first], [second]))
        self.assertEqual(program.output(), [])

    def test_come_back_from_being_minimised(self):
        _, first, _ = self.open_two()
        subprocess.run(("xdotool", "windowminimize", str(first)), check=True)
        wait_for(lambda: desktop.is_minimised(first), "being minimised")
        press("super+k")
        desktop.wait_active(first, "coming forward")
        wait_for(lambda: not desktop.is_minimised(first), "being shown")

    def test_come_from_another_virtual_desktop(self):
        _, first, second = self.open_two()
        subprocess.run(("wmctrl", "-i", "-r", str(first), "-t", "1"), check=True)
        wait_for(lambda: desktop.desktop_of(first) == "1", "going to the other desktop")
        press("super+k")
        desktop.wait_active(first, "coming forward")
        current = lambda: subprocess.run(("xdotool", "get_desktop"), capture_output=True, text=True).stdout.strip()
        wait_for(lambda: current() == desktop.desktop_of(first), "the two being on one desktop")
        press("super+l")
        desktop.wait_active(second, "coming forward")
        wait_for(lambda: current() == desktop.desktop_of(second), "the two being on one desktop")
        subprocess.run(("wmctrl", "-s", "0"), check=True)

    def test_service_of_the_bus_opens_in_front(self):
        log = f"{RUNTIME}/service-{self.id()}"
        command = f"/usr/bin/python3 -B {HERE}/../support/bus_application.py {log}"
        self.addCleanup(os.remove, desktop.write(
            f"{SERVICES}/org.example.Service.service",
            f"[D-BUS Service]\nName=org.example.Service\nExec={command}\n"))
        # The bus watches only folders that were there when it started.
        subprocess.run(("dbus-send", "--session", "--print-reply", "--dest=org.freedesktop.DBus", "/",
                        "org.freedesktop.DBus.ReloadConfig"), check=True, stdout=subprocess.DEVNULL)
        desktop.write_entry(self, "org.example.Service", "false", "DBusActivatable=true", "StartupWMClass=Service")
        self.start_with(self.window_entry("First"), "org.example.Service")
        press("super+k")
        first = desktop.wait_window("First")
        press("a", "b")
        press("super+l")
        service = desktop.wait_window("Service")
        self.assertRegex(lines(log)[0], r"^tavrin-\d+-\d+_TIME[1-9]\d*$")
        press("super+k")
        desktop.wait_active(first, "coming forward")
        press("a")
        press("super+l")
        desktop.wait_active(service, "coming forward")
        self.assertEqual((len(lines(log)), desktop.windows("Service")), (1, [service]))

    def test_packages_of_flatpak_and_snap_open_and_come_back(self):
        flatpak = desktop.write_script(f"{desktop.HOME}/bin/flatpak", 'test "$1" = run || exit 1\n'
                                       "exec xterm -name packed-program -class Packed -e sleep 1000")
        desktop.write_entry(self, "org.example.Package", f"{flatpak} run --branch=stable --arch=x86_64 "
                            "--command=packed-program --file-forwarding org.example.Package @@u %u @@",
                            "X-Flatpak=org.example.Package", folder=desktop.FLATPAK_EXPORTS)
        snap = desktop.write_script(f"{desktop.HOME}/bin/snapped",
                                    "exec xterm -name snapped_snapped -class Snapped_snapped -e sleep 1000")
        path = f"{desktop.APPLICATIONS}/snapped_snapped.desktop"
        desktop.write_entry(self, "snapped_snapped", f"env BAMF_DESKTOP_FILE_HINT={path} {snap} %U",
                            "X-SnapInstanceName=snapped")
        program = self.start_with("org.example.Package", "snapped_snapped")
        press("super+k")
        packed = desktop.wait_window("Packed")
        press("super+l")
        snapped = desktop.wait_window("Snapped_snapped")
        press("super+k")
        desktop.wait_active(packed, "coming forward")
        press("super+l")
        desktop.wait_active(snapped, "coming forward")
        self.assertEqual((desktop.windows("Packed"), desktop.windows("Snapped_snapped")), ([packed], [snapped]))
        self.assertEqual(program.output(), [])

    def test_broken_entries_are_silent(self):
        desktop.write_entry(self, "org.example.Gone", "no-such-program")
        self.addCleanup(os.remove, desktop.write(f"{desktop.APPLICATIONS}/org.example.Broken.desktop", "[Desktop"))
        program = self.start_with("org.example.Gone", "org.example.Broken", self.window_entry("First"))
        for key in ("super+k", "super+l", "super+m"):
            press(key)
        desktop.wait_window("First")
        self.assertEqual(program.output(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
