"""What a package brings for desktops and readers, checked by the programs that read it."""
import glob
import os
import struct
import subprocess
import tempfile
import unittest

APPLICATION = "app.tavrin.Tavrin"
SIZES = (16, 22, 24, 32, 48, 64, 128, 256, 512)


def told(*command):
    """What the command prints on both roads; fails unless it is content."""
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if result.returncode:
        raise AssertionError(f"{command} ended with {result.returncode}: {result.stdout}")
    return result.stdout


class Metadata(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.root = folder.name
        told("cmake", "--install", os.environ["TAVRIN_BUILD"], "--component", "desktop", "--prefix", f"{cls.root}/usr")
        cls.share = f"{cls.root}/usr/share"

    def test_the_menu_entry_is_valid(self):
        self.assertEqual(told("desktop-file-validate", f"{self.share}/applications/{APPLICATION}.desktop"), "")

    def test_the_metadata_is_valid_and_fits_the_entry(self):
        # Without a network: the maker's addresses are placeholders.
        told("appstreamcli", "validate-tree", "--no-net", "--strict", self.root)

    def test_manuals_have_no_warnings_and_a_name(self):
        pages = glob.glob(f"{self.share}/man/**/Tavrin.1.gz", recursive=True)
        self.assertTrue(pages)
        for page in pages:
            shown = subprocess.run(("man", "--warnings", "--local-file", page), capture_output=True, text=True,
                                   env={**os.environ, "MANWIDTH": "80", "MANPAGER": "cat"})
            self.assertEqual((shown.returncode, shown.stderr), (0, ""))
            self.assertIn('"Tavrin - ', told("lexgrog", page))

    def test_icons_have_the_sizes_that_their_folders_say(self):
        icons = f"{self.share}/icons/hicolor"
        self.assertEqual(sorted(os.listdir(icons)), sorted([f"{size}x{size}" for size in SIZES] + ["scalable"]))
        for size in SIZES:
            with open(f"{icons}/{size}x{size}/apps/{APPLICATION}.png", "rb") as file:
                head = file.read(24)
            self.assertEqual(head[:8], b"\x89PNG\r\n\x1a\n")
            self.assertEqual(struct.unpack(">II", head[16:24]), (size, size))
        self.assertIn("<svg ", told("cat", f"{icons}/scalable/apps/{APPLICATION}.svg"))


if __name__ == "__main__":
    unittest.main(verbosity=2)
