"""The display goes away before the program: the X server or the Wayland compositor ends, as at the
log-out from many desktops. The program saves everything, without a window and without a box."""

import signal

from desktop import wait_for
from displays import WaylandDisplay, XDisplay
from item_panel import ItemPanel
from support import INSTANCE_QUESTION, QUIT_REFUSED, ProgramTest, keys_of

EARLIER = (
    "[Settings]\nLastState=r\nDateStamp1=r\nLastDateStamp=1\nRefreshInterval=200\n"
    "[r]\nSent=5\nRcvd=1234\nDuration=9\nIPAddress=\n"
)


class DisplayLostTest(ProgramTest):
    def on_each_display(self, story):
        """Plays the story on a display of each kind that then ends, asked or killed.

        The story gets the display and returns the program, and the end must save everything."""
        for kind in (XDisplay, WaylandDisplay):
            for number in (signal.SIGTERM, signal.SIGKILL):
                with self.subTest(display=kind.__name__, signal=number.name):
                    self.write_ini(EARLIER)
                    display = kind(self.desktop.environment)
                    try:
                        program = story(display)
                        display.end(number)
                        self.assertEqual(program.wait_exit(), 0, program.written())
                    finally:
                        display.close()
                    settings = keys_of(self.read_ini(), "Settings")
                    self.assertEqual(settings["IsLocked"], "0")
                    self.assertEqual(settings["TransferTickerValue"], "100")  # the save alone writes it
                    yield settings

    def start_on(self, display, *arguments):
        program = self.start(*arguments, **display.environment)
        program.find("cmdQuit")
        return program

    def assert_nothing_new(self, story):
        for settings in self.on_each_display(story):
            self.assertEqual((settings["LastState"], settings["LastDateStamp"]), ("r", "1"))

    def assert_session_saved(self, story):
        for settings in self.on_each_display(story):
            self.assertEqual(settings["LastDateStamp"], "2")
            self.assertGreater(int(keys_of(self.read_ini(), settings["LastState"])["Rcvd"]), 1234)

    def test_with_the_window_on_the_screen(self):
        self.assert_nothing_new(self.start_on)

    def test_with_the_window_behind_an_icon(self):
        panel = ItemPanel(self.desktop.environment["DBUS_SESSION_BUS_ADDRESS"])
        self.addCleanup(panel.close)

        def hidden(display):
            panel.item = None
            program = self.start_on(display)
            wait_for("the item", lambda: panel.item)
            panel.click()
            wait_for("the hidden window", lambda: not program.is_showing("frmMain"))
            return program

        self.assert_nothing_new(hidden)

    def test_with_a_box_open(self):
        def asked(display):
            program = self.start_on(display, "/r")
            program.press("cmdQuit")
            self.assertEqual(program.box_text(), QUIT_REFUSED)
            return program

        self.assert_nothing_new(asked)

    def test_with_a_file_dialog_open(self):
        def choosing(display):
            program = self.start_on(display)
            program.press("cmdHistory")
            program.press("cmdImport")
            program.answer("No")  # not this program's own records
            wait_for("the dialog", lambda: program.is_there("fileDialog"))
            return program

        self.assert_nothing_new(choosing)

    def test_with_a_list_open(self):
        def choosing(display):
            program = self.start_on(display)
            program.click("cboConnections")
            wait_for("the list", lambda: program.is_open("cboConnections"))
            return program

        self.assert_nothing_new(choosing)

    def test_within_a_session(self):
        def connected(display):
            program = self.start_on(display)
            self.connect(program)
            return program

        self.assert_session_saved(connected)

    def test_while_dialling(self):
        def dialling(display):
            program = self.start_on(display)
            program.choose("cboConnections", "Skylark Mobile")
            program.click("cmdConnect")
            return program

        self.assert_nothing_new(dialling)

    def test_while_the_program_is_asked_to_end_as_well(self):
        def told_twice(display):
            program = self.start_on(display)
            self.connect(program)
            program.process.send_signal(signal.SIGTERM)
            return program

        self.assert_session_saved(told_twice)

    def test_at_the_instance_question_nothing_is_written(self):
        for kind in (XDisplay, WaylandDisplay):
            with self.subTest(display=kind.__name__):
                self.write_ini("[Settings]\nIsLocked=1\n")
                display = kind(self.desktop.environment)
                self.addCleanup(display.close)
                program = self.start(**display.environment)
                self.assertEqual(program.box_text(), INSTANCE_QUESTION)
                display.end(signal.SIGKILL)
                self.assertEqual(program.wait_exit(), 0)
                self.assertEqual(self.read_ini(), "[Settings]\nIsLocked=1\n")

    def test_a_state_that_cannot_be_saved_is_written_to_the_terminal_and_nobody_waits(self):
        self.write_ini(EARLIER)
        display = XDisplay(self.desktop.environment)
        self.addCleanup(display.close)
        program = self.start_on(display)
        self.ini.unlink()
        self.ini.mkdir()

        display.end(signal.SIGKILL)

        self.assertEqual(program.wait_exit(), 0)
        self.assertIn("Warning: State could not be saved.", program.written())
