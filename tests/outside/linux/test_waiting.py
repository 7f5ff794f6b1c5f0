"""How long the window waits for services of the desktop that are mute, slow, halted, or talk nonsense:
less than an eye sees, at the start and later."""

import os
import signal
import unittest

from desktop import wait_for
from mute_services import PORTAL, has_owner, hold_clipboard, ibus_at, owner_of
from waiting import ACCEPTED, StartMeasure, WindowTest


class WaitingTest(WindowTest):
    def test_for_a_mute_panel(self):
        self.watcher("mute")
        program = self.start_quietly()

        with self.hardly_waiting(program):
            self.change_the_lamp(program)

    def check_panel(self, kind):
        """One that comes when the program runs, and is asked then."""
        program = self.start_quietly()

        with self.hardly_waiting(program):
            watcher = self.watcher(kind)
            wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)
            self.change_the_lamp(program)

    def test_for_a_panel_that_comes_and_is_mute(self):
        self.check_panel("mute")

    def test_for_a_slow_panel_that_comes(self):
        self.check_panel("slow")

    def test_for_a_panel_that_comes_and_talks_nonsense(self):
        self.check_panel("nonsense")

    def test_for_a_panel_that_comes_and_refuses(self):
        self.check_panel("refusing")

    def test_for_a_panel_that_is_halted(self):
        watcher = self.watcher("panel")
        program = self.start_quietly()
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        with self.hardly_waiting(program):
            watcher.halt()
            self.change_the_lamp(program)

    def test_for_a_halted_session_bus(self):
        watcher = self.watcher("panel")
        program = self.start_quietly()
        wait_for("the item", lambda: "RegisterStatusNotifierItem" in watcher.calls)

        with self.hardly_waiting(program), self.halted(self.bus()):
            self.change_the_lamp(program)

    def test_for_a_halted_notification_service(self):
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nTransferTicker=1\nTransferTickerValue=1\n"
        )
        self.desktop.forget_notes()  # the first question starts it
        program = self.start_quietly()
        service = owner_of("org.freedesktop.Notifications", self.address)

        with self.hardly_waiting(program), self.halted(service):
            self.connect(program, "Skylark Mobile")
            self.wait_for_a_note(program)

    def test_for_a_halted_input_method(self):
        own = self.another_bus()
        method = self.faulty("method", own, "org.freedesktop.IBus")
        program = self.start_quietly(**ibus_at(own, self.folder))
        program.press("cmdOptions")
        wait_for("the box", lambda: program.is_showing("txtRefreshInterval"))
        program.click("txtRefreshInterval")
        program.key("7")
        wait_for("the key", lambda: "ProcessKeyEvent" in method.calls)

        with self.hardly_waiting(program):
            method.halt()
            program.key("8", "9")
            program.press("cmdCancel")
            self.change_the_lamp(program)

    def check_notes(self, kind):
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nTransferTicker=1\nTransferTickerValue=1\n"
        )
        self.desktop.forget_notes()  # the first question starts the usual one; the next would again
        usual = owner_of("org.freedesktop.Notifications", self.address)
        os.kill(usual, signal.SIGTERM)
        wait_for("its end", lambda: not has_owner("org.freedesktop.Notifications", self.address))
        service = self.faulty(kind, self.address, "org.freedesktop.Notifications")
        program = self.start_quietly()

        with self.hardly_waiting(program):
            self.connect(program, "Skylark Mobile")
            self.wait_for_a_note(program)

        self.assertIn("Notify", service.calls)

    def test_for_a_mute_notification_service(self):
        self.check_notes("mute")

    def test_for_a_slow_notification_service(self):
        self.check_notes("slow")

    def test_for_a_notification_service_that_talks_nonsense(self):
        self.check_notes("nonsense")

    def check_clipboard(self, *holder):
        program = self.start_quietly()
        hold_clipboard(self, self.desktop.environment, *holder)
        program.press("cmdOptions")
        wait_for("the box", lambda: program.is_showing("txtRefreshInterval"))
        program.click("txtRefreshInterval")

        with self.hardly_waiting(program):
            program.key("ctrl+v", "End", "7")
            program.wait_text("txtRefreshInterval", lambda text: text.endswith("7"))

    def test_for_a_mute_holder_of_the_clipboard(self):
        self.check_clipboard()

    def test_for_a_holder_of_the_clipboard_that_lists_its_text_and_keeps_it(self):
        self.check_clipboard("9", "lists")

    def test_for_a_holder_of_the_clipboard_that_begins_to_give_its_text(self):
        self.check_clipboard("9", "begins")


