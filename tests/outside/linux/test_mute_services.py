"""No service of the desktop holds the window up: mute, slow, halted, or talking nonsense, at the
start or later. Each of these held it for 25 seconds or for good."""

import contextlib
import os
import pathlib
import subprocess
import unittest

from desktop import wait_for
from mute_services import MuteServiceTest, MuteSocket, ibus_at, owner_of


class FaultyWatcherTest(MuteServiceTest):
    def check_from_the_start(self, kind):
        self.watcher(kind)

        program = self.start_without_delay()

        self.assert_it_goes_on(program)

    def check_later(self, kind):
        program = self.start_without_delay()
        watcher = self.watcher(kind)
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        self.assert_it_goes_on(program)

    def test_a_mute_one_from_the_start(self):
        self.check_from_the_start("mute")

    def test_a_slow_one_from_the_start(self):
        self.check_from_the_start("slow")

    def test_one_that_talks_nonsense_from_the_start(self):
        self.check_from_the_start("nonsense")

    def test_one_that_refuses_and_does_not_tell_what_it_can_do_from_the_start(self):
        self.check_from_the_start("refusing")

    def test_a_mute_one_later(self):
        self.check_later("mute")

    def test_a_slow_one_later(self):
        self.check_later("slow")

    def test_one_that_talks_nonsense_later(self):
        self.check_later("nonsense")

    def test_one_that_refuses_and_does_not_tell_what_it_can_do_later(self):
        self.check_later("refusing")

    def test_one_that_is_halted_after_it_has_taken_the_item(self):
        watcher = self.watcher("panel")
        program = self.start_without_delay()
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        watcher.halt()

        self.assert_it_goes_on(program)

    def test_a_mute_one_is_asked_once_however_often_the_lamp_changes(self):
        watcher = self.watcher("mute")
        program = self.start_quietly()

        for _ in range(3):
            self.change_the_lamp(program)

        self.assertEqual(
            sorted(watcher.calls), ["Get", "Introspect", "RegisterStatusNotifierItem"]
        )


class HaltedProcessTest(MuteServiceTest):
    def test_the_notification_service(self):
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nTransferTicker=1\nTransferTickerValue=1\n"
        )
        self.desktop.forget_notes()  # the first question starts it
        with self.halted(owner_of("org.freedesktop.Notifications", self.address)):
            program = self.start_without_delay()
            self.connect(program, "Skylark Mobile")

            with self.without_delay("the ticks"):
                self.wait_for_a_note(program)

            with self.without_delay("the end"):
                self.assertEqual(program.end(), 0)

    def test_the_bus_of_accessibility(self):
        program = self.start_without_delay()
        launcher = owner_of("org.a11y.Bus", self.address)
        children = pathlib.Path("/proc/%d/task/%d/children" % (launcher, launcher)).read_text()

        with contextlib.ExitStack() as halts:
            for process in [launcher, *map(int, children.split())]:
                halts.enter_context(self.halted(process))
            # Nobody can read the window now; what ends is not held up.
            program.key("alt+m")
            with self.without_delay("the end"):
                self.assertEqual(program.end(), 0)

    def test_the_session_bus_after_the_panel_has_taken_the_item(self):
        watcher = self.watcher("panel")
        program = self.start_without_delay()
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        with self.halted(self.bus()):
            self.assert_it_goes_on(program)


class GreetingTest(MuteServiceTest):
    """What the toolkit greets while its application is made."""

    def setUp(self):
        super().setUp()
        self.mute = MuteSocket(self.folder / "mute")
        self.addCleanup(self.mute.close)

    def check(self, what, **environment):
        self.write_ini()
        with self.without_delay("the start"):
            program = self.start(**environment)
            # Without the bus there is no accessibility: the window manager tells.
            wait_for("the window", lambda: self.desktop.is_active("Velmars Tarvik"))

        self.assertIn(what + " does not answer and is left out", program.written())
        with self.without_delay("the end"):
            self.assertEqual(program.end(), 0)

    def test_a_mute_session_bus(self):
        self.check("the session bus", DBUS_SESSION_BUS_ADDRESS="unix:path=" + self.mute.path)

    def test_a_halted_session_bus(self):
        with self.halted(self.bus()):
            self.check("the session bus")

    def test_a_mute_bus_of_accessibility(self):
        self.check(
            "the bus of accessibility", AT_SPI_BUS_ADDRESS="unix:path=" + self.mute.path
        )

    def test_a_mute_bus_of_accessibility_that_the_display_tells_of(self):
        if self.desktop.wayland:
            raise unittest.SkipTest("this is a note on a display of X")
        told = ["xprop", "-root", "-f", "AT_SPI_BUS", "8s"]
        before = subprocess.run(
            ["xprop", "-root", "-notype", "AT_SPI_BUS"],
            env=self.desktop.environment, capture_output=True, text=True, check=True,
        ).stdout
        again = ["-set", "AT_SPI_BUS", before.split('"')[1]] if '"' in before else [
            "-remove", "AT_SPI_BUS"
        ]
        self.addCleanup(
            subprocess.run, [*told, *again], env=self.desktop.environment, check=True
        )
        subprocess.run(
            [*told, "-set", "AT_SPI_BUS", "unix:path=" + self.mute.path],
            env=self.desktop.environment, check=True,
        )

        self.check("the bus of accessibility")

    def test_a_mute_session_manager(self):
        self.check(
            "the session manager",
            SESSION_MANAGER="unix/%s:%s" % (os.uname().nodename, self.mute.path),
        )

    def test_a_mute_input_method(self):
        self.check("the input method", **ibus_at("unix:path=" + self.mute.path, self.folder))

    def test_services_that_answer_are_not_left_out(self):
        program = self.start_quietly()

        self.assertNotIn("left out", program.written())


if __name__ == "__main__":
    unittest.main()
