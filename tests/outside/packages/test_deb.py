"""The package for Debian: what it says and holds, and the program as it installs it."""

import gzip
import json
import os
import pathlib
import shutil
import struct
import tempfile
import unittest

from desktop import Desktop, Program, powerless
from packages.built import DEB, VERSION, run
from support import ROOT

PROGRAMS = ("tarvik", "tarvik-demo")
ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256)
FILES = {
    "usr/bin/tarvik",
    "usr/bin/tarvik-demo",
    "usr/share/applications/tarvik.desktop",
    "usr/share/doc/tarvik/CHANGELOG.md.gz",
    "usr/share/doc/tarvik/changelog.gz",
    "usr/share/doc/tarvik/copyright",
    *("usr/share/icons/hicolor/%dx%d/apps/tarvik.png" % (size, size) for size in ICON_SIZES),
    "usr/share/icons/hicolor/scalable/apps/tarvik.svg",
    "usr/share/man/man1/tarvik.1.gz",
    "usr/share/man/man1/tarvik-demo.1.gz",
    "usr/share/metainfo/example.velmars.tarvik.metainfo.xml",
}


class PackageTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="tarvik-deb-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        run("dpkg-deb", "--extract", DEB, cls.folder)

    def field(self, name):
        return run("dpkg-deb", "--field", DEB, name).strip()

    def test_it_names_itself_and_its_version(self):
        self.assertEqual(self.field("Package"), "tarvik")
        self.assertEqual(self.field("Version"), VERSION)
        self.assertEqual(self.field("Architecture"), "amd64")
        self.assertEqual(self.field("Section"), "net")

    def test_it_depends_on_the_libraries_that_the_programs_name(self):
        depends = {each.split()[0] for each in self.field("Depends").split(", ")}
        self.assertEqual(depends, {"libc6", "libgcc-s1", "libqt6core6", "libqt6dbus6", "libqt6gui6",
                                   "libqt6widgets6", "libsdbus-c++1", "libstdc++6", "libxcb1"})
        self.assertEqual(self.field("Recommends"), "network-manager, qt6-wayland")

    def test_it_holds_these_files_and_no_others(self):
        held = {str(path.relative_to(self.folder)) for path in self.folder.rglob("*")
                if not path.is_dir()}
        self.assertEqual(held, FILES)

    def test_everything_is_roots_and_only_programs_are_executable(self):
        for line in run("dpkg-deb", "--contents", DEB).splitlines():
            mode, owner, name = line.split()[0], line.split()[1], line.split()[-1]
            wanted = "drwxr-xr-x" if name.endswith("/") else "-rw-r--r--"
            if "/usr/bin/tarvik" in name:
                wanted = "-rwxr-xr-x"
            self.assertEqual((mode, owner), (wanted, "root/root"), name)

    def test_the_checker_of_packages_finds_nothing(self):
        said = run("lintian", "--allow-root", "--fail-on", "error,warning",
                   "--tag-display-limit", "0", DEB)
        self.assertNotRegex(said, "(?m)^[EW]: ")

    def test_the_menu_entry_is_valid_and_starts_a_program_that_is_there(self):
        entry = self.folder / "usr/share/applications/tarvik.desktop"
        run("desktop-file-validate", entry)
        lines = entry.read_text(encoding="utf-8").splitlines()
        started = [line[5:] for line in lines if line.startswith("Exec=")]
        self.assertEqual(started, ["tarvik"])
        self.assertIn("Icon=tarvik", lines)

    def test_the_description_for_software_centres_is_valid_and_has_the_version(self):
        description = next((self.folder / "usr/share/metainfo").iterdir())
        run("appstreamcli", "validate", "--no-net", description)
        self.assertIn('<release version="%s"' % VERSION, description.read_text(encoding="utf-8"))

    def test_every_icon_has_the_size_of_its_folder(self):
        for size in ICON_SIZES:
            image = self.folder / ("usr/share/icons/hicolor/%dx%d/apps/tarvik.png" % (size, size))
            self.assertEqual(struct.unpack(">II", image.read_bytes()[16:24]), (size, size))

    def test_the_manual_pages_are_set_without_a_warning(self):
        for program in PROGRAMS:
            page = self.folder / ("usr/share/man/man1/%s.1.gz" % program)
            said = run("sh", "-c", 'man --warnings -E UTF-8 -l -Tutf8 -Z "$1" 2>&1 >/dev/null',
                       "man", page)
            self.assertEqual(said, "")
            self.assertIn("Velmars Tarvik " + VERSION, gzip.decompress(page.read_bytes()).decode())

    def test_the_programs_are_stripped_and_hardened(self):
        for program in PROGRAMS:
            path = self.folder / "usr/bin" / program
            self.assertIn("Position-Independent", run("readelf", "--file-header", path))
            self.assertRegex(run("readelf", "--dynamic", path), r"\(FLAGS\) +BIND_NOW")
            self.assertIn("GNU_RELRO", run("readelf", "--program-headers", path))
            self.assertRegex(run("readelf", "--wide", "--program-headers", path), r"GNU_STACK .* RW ")
            self.assertIn("__stack_chk_fail", run("readelf", "--wide", "--dyn-syms", path))
            self.assertNotIn(".symtab", run("readelf", "--wide", "--section-headers", path))

    def test_every_file_of_the_programs_is_compiled_with_checked_functions(self):
        commands = json.loads((ROOT / "build/release/compile_commands.json").read_text())
        # A unit is a folder of the sources.
        units = [command for command in commands if "/Unity/" in command["file"]]
        self.assertGreater(len(units), 15)
        for command in commands:
            self.assertIn("-D_FORTIFY_SOURCE=2", command["command"], command["file"])


