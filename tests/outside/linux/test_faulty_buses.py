"""How long the window waits for buses that are slow or talk nonsense, and for what is on them: less than
an eye sees, at the start and later."""

import unittest

from desktop import wait_for
from faulty_service import SLOWNESS
from mute_services import PORTAL, ibus_at, session_manager_at
from waiting import StartMeasure, WindowTest

SLOW = SLOWNESS / 1000  # seconds
A_LITTLE = 0.02  # each answer alone would not be seen, but there are more than ten
INPUT_METHOD = "org.freedesktop.IBus"


class SessionBusStartTest(StartMeasure):
    def test_with_a_slow_one(self):
        way = self.way_to_bus(self.address, SLOW)
        self.check("the session bus", DBUS_SESSION_BUS_ADDRESS=way.address)

    def test_with_one_that_is_a_little_slow_with_everything(self):
        way = self.way_to_bus(self.address, A_LITTLE)
        self.check(DBUS_SESSION_BUS_ADDRESS=way.address)

    def test_with_one_that_answers_the_greeting_with_nonsense(self):
        self.check("the session bus", DBUS_SESSION_BUS_ADDRESS=self.odd_bus(greets=False))

    def test_with_one_that_greets_and_talks_nonsense(self):
        self.check(DBUS_SESSION_BUS_ADDRESS=self.odd_bus(greets=True))

    def check_halted(self, kind, *names):
        """Services on it, from the start."""
        own = self.another_bus()
        for name in names:
            self.faulty(kind, own, name).halt()
        self.check(DBUS_SESSION_BUS_ADDRESS=own)

    def test_with_a_halted_panel_on_it(self):
        self.check_halted("panel", "org.kde.StatusNotifierWatcher")

    def test_with_a_halted_notification_service_and_a_halted_portal_on_it(self):
        self.check_halted("nonsense", "org.freedesktop.Notifications", PORTAL)

    def test_with_a_halted_service_of_accessibility_on_it(self):
        self.check_halted("nonsense", "org.a11y.Bus")
        self.assertIn("the bus of accessibility does not answer", self.said())


class AccessibilityBusStartTest(StartMeasure):
    def test_with_a_slow_one(self):
        way = self.way_to_bus(self.accessibility_address(), SLOW)
        self.check("the bus of accessibility", AT_SPI_BUS_ADDRESS=way.address)

    def test_with_one_that_is_a_little_slow_with_everything(self):
        way = self.way_to_bus(self.accessibility_address(), A_LITTLE)
        self.check(AT_SPI_BUS_ADDRESS=way.address)

    def test_with_one_that_answers_the_greeting_with_nonsense(self):
        self.check("the bus of accessibility", AT_SPI_BUS_ADDRESS=self.odd_bus(greets=False))

    def test_with_one_that_greets_and_talks_nonsense(self):
        self.check(AT_SPI_BUS_ADDRESS=self.odd_bus(greets=True))

    def test_with_a_registry_on_it(self):
        for kind, *left_out in (("slow", "the bus of accessibility"), ("nonsense",)):
            with self.subTest(kind):
                own = self.another_bus()
                self.faulty(kind, own, "org.a11y.atspi.Registry")
                self.check(*left_out, AT_SPI_BUS_ADDRESS=own)


class InputMethodStartTest(StartMeasure):
    def test_with_one_on_a_slow_bus(self):
        way = self.way_to_bus(self.another_bus(), SLOW)
        self.check("the input method", **self.input_method(way.address))

    def test_with_one_on_a_bus_that_is_a_little_slow_with_everything(self):
        own = self.another_bus()
        self.faulty("method", own, INPUT_METHOD)
        way = self.way_to_bus(own, A_LITTLE)
        self.check(**self.input_method(way.address))

    def test_with_one_on_a_bus_that_greets_and_talks_nonsense(self):
        self.check(**self.input_method(self.odd_bus(greets=True)))

    def check_method(self, kind, *left_out, is_halted=False):
        own = self.another_bus()
        service = self.faulty(kind, own, INPUT_METHOD)
        if is_halted:
            service.halt()
        self.check(*left_out, **self.input_method(own))

    def test_with_a_slow_one(self):
        self.check_method("slow", "the input method")

    def test_with_one_that_talks_nonsense(self):
        self.check_method("nonsense")

    def test_with_a_halted_one(self):
        self.check_method("method", "the input method", is_halted=True)


class SessionManagerStartTest(StartMeasure):
    def check_way(self, delay, *left_out):
        way = self.way(self.session_manager().path, delay)
        self.check(*left_out, SESSION_MANAGER=session_manager_at(way.path))

    def test_with_a_slow_one(self):
        self.check_way(SLOW, "the session manager")

    def test_with_one_that_is_a_little_slow_with_everything(self):
        self.check_way(A_LITTLE)

    def test_with_a_halted_one(self):
        manager = self.session_manager()
        with self.halted(manager.process.pid):
            self.check("the session manager", SESSION_MANAGER=manager.addresses)


