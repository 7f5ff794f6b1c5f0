"""Windows as a window manager sees them: their sizes, which stands before which, what opens them."""

import subprocess
import unittest

from desktop import wait_for
from support import IMPORT_QUESTION, ProgramTest

HISTORY = "Velmars Tarvik - History"
MAIN = "Velmars Tarvik"
BOX = "Velmars Tarvik."
NO_RECORDS = "Error: The INI-File does not contain any recorded transfers."
# A desktop on which one click opens files.
ONE_CLICK = {
    "XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5",
}


class WindowsTest(ProgramTest):
    def open_history(self, **environment):
        """Starts the program on a file of thirty records and opens the history window."""
        stamps = ["12.05.2005|%d" % number for number in range(1, 31)]
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nLastDateStamp=30\n"
            + "".join("DateStamp%d=%s\n" % entry for entry in enumerate(stamps, 1))
            + "".join("[%s]\nSent=1\nRcvd=2\nDuration=3\nIPAddress=\n" % name for name in stamps)
        )
        program = self.start_quietly(**environment)
        program.press("cmdHistory")
        wait_for("the history", lambda: self.desktop.is_active(HISTORY))
        return program

    def import_log(self, program):
        program.press("cmdImport")
        program.expect_box(IMPORT_QUESTION, "Yes")
        wait_for("the records", lambda: program.is_enabled("cboDataToShow"))
        wait_for("the history", lambda: self.desktop.is_active(HISTORY))

    def click_row(self, program, times):
        area = program.find("lvwCompleteLog").get_extents(0)
        subprocess.run(
            ["xdotool", "mousemove", str(area.x + 60), str(area.y + area.height // 2),
             "click", "--repeat", str(times), "--delay", "60", "1"],
            env=self.desktop.environment, check=True,
        )

    def test_the_views_leave_the_window_as_large_as_it_is(self):
        program = self.open_history()
        before = self.desktop.size_of(HISTORY)

        for key, frame in [("s", "lvwCompleteLog"), ("h", "mscHistory"), ("i", "txtStatisticsIP"),
                           ("s", "lvwCompleteLog"), ("i", "txtStatisticsIP"), ("h", "mscHistory")]:
            program.key("alt+" + key)
            wait_for("the view", lambda name=frame: program.is_showing(name))
            self.assertEqual(self.desktop.size_of(HISTORY), before, frame)

    def test_two_clicks_open_a_record_where_one_click_opens_files(self):
        program = self.open_history(**ONE_CLICK)
        self.import_log(program)
        program.key("alt+s")
        wait_for("the log", lambda: program.is_showing("lvwCompleteLog"))

        self.click_row(program, 1)
        # What a click selects, the button takes: it has been dealt with by then.
        program.key("alt+a")
        program.expect_box("History diagram has been updated.", "OK")
        wait_for("the history", lambda: self.desktop.is_active(HISTORY))
        self.click_row(program, 2)

        self.assertTrue(program.box_text().startswith("This records data:"))
        program.answer("OK")

    def test_a_box_after_a_file_dialog_stands_before_the_window_that_asked(self):
        program = self.open_history()
        program.press("cmdImport")
        program.expect_box(IMPORT_QUESTION, "No")
        wait_for("the dialog", lambda: self.desktop.is_active("Import history..."))
        self.write_ini("")
        program.key("Escape")

        self.assertEqual(program.box_text(), NO_RECORDS)
        self.assertTrue(self.desktop.belongs_to(BOX, HISTORY))
        self.assertTrue(self.desktop.stands_before(HISTORY, MAIN))
        program.answer("OK")
        wait_for("the history", lambda: self.desktop.is_active(HISTORY))
        self.assertTrue(self.desktop.stands_before(HISTORY, MAIN))


if __name__ == "__main__":
    unittest.main()
