"""A press anywhere runs its shortcut; what must not fire does not."""
import os
import subprocess
import unittest

from tavrin import (CMD, OPTION, SHIFT, SHORTCUTS, TestCase, item, is_free, lines, mark, press, read_shortcuts,
                    wait_for, window_id, write_shortcuts)

K, L = 45, 46  # X key codes


class Shortcuts(TestCase):
    def test_first_start_writes_the_defaults(self):
        os.remove(SHORTCUTS)
        program = self.start()
        self.assertEqual([(entry["name"], entry["keyCode"], entry["modifiers"], entry["actionValue"])
                          for entry in read_shortcuts()],
                         [("Google Chrome", 122, 256, "com.google.Chrome"), ("Terminal", 46, 256, "com.apple.Terminal")])
        self.assertEqual(program.end(), 0)

    def test_press_runs_a_script_in_any_application(self):
        script, path = mark("k")
        write_shortcuts([item("K", "k", CMD | SHIFT, value=script)])
        program = self.start()
        terminal = subprocess.Popen(("xterm", "-T", "other"))
        self.addCleanup(terminal.wait)
        self.addCleanup(terminal.kill)
        wait_for(lambda: subprocess.run(("xdotool", "search", "--onlyvisible", "--name", "^other$"),
                                        capture_output=True).stdout, "the other window")
        self.assert_fires(path, "super+shift+k")
        self.assertEqual(program.output(), [])

    def test_only_what_is_enabled_fires(self):
        on, on_path = mark("on")
        off, off_path = mark("off")
        write_shortcuts([item("off", "l", value=off, enabled=False), item("on", "k", value=on)])
        self.start()
        self.assert_silent(off_path, ("super+k",), on_path, "super+l")
        self.assertTrue(is_free(L))
        self.assertFalse(is_free(K))

    def test_same_combination_twice_first_wins(self):
        first, first_path = mark("first")
        second, second_path = mark("second")
        write_shortcuts([item("một", "k", value=first), item("hai", "k", value=second)])
        program = self.start()
        self.assert_fires(first_path, "super+k")
        self.assertEqual(lines(second_path), [])
        self.assertEqual(program.output(), ["Đăng ký phím tắt thất bại cho hai: code -9878"])

    def test_taken_by_another_program(self):
        rest, rest_path = mark("rest")
        # openbox itself holds Alt+Tab.
        write_shortcuts([item("chuyển cửa sổ", 48, OPTION), item("còn lại", "k", value=rest)])
        program = self.start()
        self.assert_fires(rest_path, "super+k")
        wait_for(lambda: program.output() == ["Đăng ký phím tắt thất bại cho chuyển cửa sổ: code -9878"], "the line")

    def test_impossible_keys(self):
        rest, rest_path = mark("possible")
        write_shortcuts([item("không có", 4294967295), item("cũng không\n\"x\"", 0x10000), item("còn lại", "k", value=rest)])
        program = self.start()
        self.assert_fires(rest_path, "super+k")
        self.assertEqual(program.output(), ["Đăng ký phím tắt thất bại cho không có: code -9879",
                                            "Đăng ký phím tắt thất bại cho cũng không \"x\": code -9879"])

    def test_held_key_fires_once(self):
        held, path = mark("held")
        fence, fence_path = mark("held-fence")
        write_shortcuts([item("held", "k", value=held), item("fence", "l", value=fence)])
        self.start()
        subprocess.run(("xset", "r", "rate", "200", "40"), check=True)
        subprocess.run(("xdotool", "keydown", "super", "keydown", "k", "sleep", "1.5", "keyup", "k", "keyup", "super"), check=True)
        self.assert_fires(fence_path, "super+l")
        self.assertEqual(len(lines(path)), 1)
        self.assert_fires(path, "super+k")

    def test_scripts_run_at_the_same_time_and_a_hung_one_holds_nothing_up(self):
        hung, hung_path = mark("hung")
        quick, quick_path = mark("quick")
        write_shortcuts([item("hung", "k", value=hung + "; sleep 1000"), item("quick", "l", value=quick)])
        self.start()
        self.assert_fires(hung_path, "super+k")
        self.assert_fires(hung_path, "super+k")
        self.assert_fires(quick_path, "super+l")

    def test_script_sees_the_environment_and_its_output_goes_nowhere(self):
        path = f"{os.environ['XDG_RUNTIME_DIR']}/environment"
        script = f"echo discarded; echo discarded >&2; env > '{path}.part'; mv '{path}.part' '{path}'"
        write_shortcuts([item("env", "k", value=script)])
        program = self.start(MARKER="giữ nguyên")
        press("super+k")
        wait_for(lambda: os.path.exists(path), "the script")
        environment = dict(line.split("=", 1) for line in lines(path) if "=" in line)
        self.assertEqual(environment["MARKER"], "giữ nguyên")
        for name in ("QT_QPA_PLATFORMTHEME", "DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"):
            self.assertNotIn(name, environment)
        self.assertEqual(program.output(), [])

    def test_application_opens_and_comes_forward(self):
        folder = f"{os.environ['XDG_DATA_HOME']}/applications"
        os.makedirs(folder, exist_ok=True)
        with open(f"{folder}/org.example.Term.desktop", "w") as entry:
            entry.write("[Desktop Entry]\nType=Application\nName=Term\nStartupWMClass=ExampleTerm\n"
                        "Exec=xterm -class ExampleTerm -T example-term\n")
        write_shortcuts([item("Term", "k", action="launchApp", value="org.example.Term")])
        self.start()
        press("super+k")
        search = lambda: subprocess.run(("xdotool", "search", "--onlyvisible", "--class", "^ExampleTerm$"),
                                        capture_output=True, text=True).stdout.split()
        window = wait_for(search, "the application's window")
        subprocess.run(("xdotool", "windowactivate", "--sync", str(window_id())), check=True)
        press("super+k")
        active = lambda: subprocess.run(("xdotool", "getactivewindow"), capture_output=True, text=True).stdout.split()
        wait_for(lambda: active() == window, "the application coming forward")
        self.assertEqual(search(), window, "no second instance")

    def test_address_opens_in_the_default_browser(self):
        log = f"{os.environ['XDG_RUNTIME_DIR']}/browser"
        browser = f"{os.environ['HOME']}/browser"
        with open(browser, "w") as script:
            script.write(f"#!/bin/sh\nprintf '%s\\n' \"$1\" >> '{log}'\n")
        os.chmod(browser, 0o755)
        folder = f"{os.environ['XDG_DATA_HOME']}/applications"
        os.makedirs(folder, exist_ok=True)
        with open(f"{folder}/browser.desktop", "w") as entry:
            entry.write(f"[Desktop Entry]\nType=Application\nName=B\nExec={browser} %u\nMimeType=x-scheme-handler/https;\n")
        with open(f"{os.environ['XDG_CONFIG_HOME']}/mimeapps.list", "w") as defaults:
            defaults.write("[Default Applications]\nx-scheme-handler/https=browser.desktop\n")
        write_shortcuts([item("web", "k", action="openURL", value="  example.org/bảng\n")])
        self.start()
        press("super+k")
        wait_for(lambda: lines(log), "the browser")
        self.assertEqual(lines(log), ["https://example.org/b%E1%BA%A3ng"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
