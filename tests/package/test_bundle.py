"""An update by the program itself, from the bundle and from beside the package, with what users get."""
import os
import shutil
import unittest

from packages import (
    BUNDLE, BUNDLED, BUNDLES, ENTRY, NEXT_BUNDLE, NEXT_PACKAGE, PACKAGE, PackageCase, end, install, told, version)
from tavrin import PROGRAM, running, wait_for, window_id
from update_server import UpdateServer

AUTHORITY = "/usr/local/share/ca-certificates/tavrin-test.crt"


class Bundle(PackageCase):
    def setUp(self):
        super().setUp()
        with open(NEXT_BUNDLE, "rb") as file:
            self.server = UpdateServer(version(NEXT_PACKAGE), file.read())
        self.server.second_half.set()
        # What users get trusts whom the system trusts.
        os.makedirs(os.path.dirname(AUTHORITY), exist_ok=True)
        shutil.copy(self.server.authority.certificate, AUTHORITY)
        told("update-ca-certificates")
        self.environment = self.server.environment()

    def update(self):
        """From the offer to the next version's window."""
        self.window.find("label", f"v{version(PACKAGE)}")
        self.window.find("push button", "Cập nhật ngay").press()
        wait_for(lambda: not window_id(), "the old version ending")
        self.wait_window()
        self.window.find("label", f"v{version(NEXT_PACKAGE)}")
        self.assertEqual(len(running(BUNDLED)), 1)
        self.assertEqual(running(PROGRAM), [])
        self.assert_fires(self.mark, "super+k")

    def test_the_bundle_replaces_itself(self):
        told("unzip", "-q", BUNDLE, "-d", BUNDLES)
        self.start_installed(BUNDLED, **self.environment)
        self.assert_fires(self.mark, "super+k")
        self.update()

    def test_beside_the_package_the_update_is_the_users_own(self):
        install(PACKAGE)
        self.start_installed("gtk-launch", ENTRY, **self.environment)
        self.update()
        self.assertEqual(told("dpkg", "--verify", "tavrin"), "", "the package is as it was")
        # The menu still starts the package's program, which gives way.
        end(BUNDLED)
        self.start_installed("gtk-launch", ENTRY)
        self.window.find("label", f"v{version(NEXT_PACKAGE)}")
        self.assertEqual((len(running(BUNDLED)), len(running(PROGRAM))), (1, 0))
        self.assert_fires(self.mark, "super+k")
        # Once the package has caught up, it no longer does.
        end(BUNDLED)
        install(NEXT_PACKAGE)
        self.start_installed("gtk-launch", ENTRY)
        self.assertEqual((len(running(BUNDLED)), len(running(PROGRAM))), (0, 1))
        self.assert_fires(self.mark, "super+k")


if __name__ == "__main__":
    unittest.main(verbosity=2)
