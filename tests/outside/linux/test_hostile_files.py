"""Files that somebody else made for the program to stumble over."""

import itertools
import os
import time
import unittest

from desktop import wait_for
from support import IMPORT_QUESTION, ProgramTest

STRANGER = 65534  # the number of a user who owns nothing here


class PlantedLinkTest(ProgramTest):
    def setUp(self):
        super().setUp()
        if os.geteuid() != 0:
            raise unittest.SkipTest("only root can make a link for somebody else")
        self.victim = self.folder / ".profile"
        self.victim.write_text("export EDITOR=vi\n", encoding="utf-8")
        self.ini.symlink_to(self.victim.name)
        os.lchown(self.ini, STRANGER, STRANGER)

    def check(self):
        program = self.start_without_file()
        self.quit_without_file(program)
        self.assertEqual(self.victim.read_text(encoding="utf-8"), "export EDITOR=vi\n")
        self.assertTrue(self.ini.is_symlink())

    def test_a_link_that_another_user_planted_leads_nowhere(self):
        self.check()

    def test_nor_does_one_that_the_owner_of_the_folder_planted(self):
        os.chown(self.folder, STRANGER, STRANGER)
        self.check()


class DamagedTotalTest(ProgramTest):
    def test_a_total_that_is_as_large_as_it_can_be_is_told_once_while_the_line_is_up(self):
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nLastState=x\n"
            "[x]\nRcvd=922337203685477\n"
        )
        program = self.start_quietly()
        self.dial(program)
        program.expect_box(
            'Error 6 (Overflow)\noccured in function "UpdateValuesInGUI".\n'
            "Please contact the author for support.",
            "OK",
        )

        # Had every tick told it, the next box would have kept all this from the user.
        for _ in range(3):
            program.press("cmdOptions")
            wait_for("the options", lambda: program.is_showing("txtRefreshInterval"))
            program.press("cmdCancel")
            wait_for("them to go", lambda: not program.is_showing("txtRefreshInterval"))
        self.assertEqual(program.text("lblMonitoring"), "Monitoring: active")
        self.assertEqual(program.end(), 0)


def hashed(state, text):
    """FNV-1a of 32 bits, which is what a table without a seed takes for names."""
    for byte in text.encode():
        state = (state ^ byte) * 16777619 & 0xFFFFFFFF
    return state


def colliding_names(doublings):
    """2 to that power names of one number: each piece has two forms that lead to the same."""
    state = hashed(2166136261, "")
    pieces = []
    for _ in range(doublings):
        seen = {}
        for piece in map("{:08d}".format, itertools.count()):
            after = hashed(state, piece)
            if after in seen:
                pieces.append((seen[after], piece))
                state = after
                break
            seen[after] = piece
    return ["".join(chosen) for chosen in itertools.product(*pieces)]


class CollidingNamesTest(ProgramTest):
    """Nine megabytes of sections that all have one place in a table without a seed."""

    def seconds_of(self, names):
        """Of a start on a file of such records, and of their import; on the same file of other
        names the machine and the program are as slow."""
        index = "".join("DateStamp%d=%s\n" % (n, name) for n, name in enumerate(names, 1))
        records = "".join("[%s]\nSent=1\nRcvd=5\nDuration=9\n" % name for name in names)
        self.write_ini(
            "[Settings]\nLastState=%s\nLastDateStamp=%d\n%s%s"
            % (names[-1], len(names), index, records)
        )
        begin = time.monotonic()
        program = self.start_quietly()
        program.press("cmdHistory")
        program.press("cmdImport")
        program.expect_box(IMPORT_QUESTION, "Yes")
        program.find("cmdImport")
        self.assertEqual(program.end(), 0)
        return time.monotonic() - begin

    def test_they_hold_up_neither_the_start_nor_the_import(self):
        names = colliding_names(16)
        self.assertEqual(len({hashed(2166136261, name) for name in names}), 1)
        others = [name[::-1] for name in names]

        usual = self.seconds_of(others)
        self.assertLess(self.seconds_of(names), 2 * usual + 2)


if __name__ == "__main__":
    unittest.main()
