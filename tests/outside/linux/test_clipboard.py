"""What is pasted, and that nobody who holds the clipboard holds the window up."""

import subprocess
import unittest

from desktop import wait_for
from displays import FarDisplay
from mute_services import MuteServiceTest, hold_clipboard


class ClipboardTest(MuteServiceTest):
    """A program that holds the clipboard, and a box of the program's to paste it into."""

    def setUp(self):
        super().setUp()
        if self.desktop.wayland:
            raise unittest.SkipTest("this is the clipboard of X")

    def open_box(self, **environment):
        self.program = self.start_quietly(**environment)
        self.program.press("cmdOptions")
        wait_for("the box", lambda: self.program.is_showing("txtRefreshInterval"))
        self.program.click("txtRefreshInterval")
        self.before = self.program.text("txtRefreshInterval")

    def act(self, *words):
        subprocess.run(["xdotool", *words], env=self.desktop.environment, check=True)


class MuteClipboardTest(ClipboardTest):
    """It does not say what is in it."""

    holder = ()

    def setUp(self):
        super().setUp()
        self.open_box()
        # Not before: the program may hold the selection itself once its box is clicked on.
        hold_clipboard(self, self.desktop.environment, *self.holder)

    def assert_it_is_dropped(self, *words):
        with self.without_delay("the window"):
            self.act(*words)
            # What comes after it is answered after it.
            self.program.key("End", "7")
            self.program.wait_text("txtRefreshInterval", self.before + "7")

    def test_it_is_not_pasted_with_the_keyboard(self):
        self.assert_it_is_dropped("key", "ctrl+v")

    def test_what_is_selected_is_not_pasted_with_the_keyboard(self):
        self.assert_it_is_dropped("key", "ctrl+shift+Insert")

    def test_it_is_not_pasted_with_the_mouse(self):
        self.assert_it_is_dropped("click", "2")

    def test_it_opens_no_menu(self):
        self.assert_it_is_dropped("click", "3")


class KeptClipboardTest(MuteClipboardTest):
    """It says what is in it, and does not give it."""

    holder = ("9", "lists")


class BegunClipboardTest(MuteClipboardTest):
    """It says that it will give what is in it, and stops there."""

    holder = ("9", "begins")


class GivenClipboardTest(ClipboardTest):
    """It gives what is in it."""

    def setUp(self):
        super().setUp()
        self.open_box()
        self.holder = hold_clipboard(self, self.desktop.environment, "9")
        self.act("key", "End")

    def assert_it_is_pasted(self):
        self.program.wait_text("txtRefreshInterval", lambda text: "9" in text)

    def test_it_is_pasted_with_the_keyboard(self):
        self.act("key", "ctrl+v")

        self.program.wait_text("txtRefreshInterval", self.before + "9")

    def test_what_is_selected_is_pasted_with_the_keyboard(self):
        self.act("key", "ctrl+shift+Insert")

        self.program.wait_text("txtRefreshInterval", self.before + "9")

    def test_it_is_pasted_with_the_mouse(self):
        self.act("click", "2")

        self.assert_it_is_pasted()

    def open_menu(self):
        self.act("click", "3")
        self.desktop.wait_for_menu()

    def test_it_is_pasted_with_the_menu(self):
        self.open_menu()

        self.act("key", "p")

        self.program.wait_text("txtRefreshInterval", self.before + "9")

    def test_it_is_not_pasted_with_the_menu_where_its_holder_has_fallen_silent(self):
        self.open_menu()

        with self.halted(self.holder.pid), self.without_delay("the window"):
            self.act("key", "p")
            self.program.key("End", "7")
            self.program.wait_text("txtRefreshInterval", self.before + "7")


class FarClipboardTest(ClipboardTest):
    """It answers at once, and everything takes its time on the way."""

    def test_it_is_pasted(self):
        display = FarDisplay(self.desktop.environment)
        self.addCleanup(display.close)
        hold_clipboard(self, {**self.desktop.environment, **display.environment}, "9")
        self.open_box(**display.environment)
        self.act("key", "End")

        display.delay = 0.06
        self.act("key", "ctrl+v")

        self.program.wait_text("txtRefreshInterval", self.before + "9")


if __name__ == "__main__":
    unittest.main()