class LaterTest(WindowTest):
    """What is as it should be when the program starts, and then is not."""

    def check_way(self, program, way, work):
        """Slow, and then nonsense, from which nothing comes back."""
        with self.hardly_waiting(program):
            way.delay = SLOW
            work()
            way.delay = 0.0
            way.is_garbled = True
            work()

    def test_a_session_bus(self):
        self.write_ini(
            "[Settings]\nRefreshInterval=200\nTransferTicker=1\nTransferTickerValue=1\n"
        )
        own = self.bus_with_accessibility(self.accessibility_address())
        self.faulty("panel", own)
        notes = self.faulty("mute", own, "org.freedesktop.Notifications")
        way = self.way_to_bus(own)
        program = self.start_quietly(DBUS_SESSION_BUS_ADDRESS=way.address)
        self.connect(program, "Skylark Mobile")

        wait_for("a note", lambda: notes.calls)

        self.check_way(program, way, lambda: self.wait_for_more(program))

        self.assertTrue(program.running())

    @staticmethod
    def wait_for_more(program):
        """Two megabytes, of which notes tell, and more than one tick."""
        def count(text):
            return int(text.replace(",", "") or 0)
        before = count(program.text("txtBytesRcvd"))
        program.wait_text("txtBytesRcvd", lambda text: count(text) > before + 1_500_000)

    def test_a_bus_of_accessibility(self):
        way = self.way_to_bus(self.accessibility_address())
        program = self.start_quietly(
            DBUS_SESSION_BUS_ADDRESS=self.bus_with_accessibility(way.address)
        )
        window = lambda: self.desktop.is_active("Velmars Tarvik")  # noqa: E731
        wait_for("the window in front", window)

        def open_and_close():
            # Nobody can read the windows now.
            program.key("alt+o")
            wait_for("the box", lambda: not window())
            program.key("Escape")
            wait_for("the window", window)

        self.check_way(program, way, open_and_close)

        self.assertEqual(program.end(), 0)

    def check_typing(self, kind, halts=False):
        own = self.another_bus()
        method = self.faulty(kind, own, INPUT_METHOD)
        program = self.start_quietly(**ibus_at(own, self.folder))
        program.press("cmdOptions")
        wait_for("the box", lambda: program.is_showing("txtRefreshInterval"))
        program.click("txtRefreshInterval")

        with self.hardly_waiting(program):
            program.key("7")
            wait_for("the key", lambda: "ProcessKeyEvent" in method.calls)
            program.key("8", "9")
            program.press("cmdCancel")
            self.change_the_lamp(program)

    def test_an_input_method_that_is_slow_with_keys(self):
        self.check_typing("slow-method")

    def test_an_input_method_that_talks_nonsense_of_keys(self):
        self.check_typing("odd-method")

    def managed(self, addresses, manager):
        program = self.start_quietly(SESSION_MANAGER=addresses)
        manager.wait_for_client()
        return program

    def test_a_session_manager_that_is_halted(self):
        manager = self.session_manager()
        program = self.managed(manager.addresses, manager)

        with self.hardly_waiting(program), self.halted(manager.process.pid):
            self.change_the_lamp(program)

        with self.halted(manager.process.pid), self.without_delay("the end"):
            self.assertEqual(program.end(), 0)

    def test_a_session_manager(self):
        manager = self.session_manager()
        way = self.way(manager.path)
        program = self.managed(session_manager_at(way.path), manager)

        self.check_way(program, way, lambda: self.change_the_lamp(program))

        self.assertTrue(program.running())

    def test_a_panel_that_embeds_icons_and_is_halted(self):
        panel = self.desktop.open_panel()
        self.addCleanup(self.desktop.close_panel, panel)
        program = self.start_quietly()
        self.desktop.icon_area()

        with self.hardly_waiting(program), self.halted(panel.pid):
            self.change_the_lamp(program)

    def test_a_window_manager_that_is_halted(self):
        program = self.start_quietly()
        manager = next(
            each.pid for each in self.desktop.processes if each.args[0] == "openbox"
        )

        with self.hardly_waiting(program), self.halted(manager):
            self.change_the_lamp(program)


class EmbeddingPanelStartTest(StartMeasure):
    def test_with_a_halted_one(self):
        panel = self.desktop.open_panel()
        self.addCleanup(self.desktop.close_panel, panel)
        with self.halted(panel.pid):
            self.check()


if __name__ == "__main__":
    unittest.main()
