"""The program as its user meets it: a real process, a real window, a real file."""

import signal

from desktop import wait_for
from support import (
    FIRST_RUN_WARNING,
    INSTANCE_QUESTION,
    LOCK_WARNING,
    QUIT_REFUSED,
    SETTINGS,
    STOP_QUESTION,
    ProgramTest,
    keys_of,
    number,
)


class StoryTest(ProgramTest):
    def test_a_session_is_counted_saved_and_shown_at_the_next_start(self):
        program = self.start()
        program.expect_box(LOCK_WARNING, "OK")
        program.expect_box(FIRST_RUN_WARNING, "OK")
        self.connect(program)
        program.press("cmdDisconnect")
        program.wait_text("txtActiveConnection", "")
        total = program.wait_text("txtBytesRcvdTotal", lambda text: text != "0")
        sent = program.text("txtBytesSentTotal")
        program.press("cmdMonitor")
        program.wait_text("lblMonitoring", "Monitoring: inactive")
        self.quit(program)

        text = self.read_ini()
        settings = keys_of(text, "Settings")
        self.assertEqual(settings["IsLocked"], "0")
        self.assertEqual(settings["LastDateStamp"], "1")
        record = keys_of(text, settings["LastState"])
        self.assertEqual(list(record), ["Sent", "Rcvd", "Duration", "IPAddress"])
        self.assertEqual(int(record["Rcvd"]), number(total))
        self.assertEqual(int(record["Sent"]), number(sent))
        self.assertEqual([key for key in settings if key in SETTINGS], SETTINGS)

        again = self.start_quietly()
        again.wait_text("txtBytesRcvdTotal", total)
        again.wait_text("txtBytesSentTotal", sent)
        self.quit(again)
        self.assertEqual(keys_of(self.read_ini(), "Settings")["LastDateStamp"], "1")

    def test_a_wrong_password_is_told(self):
        program = self.start_quietly()
        program.choose("cboConnections", "Old Mill (wrong password)")
        program.press("cmdConnect")
        program.expect_box(
            "Error: RasDial failed with 691:\nAccess was denied because the user name or the "
            "password was not valid on the domain.",
            "OK",
        )
        self.quit(program)

    def test_a_busy_line_is_told(self):
        program = self.start_quietly()
        program.choose("cboConnections", "Village Line (busy)")
        program.press("cmdConnect")
        program.expect_box("Error: RasDial failed with 676:\nThe phone line is busy.", "OK")
        self.quit(program)

    def test_connecting_without_a_choice_is_told(self):
        program = self.start_quietly()
        program.press("cmdConnect")
        program.expect_box("Error: No connection chosen to connect to.", "OK")
        self.quit(program)

    def test_quit_is_refused_while_monitoring(self):
        program = self.start_quietly("/r")
        program.wait_text("lblMonitoring", "Monitoring: active")
        program.press("cmdQuit")
        program.expect_box(QUIT_REFUSED, "OK")
        self.assertTrue(program.running())
        program.press("cmdMonitor")
        self.quit(program)

    def test_stopping_within_a_session_asks_and_can_be_cancelled(self):
        program = self.start_quietly()
        self.connect(program)
        program.press("cmdMonitor")
        program.expect_box(STOP_QUESTION, "Cancel")
        self.assertEqual(program.text("lblMonitoring"), "Monitoring: active")
        program.press("cmdMonitor")
        program.expect_box(STOP_QUESTION, "OK")
        program.wait_text("lblMonitoring", "Monitoring: inactive")
        self.quit(program)
        self.assertEqual(keys_of(self.read_ini(), "Settings")["LastDateStamp"], "1")

    def test_while_dialling_nothing_that_is_pressed_is_kept_for_later(self):
        program = self.start_quietly()
        program.choose("cboConnections", "Old Mill (wrong password)")
        program.click("cmdConnect")
        program.click("cmdQuit")
        program.press("cmdQuit")
        program.answer("OK")  # the failed dial
        self.assertTrue(program.running())
        self.quit(program)

    def test_the_close_box_leaves_the_program_running(self):
        program = self.start_quietly()
        program.click("frmMain")
        program.key("alt+F4")
        wait_for("the window to go aside", lambda: self.desktop.is_iconic("Velmars Tarvik"))
        self.assertTrue(program.running())
        self.assertEqual(program.end(), 0)


