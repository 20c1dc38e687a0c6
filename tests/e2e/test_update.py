"""The update check of the running program: a helper process of its own, which leaves nothing behind."""
import os
import signal
import socket
import threading
import unittest

from tavrin import TestCase, wait_for

CHECK_LIMIT_SECONDS = 10


class SilentProxy:
    """Takes every connection and never answers; remembers what it was asked."""

    def __init__(self):
        self.asked = []
        self.connections = []
        self.listener = socket.create_server(("127.0.0.1", 0))
        threading.Thread(target=self.listen, daemon=True).start()

    def listen(self):
        while True:
            connection, _ = self.listener.accept()
            self.connections.append(connection)
            self.asked.append(connection.recv(4096))

    def environment(self):
        address = f"http://127.0.0.1:{self.listener.getsockname()[1]}"
        return {"http_proxy": address, "https_proxy": address, "no_proxy": None}


def children(pid):
    """The process's children by name; also those that have ended and have not been collected."""
    found = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat") as stat:
                    head, _, tail = stat.read().rpartition(")")
            except OSError:
                continue
            if int(tail.split()[1]) == pid:
                found[head.partition("(")[2]] = int(entry)
    return found


def is_running(pid):
    try:
        with open(f"/proc/{pid}/stat") as stat:
            return stat.read().rpartition(")")[2].split()[0] not in "ZX"
    except OSError:
        return False


class UpdateCheck(TestCase):
    def setUp(self):
        super().setUp()
        self.proxy = SilentProxy()

    def start_and_check(self):
        program = self.start(**self.proxy.environment())
        asked = wait_for(lambda: self.proxy.asked, "the check")[0]
        self.assertRegex(asked.decode(), r"^CONNECT [^ ]+:443 HTTP")
        return program, children(program.process.pid)["tavrin-fetch"]

    def test_ends_with_its_helper_and_loads_nothing_for_it(self):
        program, helper = self.start_and_check()
        pid = program.process.pid
        wait_for(lambda: not children(pid), "the end of the helper", CHECK_LIMIT_SECONDS + 5)
        self.assertFalse(is_running(helper))
        self.assertIsNone(program.process.poll())
        with open(f"/proc/{pid}/maps") as maps:
            self.assertNotIn("libssl", maps.read())
        self.assertEqual(program.output(), [])

    def test_helper_ends_with_a_program_that_quits(self):
        program, helper = self.start_and_check()
        self.assertEqual(program.end(), 0)
        wait_for(lambda: not is_running(helper), "the end of the helper", 2)

    def test_helper_ends_with_a_program_that_is_killed(self):
        program, helper = self.start_and_check()
        program.end(signal.SIGKILL)
        wait_for(lambda: not is_running(helper), "the end of the helper", 2)


if __name__ == "__main__":
    unittest.main(verbosity=2)
