"""Numbers and dates in the forms of the user's locale, in the window and in the file."""

from support import ProgramTest, keys_of


class LocaleTest(ProgramTest):
    BEFORE = (
        "[Settings]\nLastState=r\nTransferLimitValue=%s\nTransferResetLast=%s\n"
        "[r]\nSent=1234567\nRcvd=89\nDuration=3723004\nIPAddress=\n"
    )

    def check(self, locale, limit, reset, sent, stamp):
        """A run under the locale on a file in that locale's forms.

        `limit` and `reset` are values that must come back as they were, `sent` is how 1234567 is
        shown, and `stamp` the form of the new record's date and time."""
        self.write_ini(self.BEFORE % (limit, reset))
        program = self.start_quietly(LC_ALL=locale)
        program.wait_text("txtBytesSentTotal", sent)
        self.assertEqual(program.text("txtDurationTotal"), "01:02:03:004")
        self.quit(program)
        settings = keys_of(self.read_ini(), "Settings")
        self.assertEqual(settings["TransferLimitValue"], limit)
        self.assertEqual(settings["TransferResetLast"], reset)
        self.assertEqual(settings["LastDateStamp"], "1")
        self.assertRegex(settings["DateStamp1"], "^" + stamp + "$")
        self.assertEqual(
            keys_of(self.read_ini(), settings["DateStamp1"]),
            {"Sent": "1234567", "Rcvd": "89", "Duration": "3723004", "IPAddress": ""},
        )
        again = self.start_quietly(LC_ALL=locale)
        again.wait_text("txtBytesSentTotal", sent)
        self.quit(again)
        self.assertEqual(keys_of(self.read_ini(), "Settings"), settings)

    def test_german_forms(self):
        self.check(
            "de_DE.UTF-8", "1234,5", "24.12.2025", "1.234.567",
            r"\d\d\.\d\d\.20\d\d\|\d\d:\d\d:\d\d",
        )

    def test_american_forms(self):
        self.check(
            "en_US.UTF-8", "1234.5", "12/24/2025", "1,234,567",
            r"\d?\d/\d?\d/20\d\d\|\d?\d:\d\d:\d\d [AP]M",
        )

    def test_swedish_forms(self):
        self.check(
            "sv_SE.UTF-8", "1234,5", "2025-12-24", "1\u00a0234\u00a0567",
            r"20\d\d-\d\d-\d\d\|\d\d:\d\d:\d\d",
        )

    def test_a_number_in_the_form_of_another_locale_reads_as_none(self):
        self.write_ini(self.BEFORE % ("abc", "no date"))
        program = self.start_quietly(LC_ALL="de_DE.UTF-8")
        self.quit(program)
        settings = keys_of(self.read_ini(), "Settings")
        self.assertEqual(settings["TransferLimitValue"], "0")
        self.assertEqual(settings["TransferResetLast"], "01.01.2001")