class InstanceTest(ProgramTest):
    def test_a_second_instance_asks_and_no_ends_it(self):
        first = self.start_quietly()
        before = self.read_ini()
        second = self.start()
        second.expect_box(INSTANCE_QUESTION, "No")
        self.assertEqual(second.wait_exit(), 0)
        self.assertEqual(self.read_ini(), before)
        self.quit(first)

    def test_a_second_instance_may_run(self):
        first = self.start_quietly()
        second = self.start()
        second.expect_box(INSTANCE_QUESTION, "Yes")
        second.find("cmdQuit")
        self.quit(second)
        self.quit(first)

    def test_after_a_kill_the_question_comes_and_the_totals_of_the_last_save_are_there(self):
        self.write_ini(
            "[Settings]\nLastState=r\nDateStamp1=r\nLastDateStamp=1\n"
            "[r]\nSent=5\nRcvd=1234\nDuration=9\nIPAddress=\n"
        )
        first = self.start_quietly()
        first.end(signal.SIGKILL)
        second = self.start()
        second.expect_box(INSTANCE_QUESTION, "Yes")
        second.wait_text("txtBytesRcvdTotal", "1,234")
        self.quit(second)


class EndOfSessionTest(ProgramTest):
    def test_the_end_of_the_session_saves_even_while_connected(self):
        program = self.start_quietly()
        self.connect(program)
        self.assertEqual(program.end(), 0)
        settings = keys_of(self.read_ini(), "Settings")
        self.assertEqual(settings["IsLocked"], "0")
        self.assertEqual(settings["LastDateStamp"], "1")
        self.assertGreater(int(keys_of(self.read_ini(), settings["LastState"])["Rcvd"]), 0)

    def test_the_end_of_the_session_while_dialling_ends_the_program(self):
        program = self.start_quietly()
        program.choose("cboConnections", "Skylark Mobile")
        program.click("cmdConnect")
        self.assertEqual(program.end(), 0)
        self.assertEqual(keys_of(self.read_ini(), "Settings")["IsLocked"], "0")

    def test_the_end_of_the_session_closes_an_open_box(self):
        program = self.start_quietly("/r")
        program.press("cmdQuit")
        program.box_text()
        self.assertEqual(program.end(), 0)
        self.assertEqual(keys_of(self.read_ini(), "Settings")["IsLocked"], "0")

    def test_the_end_of_the_session_at_the_instance_question_writes_nothing(self):
        self.write_ini("[Settings]\nIsLocked=1\n")
        program = self.start()
        program.box_text()
        self.assertEqual(program.end(signal.SIGINT), 0)
        self.assertEqual(self.read_ini(), "[Settings]\nIsLocked=1\n")


class CommandLineTest(ProgramTest):
    def test_help_is_shown_and_the_program_runs(self):
        self.write_ini()
        program = self.start("/?")
        program.expect_box(
            "Available command-line arguments:\n\n/?, /h, /help\n\t- Show this help\n/m, /min\n"
            "\t- Minmise after startup\n/r, /run\n\t- Run after startup",
            "OK",
        )
        program.find("cmdQuit")
        self.quit(program)

    def test_unknown_switches_are_told_without_their_quotes(self):
        self.write_ini()
        program = self.start("/x", "/run", "a b")
        program.expect_box(
            "Warning:\nInvalid command-line switches detected:\n/x\na b\nTry /? or /h for help.",
            "OK",
        )
        program.wait_text("lblMonitoring", "Monitoring: active")
        self.assertEqual(program.end(), 0)

    def test_switches_that_the_toolkit_knows_are_told_like_any_other(self):
        self.write_ini()
        program = self.start("-style", "fusion", "-reverse", "--platform", "/r")
        program.expect_box(
            "Warning:\nInvalid command-line switches detected:\n-style\nfusion\n-reverse\n"
            "--platform\nTry /? or /h for help.",
            "OK",
        )
        program.wait_text("lblMonitoring", "Monitoring: active")
        self.assertEqual(program.end(), 0)

    def test_an_argument_with_a_quote_and_a_blank_leaves_the_others_alone(self):
        self.write_ini()
        program = self.start('a "b', "/run")
        program.expect_box(
            "Warning:\nInvalid command-line switches detected:\na b\nTry /? or /h for help.",
            "OK",
        )
        program.wait_text("lblMonitoring", "Monitoring: active")
        self.assertEqual(program.end(), 0)

    def test_started_out_of_the_way_the_window_is_not_in_front(self):
        program = self.start_quietly("/R", "/MIN")
        program.wait_text("lblMonitoring", "Monitoring: active")
        wait_for("the window to go aside", lambda: self.desktop.is_iconic("Velmars Tarvik"))
        self.assertEqual(program.end(), 0)

    def test_started_without_switches_nothing_is_watched_and_the_window_is_in_front(self):
        program = self.start_quietly()
        wait_for("the window", lambda: self.desktop.is_active("Velmars Tarvik"))
        self.assertEqual(program.text("lblMonitoring"), "Monitoring: inactive")
        self.quit(program)