class StartTest(StartMeasure):
    def test_with_a_mute_session_bus(self):
        self.check("the session bus", DBUS_SESSION_BUS_ADDRESS=self.mute())

    def test_with_a_halted_session_bus(self):
        with self.halted(self.bus()):
            self.check("the session bus")

    def test_with_a_session_bus_that_talks_nonsense(self):
        self.check("the session bus", DBUS_SESSION_BUS_ADDRESS=self.mute(b"HTTP/1.1 400 No\r\n\r\n"))

    def test_with_a_session_bus_that_is_mute_after_its_first_word(self):
        self.check("the session bus", DBUS_SESSION_BUS_ADDRESS=self.mute(ACCEPTED))

    def test_with_a_mute_bus_of_accessibility(self):
        self.check("the bus of accessibility", AT_SPI_BUS_ADDRESS=self.mute())

    def test_with_a_halted_registry_of_accessibility(self):
        self.write_ini()
        self.start_quietly().stop()  # the first that looks at a window starts the registry
        address = self.accessibility_address()
        registry = owner_of("org.a11y.atspi.Registry", address)
        for of_the_environment in ({}, {"AT_SPI_BUS_ADDRESS": address}):
            with self.subTest(of_the_environment), self.halted(registry):
                self.check("the bus of accessibility", **of_the_environment)

    def check_launcher(self, kind, *left_out):
        own = self.another_bus()
        self.faulty(kind, own, "org.a11y.Bus")
        self.check(*left_out, DBUS_SESSION_BUS_ADDRESS=own)

    def test_with_a_mute_service_of_accessibility(self):
        self.check_launcher("mute", "the bus of accessibility")

    def test_with_a_slow_service_of_accessibility(self):
        self.check_launcher("slow", "the bus of accessibility")

    def test_with_a_service_of_accessibility_that_talks_nonsense(self):
        self.check_launcher("nonsense")

    def test_with_a_mute_session_manager(self):
        self.check("the session manager", SESSION_MANAGER=self.manager())

    def test_with_a_session_manager_that_is_mute_after_its_first_word(self):
        self.check(
            "the session manager", SESSION_MANAGER=self.manager(b"\0\1\0\0\0\0\0\0")
        )

    def test_with_a_session_manager_that_talks_nonsense(self):
        self.check("the session manager", SESSION_MANAGER=self.manager(b"nonsense"))

    def test_with_a_mute_input_method(self):
        self.check("the input method", **self.input_method(self.mute()))

    def test_with_an_input_method_that_is_mute_after_its_first_word(self):
        self.check("the input method", **self.input_method(self.mute(ACCEPTED)))

    def test_with_an_input_method_that_greets_and_is_mute(self):
        own = self.another_bus()
        self.faulty("mute", own, "org.freedesktop.IBus")
        self.check("the input method", **self.input_method(own))

    def test_with_a_panel(self):
        for kind in ("mute", "slow", "nonsense"):
            with self.subTest(kind):
                own = self.another_bus()
                self.faulty(kind, own)
                self.check(DBUS_SESSION_BUS_ADDRESS=own)

    def test_with_a_notification_service_and_a_portal(self):
        for kind in ("mute", "slow", "nonsense"):
            with self.subTest(kind):
                own = self.another_bus()
                self.faulty(kind, own, "org.freedesktop.Notifications")
                self.faulty(kind, own, PORTAL)
                self.check(DBUS_SESSION_BUS_ADDRESS=own)


if __name__ == "__main__":
    unittest.main()
