"""The file dialog is the toolkit's own on every desktop, where the program sees to how names are shown."""

import pathlib
import unittest

from desktop import wait_for
from support import ProgramTest


class FileDialogTest(ProgramTest):
    def test_a_desktop_with_dialogs_of_its_own_does_not_show_them(self):
        if self.desktop.wayland:
            raise unittest.SkipTest("this desktop's theme is one of X here")
        # That desktop's library would come to accessibility as a second program of the same number.
        program = self.start_quietly(XDG_CURRENT_DESKTOP="GNOME", NO_AT_BRIDGE="1")
        theme = pathlib.Path("/proc/%d/maps" % program.process.pid).read_text(encoding="utf-8")
        self.assertIn("libqgtk3.so", theme)
        program.press("cmdHistory")
        program.press("cmdImport")
        program.answer("No")  # not this program's own records

        wait_for("the dialog", lambda: program.is_showing("fileDialog"))
        # While the desktop shows one of its own, this one counts as shown too, but no key reaches it.
        program.key("x", "y", "z")
        wait_for("what is typed", lambda: "xyz" in program.texts_within("fileDialog"))


if __name__ == "__main__":
    unittest.main()
