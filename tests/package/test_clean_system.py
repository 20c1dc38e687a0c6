"""The package on a bare system of the same release: whether what it depends on is all that it needs."""
import glob
import json
import os
import platform
import subprocess
import tempfile
import unittest

from packages import PACKAGE, told
from tavrin import item, lines, press, wait_for, window_id

# Where this machine has its packages from.
SOURCES = [file for pattern in ("sources.list", "sources.list.d/*.list", "sources.list.d/*.sources")
           for file in sorted(glob.glob(f"/etc/apt/{pattern}"))]


@unittest.skipUnless(os.environ["TAVRIN_BARE_SYSTEM"], "downloads a system; ./dev test package runs it")
class CleanSystem(unittest.TestCase):
    def test_runs_with_nothing_but_what_it_depends_on(self):
        system = tempfile.mkdtemp()
        told("mmdebstrap", "--variant=minbase",
             f"--customize-hook=copy-in {PACKAGE} /tmp",
             '--customize-hook=chroot "$1" sh -c "apt-get install -y --no-install-recommends /tmp/*.deb"',
             platform.freedesktop_os_release()["VERSION_CODENAME"], system, *SOURCES)
        told("mount", "-t", "proc", "proc", f"{system}/proc")
        self.addCleanup(told, "umount", f"{system}/proc")

        told("mkdir", "-p", f"{system}/root/.local/share/Tavrin")
        with open(f"{system}/root/.local/share/Tavrin/shortcuts.json", "w") as file:
            json.dump([item("Ghi", "k", value="print pressed >> ~/mark")], file)
        # The X server of this desktop listens on an address that no file system hides.
        program = subprocess.Popen(("chroot", system, "env", "-i", "PATH=/usr/bin:/bin", "HOME=/root", "LANG=C.UTF-8",
                                    "XDG_RUNTIME_DIR=/root", f"DISPLAY={told('printenv', 'DISPLAY')}", "Tavrin"),
                                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self.addCleanup(program.kill)
        wait_for(window_id, "the window")
        press("super+k")
        wait_for(lambda: lines(f"{system}/root/mark") == ["pressed"], "the shortcut running its script")
        program.terminate()
        output, _ = program.communicate(timeout=10)
        self.assertEqual((program.returncode, output), (0, ""))


if __name__ == "__main__":
    unittest.main(verbosity=2)
