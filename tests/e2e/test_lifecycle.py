"""Starting, hiding, starting again, ending, and what the world may do to the program meanwhile."""
import os
import pathlib
import signal
import subprocess
import time
import unittest

from tavrin import (PROGRAM, RUNTIME, SHORTCUTS, Program, TestCase, close_window, is_free, item, mark, property_of,
                    read_shortcuts, wait_for, window_id, write_shortcuts)

K = 45


class Window(TestCase):
    def test_opens_at_launch_out_of_the_task_bar(self):
        self.start()
        state = lambda: property_of(window_id(), "_NET_WM_STATE")
        wait_for(lambda: "SKIP_TASKBAR" in state() and "SKIP_PAGER" in state(), "leaving the task bar")
        self.assertIn('"Tavrin"', property_of(window_id(), "WM_CLASS"))

    def test_shows_among_the_applications_if_the_user_wants_it(self):
        path = f"{os.environ['XDG_CONFIG_HOME']}/Tavrin/Tavrin.conf"
        with open(path) as settings:
            before = settings.read()
        with open(path, "w") as settings:
            settings.write(before + "hideDockIcon=false\n")
        self.addCleanup(pathlib.Path(path).write_text, before)
        self.start()
        wait_for(lambda: "_NET_WM_STATE" in property_of(window_id(), "_NET_WM_STATE"), "the window's state")
        self.assertNotIn("SKIP_TASKBAR", property_of(window_id(), "_NET_WM_STATE"))

    def test_closing_hides_and_a_second_start_shows_the_same_window(self):
        script, path = mark("hidden")
        write_shortcuts([item("k", "k", value=script)])
        program = self.start()
        window = window_id()
        subprocess.run(("xdotool", "windowactivate", "--sync", str(window)), check=True)
        subprocess.run(("xdotool", "windowmove", "--sync", str(window), "200", "150"), check=True)
        close_window()
        self.assertIsNone(program.process.poll())
        self.assert_fires(path, "super+k")

        began = time.monotonic()
        second = subprocess.run((PROGRAM,), capture_output=True, text=True, timeout=10)
        self.assertLess(time.monotonic() - began, 1.0)
        self.assertEqual(second.returncode, 0)
        self.assertEqual(second.stdout, "")
        self.assertEqual(wait_for(window_id, "the window coming back"), window)
        active = lambda: subprocess.run(("xdotool", "getactivewindow"), capture_output=True, text=True).stdout.strip()
        wait_for(lambda: active() == str(window), "the window coming to the front")
        wait_for(lambda: "SKIP_TASKBAR" in property_of(window, "_NET_WM_STATE"), "staying out of the task bar")
        self.assert_fires(path, "super+k")

    def test_second_start_comes_over_a_visible_window_of_another(self):
        self.start()
        window = window_id()
        terminal = subprocess.Popen(("xterm", "-T", "above", "-geometry", "120x50+0+0"))
        self.addCleanup(terminal.wait)
        self.addCleanup(terminal.kill)
        other = wait_for(lambda: subprocess.run(("xdotool", "search", "--onlyvisible", "--name", "^above$"),
                                                capture_output=True, text=True).stdout.strip(), "the other window")
        subprocess.run(("xdotool", "windowactivate", "--sync", other), check=True)
        self.assertEqual(subprocess.run((PROGRAM,), timeout=10).returncode, 0)
        wait_for(lambda: subprocess.run(("xdotool", "getactivewindow"), capture_output=True, text=True)
                 .stdout.strip() == str(window), "the window coming to the front")


class Ending(TestCase):
    def test_signals_end_it_cleanly(self):
        script, _ = mark("signal")
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number):
                write_shortcuts([item("k", "k", value=script)])
                before = read_shortcuts()
                program = self.start()
                self.assertFalse(is_free(K))
                self.assertEqual(program.end(number), 0)
                self.assertTrue(is_free(K), "grabs are released")
                self.assertEqual(program.output(), [])
                self.assertEqual(read_shortcuts(), before)

    def test_restart_right_after_a_kill(self):
        script, path = mark("restart")
        write_shortcuts([item("k", "k", value=script)])
        program = self.start()
        program.kill()
        program = self.start()
        self.assert_fires(path, "super+k")
        self.assertEqual(program.output(), [])

    def test_scripts_outlive_it(self):
        marker = f"{RUNTIME}/outlived"
        script, path = mark("outlive")
        write_shortcuts([item("k", "k", value=f"{script}; while [ ! -e '{marker}.go' ]; do sleep 0.05; done; touch '{marker}'")])
        program = self.start()
        self.assert_fires(path, "super+k")
        self.assertEqual(program.end(), 0)
        open(f"{marker}.go", "w").close()
        wait_for(lambda: os.path.exists(marker), "the script going on")


