"""The built program, stopped at every file-system call between its start and its end."""

import pathlib
import signal
import subprocess

from desktop import end_with_parent, wait_for
from support import EXECUTABLE, INSTANCE_QUESTION, ProgramTest, keys_of

LIBRARY = pathlib.Path(EXECUTABLE).with_name("libfaults.so")
CUT = 99  # the exit status of a program that a fault ended
# The totals differ from the newest record's, so that the end of the program saves one more.
EARLIER = (
    "[a|1]\nSent=100\nRcvd=1000\nDuration=10\nIPAddress=10.0.0.1\n"
    "[b|2]\nSent=200\nRcvd=2000\nDuration=20\nIPAddress=\n"
)
INI = (
    "[Settings]\nIsLocked=0\nLastState=totals\nDateStamp1=a|1\nDateStamp2=b|2\nLastDateStamp=2\n"
    "RefreshInterval=200\n" + EARLIER + "[totals]\nSent=250\nRcvd=2500\nDuration=25\n"
)


class KillTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.shadow = self.folder.with_name(self.folder.name + ".shadow")
        self.calls = self.folder.with_name(self.folder.name + ".calls")
        self.shadow.mkdir()

    def tearDown(self):
        super().tearDown()
        self.clear(self.shadow)
        self.shadow.rmdir()
        self.calls.unlink(missing_ok=True)

    @staticmethod
    def clear(folder, keep=()):
        for path in folder.iterdir():
            if path.name not in keep:
                path.unlink()

    def run_with(self, fault):
        """Starts the program on the file and ends its session as soon as it has begun."""
        self.clear(self.shadow)
        self.clear(self.folder, keep=[self.executable.name])
        self.write_ini(INI)
        environment = {
            **self.desktop.environment, "QT_QPA_PLATFORM": "offscreen",
            "LD_PRELOAD": str(LIBRARY), "TARVIK_FAULT": fault,
            "TARVIK_FAULT_FOLDER": str(self.folder), "TARVIK_FAULT_CALLS": str(self.calls),
        }
        with subprocess.Popen([self.executable], env=environment, stderr=subprocess.DEVNULL,
                              preexec_fn=end_with_parent) as process:
            try:
                wait_for("the lock or the end", lambda: process.poll() is not None or
                         "IsLocked=1\n" in self.read_ini())
                if process.poll() is None:
                    process.send_signal(signal.SIGTERM)
                return process.wait(30)
            finally:
                process.kill()

    def kill_at(self, call):
        """Once in a while a program is told to end so early that it makes a call less than when they
        were counted: then the last one does not come."""
        attempts = 3
        for _ in range(attempts):
            if self.run_with("kill %d" % call) == CUT:
                return
        self.fail("the program has ended before the call")

    def files(self):
        """What lies in the folder; a temporary file's name is left to chance."""
        return {
            ".tarvik-.tmp" if path.name.startswith(".tarvik-") else path.name: path.read_bytes()
            for path in self.folder.iterdir() if path != self.executable
        }

    def assert_whole(self, text):
        self.assertIn(EARLIER, text)
        settings = keys_of(text, "Settings")
        self.assertEqual((settings["DateStamp1"], settings["DateStamp2"]), ("a|1", "b|2"))
        self.assertIn(settings["LastDateStamp"], ("2", "3"))
        if settings["LastDateStamp"] == "3":
            record = keys_of(text, settings["DateStamp3"])
            self.assertEqual(record, {"Sent": "250", "Rcvd": "2500", "Duration": "25",
                                      "IPAddress": ""})

    def restart(self):
        """Starts on what is there and quits; everything must be as after any start."""
        locked = keys_of(self.read_ini(), "Settings")["IsLocked"] == "1"
        program = self.start()
        if locked:
            program.expect_box(INSTANCE_QUESTION, "Yes")
        program.wait_text("txtBytesRcvdTotal", "2,500")
        self.quit(program)
        self.assertEqual(list(self.files()), ["Tarvik.ini"])
        self.assert_whole(self.read_ini())
        self.assertEqual(keys_of(self.read_ini(), "Settings")["LastDateStamp"], "3")
        self.assertEqual(keys_of(self.read_ini(), "Settings")["IsLocked"], "0")

    def test_a_kill_at_any_file_call_leaves_a_whole_file_and_a_restart_goes_on(self):
        self.assertEqual(self.run_with("count"), 0)
        calls = self.calls.read_text(encoding="ascii").split()
        self.assertIn("rename", calls)
        states = []
        for call in range(1, len(calls) + 1):
            with self.subTest(call=call, name=calls[call - 1]):
                self.kill_at(call)
                self.assert_whole(self.read_ini())
                state = self.files()
                self.assertLessEqual(set(state), {"Tarvik.ini", ".tarvik-.tmp"})
                # Where the same files are left, the restart is the same.
                if state not in states:
                    states.append(state)
                    self.restart()
        print("%d calls, %d states of the folder" % (len(calls), len(states)), end=" ", flush=True)
        self.assertGreaterEqual(len(states), 4)
