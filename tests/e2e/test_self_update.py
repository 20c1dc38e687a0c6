"""A release that replaces itself by the next one, from the find to the key that works again."""
import filecmp
import io
import os
import shutil
import signal
import subprocess
import tempfile
import time
import unittest
import zipfile

import accessibility
from desktop import HOME, write_script
from tavrin import item, lines, mark, running, wait_for, window_id
from update_server import UpdateServer, bundle
from window import WindowCase

INSTALLED = f"{HOME}/.local/opt"
PROGRAM = f"{INSTALLED}/Tavrin.app/bin/Tavrin"
NEXT = os.environ["TAVRIN_BUILD"] + "/tests/next/Tavrin"
TEMPORARY = f"{os.environ['XDG_RUNTIME_DIR']}/Tavrin"
FETCH = os.environ["TAVRIN_BUILD"] + "/tavrin-fetch"
STAND_INS = f"{HOME}/stand-ins"


def zipped(folder):
    """The folder's contents as an archive that keeps what may be executed."""
    data = io.BytesIO()
    with zipfile.ZipFile(data, "w", zipfile.ZIP_STORED) as archive:
        for parent, _, names in os.walk(folder):
            for name in names:
                path = os.path.join(parent, name)
                archive.write(path, os.path.relpath(path, folder))
    return data.getvalue()


def leftovers():
    """Where archives are unpacked."""
    return [name for name in os.listdir(tempfile.gettempdir()) if name.startswith("tmp.")]


class SelfUpdate(WindowCase):
    def setUp(self):
        super().setUp()
        for folder in (INSTALLED, TEMPORARY):
            shutil.rmtree(folder, ignore_errors=True)
        bundle(INSTALLED)
        # What the updater ends by name are others' programs, on a machine that runs more than this test.
        self.killed = f"{HOME}/killed"
        write_script(f"{STAND_INS}/killall", f"printf '%s\\n' \"$*\" >> '{self.killed}'")
        self.addCleanup(lambda: os.path.exists(self.killed) and os.remove(self.killed))
        self.addCleanup(self.end_installed)
        script, self.mark = mark("live")
        self.items = [item("Ghi", "k", value=script)]

    def end_installed(self):
        def none_left():
            left = running(PROGRAM)
            for pid in left:
                os.kill(pid, signal.SIGKILL)
            return not left
        wait_for(none_left, "the programs ending")

    def start_installed(self, server):
        path = f"{STAND_INS}:{os.environ['PATH']}"
        self.assertEqual(shutil.which("killall", path=path), f"{STAND_INS}/killall")
        program = self.start_window(self.items, program=PROGRAM, PATH=path, **server.environment())
        self.window.find("label", "v1.0.7")
        self.assert_fires(self.mark, "super+k")
        return program

    def start_download(self, server):
        """Starts the program, which finds the next release, and downloads half of it."""
        program = self.start_installed(server)
        self.window.find("label", "Đã có bản cập nhật mới: v1.0.8")
        self.window.find("push button", "Cập nhật ngay").press()
        self.window.find("label", "Đang tải bản cập nhật v1.0.8...")
        wait_for(lambda: 45 <= self.percentage() <= 50, "half of it being here")
        self.assertEqual(self.window.search("push button", "Cập nhật ngay"), [])
        return program

    def wait_updater(self):
        """It removes what it has unpacked, and last the archive."""
        wait_for(lambda: os.listdir(TEMPORARY) == ["tavrin_updater.sh"], "the updater tidying up")
        self.assertEqual(leftovers(), [])

    def percentage(self):
        found = [label.name for label in self.window.search("label") if label.name.endswith("%")]
        return int(found[0].removesuffix("%")) if found else -1

    def test_replaces_itself_by_the_next_release(self):
        with tempfile.TemporaryDirectory() as folder:
            bundle(folder, NEXT)
            archive = zipped(folder)
        server = UpdateServer("1.0.8", archive)
        old = self.start_download(server)
        # It is the same program meanwhile.
        self.assert_fires(self.mark, "super+k")
        server.second_half.set()
        self.assertEqual(old.process.wait(10), 0)

        new = wait_for(lambda: [pid for pid in running(PROGRAM) if pid != old.process.pid], "the next release")[0]
        wait_for(window_id, "its window")
        self.assertTrue(filecmp.cmp(f"/proc/{new}/exe", NEXT, shallow=False))
        self.window = accessibility.application("Tavrin")
        self.window.find("label", "v1.0.8")
        self.row("Ghi")
        self.assert_fires(self.mark, "super+k")
        self.assertEqual(running(PROGRAM), [new])
        self.assertEqual(os.getsid(new), new, "it is nobody's child that could take it along")
        self.wait_updater()
        self.assertEqual(lines(self.killed), ["Tavrin"])
        self.assertEqual(os.stat(TEMPORARY).st_mode & 0o7777, 0o700)
        # The next release knows that it is the newest.
        wait_for(lambda: server.asked.count("/version.json") == 2, "its own check")
        self.assertEqual(self.window.search("label", "Đã có bản cập nhật mới: v1.0.8"), [])
        self.assertEqual(old.output(), [])

    def test_without_a_bundle_the_old_release_stays_and_starts_again(self):
        server = UpdateServer("1.0.8", b"<html>404</html>" * 4096, status="404 Not Found")
        old = self.start_download(server)
        server.second_half.set()
        self.assertEqual(old.process.wait(10), 0)
        self.wait_updater()
        self.assertEqual(running(PROGRAM), [], "nothing is opened")
        self.assertEqual(lines(self.killed), [])
        self.start_installed(server)

    def test_a_download_that_breaks_off_leaves_everything_running(self):
        server = UpdateServer("1.0.8", b"half" * 65536, breaks_off=True)
        old = self.start_download(server)
        server.second_half.set()
        button = self.window.find("push button", "Cập nhật ngay")
        self.assert_fires(self.mark, "super+k")
        self.assertEqual(os.listdir(TEMPORARY), [])
        self.assertIsNone(old.process.poll())
        # Once more, now that the server has it whole.
        server.breaks_off = False
        button.press()
        self.assertEqual(old.process.wait(10), 0)
        self.wait_updater()

    def test_an_end_in_the_middle_leaves_nothing(self):
        server = UpdateServer("1.0.8", b"half" * 65536)
        old = self.start_download(server)
        self.assertEqual(len(os.listdir(TEMPORARY)), 1)
        self.assertEqual(old.end(), 0)
        self.assertEqual(os.listdir(TEMPORARY), [])
        server.second_half.set()


class Download(unittest.TestCase):
    def test_arrives_whole_every_time(self):
        """Encrypted, and paused in the middle: a read buffer with a limit held back the end of some."""
        archive = os.urandom(12_000_000)
        server = UpdateServer("1.0.8", archive)
        environment = {**os.environ, **server.environment()}
        del environment["no_proxy"]
        with tempfile.NamedTemporaryFile() as file:
            for _ in range(40):
                server.second_half.clear()
                command = (FETCH, "download", "https://updates.tavrin.invalid/Tavrin.app.zip", file.name)
                helper = subprocess.Popen(command, env=environment, stdout=subprocess.PIPE)
                self.addCleanup(helper.kill)
                time.sleep(0.2)
                server.second_half.set()
                output, _ = helper.communicate(timeout=20)
                self.assertEqual(output.splitlines()[-1], b"complete")
                file.seek(0)
                self.assertEqual(file.read(), archive)


if __name__ == "__main__":
    unittest.main(verbosity=2)
