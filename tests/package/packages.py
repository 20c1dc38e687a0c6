"""The packages that are tried, the system that they are installed on, and what runs of them."""
import glob
import os
import shutil
import signal
import subprocess

import accessibility
from tavrin import PROGRAM, item, mark, running, wait_for, window_id, write_shortcuts
from window import WindowCase

ENTRY = "app.tavrin.Tavrin.desktop"
# Where an update goes, and the program there.
BUNDLES = f"{os.environ['HOME']}/.local/opt"
BUNDLED = f"{BUNDLES}/Tavrin.app/bin/Tavrin"


def only_file(variable, pattern):
    found = glob.glob(f"{os.environ[variable]}/{pattern}")
    if len(found) != 1:
        raise AssertionError(f"{pattern} in ${variable}: {found}")
    return found[0]


PACKAGE = only_file("TAVRIN_PACKAGES", "*.deb")
NEXT_PACKAGE = only_file("TAVRIN_NEXT_PACKAGES", "*.deb")
BUNDLE = only_file("TAVRIN_PACKAGES", "*.zip")
NEXT_BUNDLE = only_file("TAVRIN_NEXT_PACKAGES", "*.zip")


def told(*command):
    """What the command prints; fails unless it is content."""
    result = subprocess.run(command, capture_output=True, text=True)
    if result.returncode:
        raise AssertionError(f"{command} ended with {result.returncode}: {result.stdout}{result.stderr}")
    return result.stdout.strip()


def version(package):
    return told("dpkg-deb", "--field", package, "Version")


def install(package):
    told("dpkg", "--install", package)


def is_installed():
    return subprocess.run(("dpkg", "--status", "tavrin"), capture_output=True).returncode == 0


def end(program):
    for pid in running(program):
        os.kill(pid, signal.SIGTERM)
    wait_for(lambda: not running(program), f"{program} ending")


class PackageCase(WindowCase):
    """One shortcut, and no package or bundle but what the test installs."""

    def setUp(self):
        super().setUp()
        self.addCleanup(shutil.rmtree, BUNDLES, ignore_errors=True)
        self.addCleanup(lambda: is_installed() and told("dpkg", "--purge", "tavrin"))
        script, self.mark = mark("live")
        write_shortcuts([item("Ghi", "k", value=script)])

    def start_installed(self, *command, **environment):
        """The program as the command starts it, with its window shown."""
        variables = {**os.environ, **accessibility.ENVIRONMENT, **environment}
        subprocess.run(("setsid", "--fork", *command), check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, env={key: value for key, value in variables.items() if value})
        self.addCleanup(end, PROGRAM)
        self.addCleanup(end, BUNDLED)
        self.wait_window()

    def wait_window(self):
        wait_for(window_id, "the window")
        self.window = accessibility.application("Tavrin")
