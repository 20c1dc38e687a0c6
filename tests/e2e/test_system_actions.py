"""A key pressed anywhere carries out a system action: through the whole program, with stand-ins for the tools."""
import os
import shutil
import subprocess
import unittest
import uuid

from tavrin import RUNTIME, Program, TestCase, item, lines, mark, press, wait_for, write_shortcuts

REAL = ("gdbus", "gsettings", "setsid", "sleep", "timeout", "grep")


def pictures():
    return [name for name in os.listdir(RUNTIME) if name.startswith("Tavrin-")]


def action(name, key):
    return item(name, key, action="systemAction", value=name)


class SystemActions(TestCase):
    def setUp(self):
        super().setUp()
        self.folder = f"{RUNTIME}/tools-{uuid.uuid4()}"
        self.log = f"{self.folder}.log"
        os.mkdir(self.folder)
        self.addCleanup(shutil.rmtree, self.folder)
        for name in REAL:
            os.symlink(shutil.which(name, path="/usr/bin:/bin"), f"{self.folder}/{name}")

    def stand_in(self, name, more=""):
        with open(f"{self.folder}/{name}", "w") as script:
            script.write(f"#!/bin/sh\nprintf '%s\\n' \"{name} $*\" >> '{self.log}'\n{more}\n")
        os.chmod(f"{self.folder}/{name}", 0o755)

    def start_with_tools(self, **environment):
        return self.start(PATH=self.folder, **environment)

    def wait_called(self, *calls):
        wait_for(lambda: lines(self.log) == list(calls), f"{calls} instead of {lines(self.log)}")

    def test_press_starts_the_desktops_tool(self):
        self.stand_in("rofi")
        write_shortcuts([action("openMissionControl", "k")])
        program = self.start_with_tools()
        press("super+k")
        self.wait_called("rofi -show window")
        self.assertEqual(program.output(), [])

    def test_toggle_pressed_twice_quickly_ends_where_it_began(self):
        write_shortcuts([action("toggleDarkMode", "k")])
        # What the program's tools read and write, and what the test does.
        program = self.start_with_tools(GSETTINGS_BACKEND=None)
        environment = {key: value for key, value in os.environ.items() if key != "GSETTINGS_BACKEND"}
        scheme = lambda: subprocess.run(("gsettings", "get", "org.gnome.desktop.interface", "color-scheme"),
                                        env=environment, capture_output=True, text=True, check=True).stdout.strip()
        self.assertEqual(scheme(), "'default'")
        press("super+k")
        wait_for(lambda: scheme() == "'prefer-dark'", "dark mode")
        press("super+k", "super+k", "super+k")
        wait_for(lambda: scheme() == "'default'", "light mode")
        self.assertEqual(program.output(), [])

    def test_missing_tool_is_said_where_scripts_fail_aloud_and_swallowed_where_programs_do(self):
        write_shortcuts([action("openMissionControl", "k"), action("emptyTrash", "l")])
        program = self.start_with_tools()
        press("super+k")
        press("super+l")
        wait_for(lambda: program.output() == ["AppleScript error: Máy này không có: gio"], "the line")

    def test_action_that_differs_in_letter_case_does_nothing(self):
        fence, path = mark("fence")
        self.stand_in("rofi")
        write_shortcuts([item("typo", "k", action="systemAction", value="OpenMissionControl"),
                         item("fence", "l", value=fence)])
        program = self.start_with_tools()
        self.assert_silent(self.log, ("super+l",), path, "super+k")
        self.assertEqual(program.output(), [])

    def test_hung_tool_holds_neither_another_action_nor_the_end_up(self):
        self.stand_in("swaymsg", "exec sleep 1000")
        self.stand_in("rofi")
        write_shortcuts([action("sleepDisplay", "k"), action("openMissionControl", "l")])
        program = self.start_with_tools(SWAYSOCK="socket")
        press("super+k")
        self.wait_called("swaymsg output * dpms off")
        press("super+l")
        self.wait_called("swaymsg output * dpms off", "rofi -show window")
        self.assertEqual(program.end(), 0)

    def test_picture_of_a_region_is_on_the_clipboard_and_nowhere_else(self):
        subprocess.run(("convert", "-size", "3x2", "xc:red", f"{self.folder}/red.png"), check=True)
        # What is not chosen, the first time, is not taken.
        self.stand_in("maim", f"[ -e '{self.folder}/chosen' ] && exec /bin/cp '{self.folder}/red.png' \"$2\"; exit 1")
        fence, path = mark("region-fence")
        write_shortcuts([action("screenshotToClipboard", "k"), item("fence", "l", value=fence)])
        program = self.start_with_tools()
        clipboard = lambda *words: subprocess.run(("/usr/bin/xclip", "-selection", "clipboard", *words),
                                                  capture_output=True).stdout
        subprocess.run(("/usr/bin/xclip", "-selection", "clipboard"), input=b"before", check=True)
        press("super+k")
        wait_for(lambda: len(lines(self.log)) == 1, "the tool")
        # A press while it is under way would change nothing.
        wait_for(lambda: not pictures(), "the end of the choice")
        self.assertEqual(clipboard("-o"), b"before")
        open(f"{self.folder}/chosen", "w").close()

        def taken():
            press("super+k")
            return len(lines(self.log)) > 1
        wait_for(taken, "another choice")
        with open(f"{self.folder}/red.png", "rb") as picture:
            expected = picture.read()
        wait_for(lambda: clipboard("-t", "image/png", "-o") == expected, "the picture on the clipboard")
        wait_for(lambda: not pictures(), "the folder of the picture going")
        self.assert_fires(path, "super+l")
        self.assertEqual(program.output(), [])

    def test_volume_follows_every_press_of_a_burst(self):
        server = subprocess.Popen(
            ("pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--high-priority=no", "--realtime=no",
             "--load=module-null-sink sink_name=test", "--load=module-native-protocol-unix"),
            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(server.wait)
        self.addCleanup(server.terminate)
        pactl = lambda *words: subprocess.run(("pactl", *words, "@DEFAULT_SINK@"), capture_output=True, text=True).stdout
        wait_for(lambda: "100%" in pactl("get-sink-volume"), "the sound server")
        write_shortcuts([action("volumeDown", "k"), action("volumeUp", "l"), action("toggleMute", "m")])
        program = self.start()
        press(*["super+k"] * 7)
        wait_for(lambda: " 30%" in pactl("get-sink-volume"), "a lower volume")
        press("super+l", "super+m")
        wait_for(lambda: " 40%" in pactl("get-sink-volume") and "yes" in pactl("get-sink-mute"), "a higher volume, mute")
        self.assertEqual(program.output(), [])

    def test_volume_without_a_sound_server_says_why(self):
        write_shortcuts([action("volumeUp", "k")])
        program = self.start(PULSE_SERVER=f"unix:{self.folder}/nowhere")
        press("super+k")
        wait_for(lambda: [line.startswith("AppleScript error: ") for line in program.output()] == [True], "the line")


class PoweredDisplay(unittest.TestCase):
    """On a server whose display can be turned off: the virtual one of the other tests has none."""

    def setUp(self):
        folder = f"{RUNTIME}/server-{uuid.uuid4()}"
        os.mkdir(folder)
        self.addCleanup(shutil.rmtree, folder)
        with open(f"{folder}/xorg.conf", "w") as configuration:
            configuration.write('Section "ServerFlags"\nOption "AutoAddDevices" "false"\nEndSection\n'
                                'Section "Device"\nIdentifier "device"\nDriver "dummy"\nEndSection\n'
                                'Section "Screen"\nIdentifier "screen"\nDevice "device"\nEndSection\n')
        # A seat that is nobody's keeps it away from consoles and devices.
        self.server = subprocess.Popen(
            ("/usr/lib/xorg/Xorg", "-config", f"{folder}/xorg.conf", "-logfile", f"{folder}/log", "-displayfd", "1",
             "-seat", "nobody", "-noreset", "-nolisten", "tcp"),
            env={**os.environ, "LD_PRELOAD": os.environ["TAVRIN_BUILD"] + "/tests/libdisplay_power.so"},
            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        self.addCleanup(self.end_server)
        usual = os.environ["DISPLAY"]
        self.addCleanup(os.environ.__setitem__, "DISPLAY", usual)
        os.environ["DISPLAY"] = f":{self.server.stdout.readline().strip()}"
        # Without a real keyboard the server numbers its keys in another way.
        subprocess.run(("setxkbmap", "-rules", "evdev", "-layout", "us", "-option", ""), check=True)

    def end_server(self):
        self.server.terminate()
        self.server.wait()
        self.server.stdout.close()

    def test_display_goes_dark_when_the_keys_are_let_go(self):
        write_shortcuts([action("sleepDisplay", "k")])
        program = Program(self).wait_ready()
        is_off = lambda: "Monitor is Off" in subprocess.run(("xset", "q"), capture_output=True, text=True).stdout
        subprocess.run(("xdotool", "keydown", "super", "keydown", "k"), check=True)
        self.assertFalse(is_off())
        subprocess.run(("xdotool", "keyup", "k", "keyup", "super"), check=True)
        wait_for(is_off, "the display going dark")
        self.assertEqual(program.output(), [])


if __name__ == "__main__":
    unittest.main(verbosity=2)