class Surroundings(TestCase):
    def test_no_display(self):
        program = Program(self, DISPLAY=None)
        self.assertEqual(program.process.wait(10), 1)
        self.assertEqual(len(program.output()), 1)
        self.assertIn("DISPLAY", program.output()[0])

    def test_system_in_memory(self):
        # Test builds only: the whole program without a display, a bus or a desktop.
        folder = f"{RUNTIME}/fake"
        os.makedirs(folder)
        Program(self, TAVRIN_TEST_FAKE_PLATFORM=folder, QT_QPA_PLATFORM="offscreen", DISPLAY=None)
        wait_for(lambda: os.path.exists(f"{folder}/Tavrin/shortcuts.json"), "the program running")
        self.assertTrue(is_free(K), "nothing is grabbed")

    def test_windows_stay_on_x_in_a_wayland_session(self):
        # The toolkit would look for its own Wayland plugin and print that there is none.
        program = self.start(XDG_SESSION_TYPE="wayland", WAYLAND_DISPLAY="wayland-none")
        self.assertEqual(program.output(), [])

    def test_no_session_bus(self):
        script, path = mark("nobus")
        write_shortcuts([item("k", "k", value=script)])
        program = self.start(DBUS_SESSION_BUS_ADDRESS=None, XDG_RUNTIME_DIR=f"{RUNTIME}/none")
        self.assert_fires(path, "super+k")
        self.assertEqual(program.output(), [])
        self.assertEqual(subprocess.run(("pgrep", "-f", "dbus-launch"), capture_output=True).stdout, b"")

    def test_bus_that_does_not_answer(self):
        import socket
        address = f"{RUNTIME}/dead-bus"
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(address)
            server.listen()
            script, path = mark("deadbus")
            write_shortcuts([item("k", "k", value=script)])
            program = self.start(DBUS_SESSION_BUS_ADDRESS=f"unix:path={address}")
            self.assert_fires(path, "super+k")
            self.assertEqual(program.end(), 0)

    def test_server_that_goes(self):
        script, _ = mark("server")
        write_shortcuts([item("k", "k", value=script)])
        before = read_shortcuts()
        for attempt in range(5):
            with self.subTest(attempt):
                reader, writer = os.pipe()
                # A server that resets drops whoever is just connecting when its last client leaves: our own probe.
                server = subprocess.Popen(("Xvfb", "-displayfd", str(writer), "-nolisten", "tcp", "-noreset"),
                                          pass_fds=(writer,), stderr=subprocess.DEVNULL)
                os.close(writer)
                with os.fdopen(reader) as numbers:
                    display = ":" + numbers.readline().strip()
                program = Program(self, DISPLAY=display)
                probe = ("xdotool", "search", "--onlyvisible", "--name", "Tavrin")
                wait_for(lambda: subprocess.run(probe, env={**os.environ, "DISPLAY": display},
                                                capture_output=True).stdout, "the window")
                server.kill() if attempt % 2 else server.terminate()
                server.wait()
                self.assertEqual(program.process.wait(10), 1)
                self.assertEqual(program.output(), ["Mất kết nối với máy chủ X; Tavrin dừng lại."])
                self.assertEqual(read_shortcuts(), before)

    def test_broken_shortcuts_files(self):
        contents = {"empty": b"", "truncated": b'[{"id":"', "nested": b"[" * 1000000, "latin": b"[\xe9]",
                    "fifty megabytes": b"[" + b"1," * 25_000_000 + b"1]"}
        for name, content in contents.items():
            with self.subTest(name):
                with open(SHORTCUTS, "wb") as file:
                    file.write(content)
                program = self.start()
                self.assertEqual(len(read_shortcuts()), 2)
                output = program.output()
                self.assertTrue(output[0].startswith("Lỗi đọc cấu hình: "), output)
                self.assertEqual(program.end(), 0)
                self.assertEqual(os.listdir(os.path.dirname(SHORTCUTS)), ["shortcuts.json"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
