"""Vietnamese input methods of a desktop: Unikey in IBus or in Fcitx, typing by Telex."""
import os
import subprocess

from tavrin import wait_for


def daemon(case, *command):
    """A program that runs until the test's end."""
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    case.addCleanup(process.wait)
    case.addCleanup(process.kill)


def output(*command):
    return subprocess.run(command, capture_output=True, text=True).stdout.strip()


class IBus:
    """On for every program that asks for it."""
    MODULE = "ibus"

    def __init__(self, case):
        daemon(case, "ibus-daemon", "--panel=disable", "--emoji-extension=disable")
        self.switch_on()

    def switch_on(self):
        wait_for(lambda: output("ibus", "engine", "Unikey") == "" and output("ibus", "engine") == "Unikey",
                 "the input method", 30)


class Fcitx:
    MODULE = "fcitx"

    def __init__(self, case):
        folder = f"{os.environ['XDG_CONFIG_HOME']}/fcitx5"
        os.makedirs(folder, exist_ok=True)
        with open(f"{folder}/profile", "w") as profile:
            profile.write("[Groups/0]\nName=Default\nDefault Layout=us\nDefaultIM=unikey\n"
                          "[Groups/0/Items/0]\nName=keyboard-us\n[Groups/0/Items/1]\nName=unikey\n"
                          "[GroupOrder]\n0=Default\n")
        daemon(case, "fcitx5", "--disable", "notificationitem,xim,wayland")

    def switch_on(self):
        """For the program that has the focus; there must be one."""
        wait_for(lambda: output("fcitx5-remote", "-o") == "" and output("fcitx5-remote", "-n") == "unikey",
                 "the input method", 30)