class InstalledTest(unittest.TestCase):
    """The package installed into a root of its own by the system's own installer, which knows what
    else is installed on this machine; the program started there by somebody who may not write."""

    @classmethod
    def setUpClass(cls):
        cls.root = pathlib.Path(tempfile.mkdtemp(prefix="tarvik-root-"))
        cls.addClassCleanup(shutil.rmtree, cls.root)
        database = cls.root / "var/lib/dpkg"
        for folder in ("info", "updates", "triggers"):
            (database / folder).mkdir(parents=True)
        shutil.copy("/var/lib/dpkg/status", database)
        cls.dpkg("--install", DEB)
        cls.desktop = Desktop()
        cls.addClassCleanup(cls.desktop.close)

    @classmethod
    def dpkg(cls, *arguments):
        path = os.environ["PATH"] + ":/usr/sbin:/sbin"
        return run("fakeroot", "dpkg", "--root=%s" % cls.root, *arguments, env={"PATH": path})

    def start(self, program, **environment):
        """The installed program on an INI file of the user's, so that no box comes; and that file."""
        data = pathlib.Path(tempfile.mkdtemp(dir=self.desktop.folder))
        ini = data / "velmars-tarvik" / "Tarvik.ini"
        ini.parent.mkdir()
        ini.write_text("[Settings]\nRefreshInterval=200\n", encoding="utf-8")
        programs = self.root / "usr/bin"
        programs.chmod(0o555)
        running = Program(self.desktop, [*powerless(), str(programs / program)],
                          XDG_DATA_HOME=str(data), **environment)
        self.addCleanup(running.stop)
        return running, ini

    def test_it_is_installed_and_all_that_it_depends_on_is_there(self):
        said = self.dpkg("--status", "tarvik")
        self.assertIn("Status: install ok installed", said)
        self.assertEqual(run("ldd", self.root / "usr/bin/tarvik").count("not found"), 0)

    def test_the_installed_demo_opens_its_window_and_keeps_its_file_with_the_users_data(self):
        program, ini = self.start("tarvik-demo")
        program.wait_text("lblMonitoring", "Monitoring: inactive")
        program.press("cmdQuit")
        self.assertEqual(program.wait_exit(), 0)
        self.assertIn("RefreshInterval=200", ini.read_text(encoding="utf-8"))
        self.assertIn("IsLocked=0", ini.read_text(encoding="utf-8"))
        self.assertEqual({path.name for path in (self.root / "usr/bin").iterdir()}, set(PROGRAMS))

    def test_the_installed_program_opens_its_window_where_no_service_runs(self):
        program, ini = self.start("tarvik", DBUS_SYSTEM_BUS_ADDRESS="unix:path=/nonexistent")
        self.assertTrue(program.box_text().endswith("\nThe remote access service cannot start."))
        program.answer("OK")
        self.assertTrue(program.box_text().endswith("or Cancel to run anyway."))
        program.answer("Cancel")
        program.wait_text("lblMonitoring", "Monitoring: inactive")
        program.press("cmdQuit")
        self.assertEqual(program.wait_exit(), 0)
        self.assertIn("IsLocked=0", ini.read_text(encoding="utf-8"))


if __name__ == "__main__":
    unittest.main()
