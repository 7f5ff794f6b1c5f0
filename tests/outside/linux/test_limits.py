"""Limits, resets and options on real windows and files."""

import datetime
import unittest

from desktop import wait_for
from support import ProgramTest, keys_of

RECORD = "[r]\nSent=5\nRcvd=7\nDuration=9\nIPAddress=\n"
DUE = (
    "[Settings]\nRefreshInterval=200\nTransferResetEnable=1\nTransferReset=8\n"
    "TransferResetBackup=1\nTransferResetLast=2020-01-31\n"
    "LastState=r\nLastDateStamp=1\nDateStamp1=r\n" + RECORD
)


class LimitTest(ProgramTest):
    def test_a_limit_warns_in_front_until_the_warning_is_closed(self):
        self.write_ini(
            "[Settings]\nRefreshInterval=2000\nTransferLimit=1\nTransferLimitValue=1000\n"
            "TransferLimitWarning=1\n"
        )
        program = self.start_quietly()

        self.connect(program)
        wait_for("the warning", lambda: program.is_showing("frmWarning"))
        wait_for("the warning in front", lambda: self.desktop.is_active("Velmars Tarvik - Warning"))
        program.key("Escape")
        wait_for("the window put aside", lambda: not program.is_showing("frmWarning"))
        wait_for("the warning again", lambda: program.is_showing("frmWarning"))
        wait_for("the warning in front", lambda: self.desktop.is_active("Velmars Tarvik - Warning"))
        program.key("space")  # the focus is on the button that closes it

        wait_for("the end of it", lambda: not program.is_showing("frmWarning"))
        before = program.text("txtBytesRcvd")
        program.wait_text("txtBytesRcvd", lambda text: text != before)
        self.assertFalse(program.is_showing("frmWarning"))

    def test_a_limit_hangs_up(self):
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nTransferLimit=1\nTransferLimitValue=50000\n"
            "TransferLimitHangUp=1\n"
        )
        program = self.start_quietly()

        self.dial(program)

        # The connection itself may be gone before anybody has seen it.
        program.wait_text("txtBytesRcvdTotal", lambda text: int(text.replace(",", "")) > 40000)
        program.wait_text("txtActiveConnection", "")
        self.assertEqual(program.text("lblMonitoring"), "Monitoring: active")


class ResetTest(ProgramTest):
    def backup(self):
        today = datetime.date.today()
        return self.folder / ("Tarvik.%d-%d-%d.ini" % (today.year, today.month, today.day))

    def test_a_reset_with_backup_leaves_the_dated_copy_and_a_fresh_file(self):
        self.write_ini(DUE)
        program = self.start_quietly()

        self.connect(program)

        wait_for("the copy", self.backup().exists)
        wait_for("the end of the old file", lambda: not self.ini.exists())
        self.assertIn(RECORD, self.backup().read_text(encoding="utf-8"))
        self.assertEqual(program.end(), 0)
        fresh = self.read_ini()
        self.assertNotIn("[r]", fresh)
        self.assertEqual(keys_of(fresh, "Settings")["LastDateStamp"], "1")
        self.assertEqual(keys_of(fresh, "Settings")["TransferReset"], "8")

    def test_a_backup_that_fails_asks_and_no_keeps_the_totals(self):
        self.write_ini(DUE)
        program = self.start_quietly()
        self.ini.unlink()
        self.ini.mkdir()

        self.dial(program)
        question = program.box_text()
        while not question.startswith("The criteria"):
            program.answer("OK")
            question = program.box_text()
        self.assertEqual(
            question,
            "The criteria to reset the transfer records has been reached.\n"
            "However - An error occured while trying to create the backup-file.\n"
            "Do you want to reset the transfers recorded anyway?",
        )
        program.answer("No")

        self.assertFalse(self.backup().exists())
        self.assertNotEqual(program.text("txtBytesSentTotal"), "0")
        program.stop()


class OptionsTest(ProgramTest):
    def test_what_was_set_is_in_the_file_and_there_again(self):
        program = self.start_quietly()
        program.press("cmdOptions")
        program.press("chkDurationLimit")
        program.click("txtDurationLimitHr")
        program.key("ctrl+a", "7")
        program.press("chkTransferLimitHangUp")
        program.press("chkTransferTicker")
        program.key("Return")
        wait_for("the end of the dialog", lambda: not program.is_showing("frmOptions"))
        self.quit(program)
        settings = keys_of(self.read_ini(), "Settings")
        self.assertEqual(settings["DurationLimit"], "1")
        self.assertEqual(settings["DurationLimitHr"], "7")
        self.assertEqual(settings["TransferLimitHangUp"], "1")
        self.assertEqual(settings["TransferTicker"], "1")

        program = self.start_quietly()
        program.press("cmdOptions")

        self.assertEqual(program.text("txtDurationLimitHr"), "7")
        self.assertTrue(program.is_ticked("chkTransferLimitHangUp"))
        self.assertFalse(program.is_ticked("chkTransferLimit"))
        self.assertFalse(program.is_enabled("txtTransferLimit"))

    def test_a_letter_in_a_number_is_undone(self):
        program = self.start_quietly()
        program.press("cmdOptions")
        program.click("txtRefreshInterval")
        program.key("4", "2", "x")

        program.wait_text("txtRefreshInterval", "42")
        program.key("ctrl+a", "Delete")
        program.wait_text("txtRefreshInterval", "42")
        program.key("Escape")

        wait_for("the end of the dialog", lambda: not program.is_showing("frmOptions"))
        program.press("cmdOptions")
        program.wait_text("txtRefreshInterval", "200")

    def test_the_recorded_transfer_is_reset_when_the_user_says_so(self):
        self.write_ini(
            "[Settings]\nLastState=r\nLastDateStamp=1\nDateStamp1=r\n" + RECORD
        )
        program = self.start_quietly()
        program.wait_text("txtBytesRcvdTotal", "7")
        program.press("cmdOptions")
        program.press("cmdResetValues")
        program.expect_box("Are you really sure you want to reset the (overall) values?", "No")
        self.assertEqual(program.text("txtBytesRcvdTotal"), "7")

        program.press("cmdResetValues")
        program.expect_box("Are you really sure you want to reset the (overall) values?", "Yes")

        program.wait_text("txtBytesRcvdTotal", "0")


if __name__ == "__main__":
    unittest.main()
