"""What a killed program had counted and set is there again, and how much of it that costs; after an
end in order nothing of it is left."""

import pathlib
import shutil
import signal
import time

from desktop import wait_for
from displays import XDisplay
from support import EXECUTABLE, ProgramTest, keys_of, number

FAULTS = pathlib.Path(EXECUTABLE).with_name("libfaults.so")
CUT = 99  # the exit status of a program whose machine has lost its power


class JournalTest(ProgramTest):
    @property
    def journal(self):
        return self.folder / "Tarvik.journal"

    def wait_for_entry(self):
        """The file is there a moment before anything stands in it."""
        wait_for("an entry of the journal",
                 lambda: self.journal.exists() and self.journal.read_bytes().startswith(b"TARVIKJ"))

    def received(self, program):
        return number(program.text("txtBytesRcvdTotal"))

    def figures_of(self, program, is_over):
        """What the window shows until then: when, and how much."""
        shown = []
        while not is_over():
            try:
                shown.append((time.monotonic(), self.received(program)))
            except Exception:
                if program.running():
                    raise
            time.sleep(0.1)
        return shown

    def seconds_lost(self, shown, end):
        """By the next start, of what was shown."""
        brought_back = self.received(self.start_after_kill())
        self.assertLessEqual(brought_back, shown[-1][1] + 1_000_000)
        return end - next((when for when, count in shown if count > brought_back), end)

    def start_on_disk(self, fault):
        """On a disk of which a power cut takes what was not flushed. See tests/faults/Preload.cpp."""
        self.write_ini()
        beside = str(self.folder)
        shadow = pathlib.Path(beside + ".shadow")
        shutil.rmtree(shadow, ignore_errors=True)
        shadow.mkdir()
        self.addCleanup(shutil.rmtree, shadow, ignore_errors=True)
        program = self.start_quietly(
            LD_PRELOAD=str(FAULTS), TARVIK_FAULT=fault, TARVIK_FAULT_FOLDER=beside)
        self.connect(program)
        return program

    def test_a_kill_costs_five_seconds_of_what_was_counted_at_most(self):
        program = self.start_quietly()
        self.connect(program)
        end = time.monotonic() + 17
        shown = self.figures_of(program, lambda: time.monotonic() > end)
        program.end(signal.SIGKILL)

        lost = self.seconds_lost(shown, time.monotonic())
        print("the kill cost %.1f s" % lost, end=" ", flush=True)
        # A tick and the look at the window take their time beside the five seconds.
        self.assertLess(lost, 7)

    def test_a_power_cut_costs_thirty_seconds_of_what_was_counted_at_most(self):
        # The worst moment: when it is about to flush what it has written since the first flush.
        program = self.start_on_disk("cutflush 2 0 1")
        shown = self.figures_of(program, lambda: not program.running())
        self.assertEqual(program.wait_exit(), CUT)

        lost = self.seconds_lost(shown, time.monotonic())
        print("the power cut cost %.1f s" % lost, end=" ", flush=True)
        self.assertGreater(lost, 20)
        self.assertLess(lost, 33)

    def test_an_end_in_order_leaves_the_ini_file_alone(self):
        program = self.start_quietly()
        self.connect(program)
        self.wait_for_entry()
        self.end_and_find_only_the_ini_file(program)

    def test_settings_that_were_confirmed_outlive_a_kill(self):
        program = self.start_quietly()
        program.press("cmdOptions")
        program.press("chkTransferTicker")
        program.press("cmdOK")
        self.wait_for_entry()
        program.end(signal.SIGKILL)

        program = self.start_after_kill()
        self.end_and_find_only_the_ini_file(program)
        self.assertIn("TransferTicker=1\n", self.read_ini())

    def test_a_reset_is_not_undone_by_the_next_start(self):
        self.write_ini("[Settings]\nRefreshInterval=200\nLastState=r\nLastDateStamp=1\n"
                       "DateStamp1=r\n[r]\nSent=5\nRcvd=7\nDuration=9\nIPAddress=\n")
        program = self.start_quietly()
        self.assertEqual(self.received(program), 7)
        program.press("cmdOptions")
        program.press("cmdResetValues")
        program.expect_box("Are you really sure you want to reset the (overall) values?", "Yes")
        program.press("cmdCancel")
        self.quit(program)
        self.assertTrue(self.journal.exists())

        program = self.start_quietly()
        self.assertEqual(self.received(program), 0)
        self.quit(program)
        program = self.start_quietly()
        self.assertEqual(self.received(program), 0)

    def test_what_could_not_be_saved_is_there_at_the_next_start(self):
        program = self.start_quietly()
        self.connect(program)
        program.press("cmdDisconnect")
        program.wait_text("txtActiveConnection", "")
        shown = self.received(program)
        self.ini.chmod(0o444)
        program.press("cmdMonitor")
        self.quit_without_file(program)

        self.ini.chmod(0o644)
        program = self.start_after_kill()  # the file says that somebody is at work
        self.assertEqual(self.received(program), shown)
        self.end_and_find_only_the_ini_file(program)
        record = keys_of(self.read_ini(), "Settings")["LastState"]
        self.assertEqual(int(keys_of(self.read_ini(), record)["Rcvd"]), shown)

    def test_only_its_user_may_read_the_journal_of_a_private_file(self):
        self.write_ini()
        self.ini.chmod(0o600)
        program = self.start_quietly()
        self.connect(program)
        self.wait_for_entry()
        self.assertEqual(self.journal.stat().st_mode & 0o777, 0o600)
        self.end_and_find_only_the_ini_file(program)

    def test_a_link_of_its_name_is_left_alone(self):
        other = self.folder / "other"
        other.write_text("somebody's")
        self.journal.symlink_to(other)
        program = self.start_quietly()
        self.connect(program)
        self.assertEqual(program.end(), 0)
        self.assertTrue(self.journal.is_symlink())
        self.assertEqual(other.read_text(), "somebody's")

    def test_a_second_copy_leaves_the_journal_of_the_first_alone(self):
        first = self.start_quietly()
        self.connect(first)
        self.wait_for_entry()
        second = self.start_after_kill()  # the same question
        self.connect(second)
        self.assertEqual(second.end(), 0)
        self.assertTrue(self.journal.exists())
        self.assertEqual(first.end(), 0)
        self.assertFalse(self.journal.exists())

    def test_a_display_that_is_killed_within_a_session_leaves_no_journal(self):
        self.write_ini()
        display = XDisplay(self.desktop.environment)
        self.addCleanup(display.close)
        program = self.start(**display.environment)
        program.find("cmdQuit")
        self.connect(program)
        self.wait_for_entry()
        wait_for("something counted", lambda: self.received(program) > 0)
        shown = self.received(program)
        display.end(signal.SIGKILL)
        self.assertEqual(program.wait_exit(), 0, program.written())
        self.expect_only_the_ini_file()
        record = keys_of(self.read_ini(), "Settings")["LastState"]
        self.assertGreaterEqual(int(keys_of(self.read_ini(), record)["Rcvd"]), shown)
