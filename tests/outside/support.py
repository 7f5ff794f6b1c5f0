"""What the tests of the built program share: a fresh copy of it for each test on one desktop."""

import atexit
import functools
import os
import pathlib
import shutil
import tempfile
import unittest

from desktop import Desktop, Program

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXECUTABLE = os.environ.get("TARVIK_DEMO", ROOT / "build/release/bin/tarvik-demo")
SCREENSHOTS = ROOT / "build" / "failed-system-tests"
LOCK_WARNING = 'Warning: Unable to set "IsLocked"-flag in INI-file!'
FIRST_RUN_WARNING = "Warning: Old settings could not be loaded.\nAssuming first run."
INSTANCE_QUESTION = (
    "Warning: Another instance of Velmars Tarvik seems to be running.\n"
    "Are you sure that you want to start another instance?\n"
    "(This could cause the protocol file to become corrupt!)"
)
STOP_QUESTION = (
    "Warning: An active connection has been detected.\n"
    "If monitoring is stopped the transfer of this connection\n"
    "will no longer be recorded.\n"
    "Press OK to stop monitoring now."
)
QUIT_REFUSED = (
    "Warning: Monitoring is still active.\nPlease de-activate monitoring before quit."
)
IMPORT_QUESTION = (
    "Ok to import recorded transfers from the\n"
    "INI-file located in the application folder?\n\n"
    '(Press "No" to select another file.)'
)
SETTINGS = [
    "UnitTransferCurrent", "UnitTransferTotal", "TransferLimit", "TransferLimitValue",
    "DurationLimit", "DurationLimitHr", "DurationLimitMin", "TransferLimitWarning",
    "TransferLimitHangUp", "TransferResetEnable", "TransferReset", "TransferResetBackup",
    "TransferResetLast", "StartUpMinimise", "StartUpRunMonitoring", "RefreshInterval",
    "LogIPAddress", "TransferTicker", "TransferTickerValue",
]


def number(text):
    """The number in a text, whatever stands in it beside the digits; 0 without any."""
    return int("".join(character for character in text if character.isdigit()) or "0")


_desktops = []


def with_screenshot(test):
    """The test, which names a screenshot of the screen when it fails."""

    @functools.wraps(test)
    def wrapped(self):
        try:
            test(self)
        except unittest.SkipTest:
            raise
        except Exception as failure:
            SCREENSHOTS.mkdir(parents=True, exist_ok=True)
            screenshot = SCREENSHOTS / (".".join(self.id().split(".")[-2:]) + ".png")
            self.desktop.screenshot(screenshot)
            failure.add_note("The screen at that moment: %s" % screenshot)
            raise

    return wrapped


class ProgramTest(unittest.TestCase):
    """A test with a folder of its own that holds the program; a failure leaves a screenshot."""

    def __init_subclass__(cls, **options):
        super().__init_subclass__(**options)
        for name, member in list(vars(cls).items()):
            if name.startswith("test_"):
                setattr(cls, name, with_screenshot(member))

    @property
    def desktop(self):
        """One for all tests: the accessibility library stays with the bus it met first."""
        if not _desktops:
            _desktops.append(Desktop())
            atexit.register(_desktops[0].close)
        return _desktops[0]

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="tarvik-test-"))
        self.executable = pathlib.Path(shutil.copy(EXECUTABLE, self.folder / "tarvik-demo"))
        self.programs = []

    def tearDown(self):
        for program in self.programs:
            program.stop()
        self.folder.chmod(0o755)
        shutil.rmtree(self.folder, ignore_errors=True)

    @property
    def ini(self):
        return self.folder / "Tarvik.ini"

    def read_ini(self):
        return self.ini.read_text(encoding="utf-8")

    def write_ini(self, text="[Settings]\nRefreshInterval=200\n"):
        self.ini.write_text(text, encoding="utf-8", newline="")

    def start(self, *arguments, before=(), **environment):
        """Starts the program; `before` are the words of a command that starts it."""
        command = [*before, str(self.executable)]
        program = Program(self.desktop, command, *arguments, **environment)
        self.programs.append(program)
        return program

    def start_quietly(self, *arguments, **environment):
        """Starts on an INI file, so that no box comes, and waits for the window."""
        if not self.ini.exists():
            self.write_ini()
        program = self.start(*arguments, **environment)
        program.find("cmdQuit")
        return program

    def start_after_kill(self, *arguments):
        """The file still says that somebody is at work: Yes to the question."""
        program = self.start(*arguments)
        program.expect_box(INSTANCE_QUESTION, "Yes")
        program.find("cmdQuit")
        return program

    def expect_only_the_ini_file(self):
        """Beside the program, which lies there for the tests."""
        self.assertEqual({path.name for path in self.folder.iterdir()},
                         {self.executable.name, self.ini.name})

    def end_and_find_only_the_ini_file(self, program):
        self.assertEqual(program.end(), 0)
        self.expect_only_the_ini_file()

    def dial(self, program, entry="Ridge DSL"):
        """Starts monitoring if need be, and dials."""
        if program.text("lblMonitoring") != "Monitoring: active":
            program.press("cmdMonitor")
        program.choose("cboConnections", entry)
        program.press("cmdConnect")

    def connect(self, program, entry="Ridge DSL"):
        """Dials while monitoring is on, and waits for the first bytes."""
        self.dial(program, entry)
        program.wait_text("txtActiveConnection", lambda text: entry in text)
        program.wait_text("txtBytesRcvd", lambda text: text != "0")

    def start_without_file(self, **options):
        """Where the program can neither read nor write its INI file."""
        program = self.start(**options)
        program.expect_box(LOCK_WARNING, "OK")
        program.expect_box(FIRST_RUN_WARNING, "OK")
        return program

    def quit_without_file(self, program):
        """Where the INI file cannot be written."""
        program.press("cmdQuit")
        self.expect_unsaved(program)

    def expect_unsaved(self, program):
        """The end of a program that cannot write its INI file."""
        program.expect_box("Warning: State could not be saved.", "OK")
        program.expect_box('Warning: Unable to unset "IsLocked"-flag in INI-file!', "OK")
        self.assertEqual(program.wait_exit(), 0)

    def quit(self, program):
        program.press("cmdQuit")
        self.assertEqual(program.wait_exit(), 0)


def keys_of(text, section):
    """The keys of a section in file order, with their values."""
    lines = text.splitlines()
    begin = lines.index("[" + section + "]") + 1
    end = next((i for i in range(begin, len(lines)) if lines[i].startswith("[")), len(lines))
    return dict(line.split("=", 1) for line in lines[begin:end] if "=" in line)
