"""The archive for Windows: what it holds, and its programs as they start from an odd folder."""

import pathlib
import shutil
import subprocess
import tempfile
import unittest

from desktop import Desktop, wait_for
from packages.built import PACKAGES, VERSION, ZIP, run
from support import ROOT

TOP = "tarvik-%s-windows" % VERSION
PROGRAMS = ("tarvik.exe", "tarvik-demo.exe")
WINE = ROOT / "scripts" / "wine32.sh"
ODD_FOLDER = "Programme für die Leitung (neu)"


class UnpackedTest(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tarvik-zip-"))
        self.addCleanup(shutil.rmtree, self.folder)
        run("unzip", "-q", ZIP, "-d", self.folder)
        self.programs = (self.folder / TOP).rename(self.folder / ODD_FOLDER)


class ArchiveTest(UnpackedTest):
    def test_it_holds_one_folder_with_the_programs_and_their_texts(self):
        names = run("unzip", "-Z1", ZIP).splitlines()
        self.assertEqual(names, [TOP + "/" + name for name in (
            "Licence.txt", "ReadMe.txt", "Runtime licences.txt", "tarvik-demo.exe", "tarvik.exe")])

    def test_the_programs_are_those_that_were_built(self):
        for program in PROGRAMS:
            self.assertEqual((self.programs / program).read_bytes(),
                             (ROOT / "build/windows/bin" / program).read_bytes())

    def test_the_texts_have_the_line_ends_of_windows_and_characters_of_every_code_page(self):
        for name in ("ReadMe.txt", "Licence.txt"):
            text = (self.programs / name).read_bytes()
            self.assertTrue(text.isascii(), name)
            self.assertTrue(text.endswith(b"\r\n"), name)
            self.assertEqual(text.count(b"\n"), text.count(b"\r\n"), name)

    def test_the_read_me_tells_how_to_start_where_the_file_is_and_the_limits(self):
        text = (self.programs / "ReadMe.txt").read_text(encoding="ascii")
        self.assertTrue(text.startswith("Velmars Tarvik %s for Windows" % VERSION))
        for word in ("tarvik.exe ", "tarvik-demo.exe ", "/r (or /run)", r"%APPDATA%\Velmars Tarvik",
                     "Tarvik.ini", "Limits", "GNU General Public License"):
            self.assertIn(word, text)
        self.assertNotIn("@", text)


class StartedTest(UnpackedTest):
    @classmethod
    def setUpClass(cls):
        cls.desktop = Desktop()
        cls.addClassCleanup(cls.desktop.close)

    def xdotool(self, *words):
        done = subprocess.run(["xdotool", *words], env=self.desktop.environment,
                              capture_output=True, text=True, check=False)
        return done.stdout.split()

    def opens_and_quits(self, program):
        """Starts the program on an INI file, so that no box comes, and quits it with the keyboard."""
        ini = self.programs / "Tarvik.ini"
        ini.write_bytes(b"[Settings]\r\nRefreshInterval=200\r\n")
        environment = {
            **self.desktop.environment, "WINE32_WORK": str(self.folder), "WINE32_TIMEOUT": "120",
            "WINE32_SYSTEM": str(ROOT / "build/windows/bin/standin/rasapi32.dll"),
            "WINEDLLOVERRIDES": "rasapi32=n", "TARVIK_STANDIN_ENTRIES": "Line",
        }
        started = subprocess.Popen(
            [WINE, "shell", "/usr/lib/wine/wine", "Z:\\w\\%s\\%s" % (ODD_FOLDER, program)],
            env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        self.addCleanup(started.wait)
        self.addCleanup(started.terminate)
        window = wait_for("the window of " + program, lambda: self.main_window(started), 90)
        self.xdotool("windowactivate", "--sync", window, "key", "alt+q")
        self.assertEqual(started.wait(60), 0)
        text = ini.read_text(encoding="ascii")
        self.assertIn("RefreshInterval=200\n", text)
        self.assertIn("IsLocked=0\n", text)

    def main_window(self, started):
        self.assertIsNone(started.poll(), "the program ended")
        return next(iter(self.xdotool("search", "--onlyvisible", "--name", "^Velmars Tarvik$")), None)

    def test_the_program_opens_its_window_and_keeps_its_file_beside_itself(self):
        self.opens_and_quits("tarvik.exe")

    def test_the_demo_opens_its_window_and_keeps_its_file_beside_itself(self):
        self.opens_and_quits("tarvik-demo.exe")


class SecondBuildTest(unittest.TestCase):
    def test_packages_that_are_made_again_are_the_same_byte_by_byte(self):
        with tempfile.TemporaryDirectory(prefix="tarvik-again-") as folder:
            for preset in ("release", "windows"):
                for program in (ROOT / "build" / preset / "bin").glob("tarvik*"):
                    program.unlink()
            run(ROOT / "scripts/package.sh", folder)
            names = {path.name for path in PACKAGES.iterdir()}
            self.assertEqual({path.name for path in pathlib.Path(folder).iterdir()}, names)
            self.assertEqual(len(names), 2)
            for name in names:
                self.assertEqual((pathlib.Path(folder) / name).read_bytes(),
                                 (PACKAGES / name).read_bytes(), name)


if __name__ == "__main__":
    unittest.main()
